// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// Replaces the names of characters that HTML 5 has beyond those of HTML 4, such as "&lsqb;", by the
/// characters; UTF-8.
[[nodiscard]] QByteArray withoutNewEntities(const QByteArray& html);
