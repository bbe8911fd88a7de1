// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// Text of a file that declares no encoding: as its byte-order mark says, else UTF-8, else Latin-1 when the
/// bytes are not valid UTF-8.
[[nodiscard]] QString decodeText(const QByteArray& bytes);
