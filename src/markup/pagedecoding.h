// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// Text of a page: as its byte-order mark says, else as the HTML declares, else UTF-8, else Latin-1 when the
/// bytes are not valid UTF-8.
[[nodiscard]] QString decodePage(const QByteArray& bytes);
