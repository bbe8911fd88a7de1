// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

enum class Compression { Zlib, Gzip };

/// What was compressed; none when it is damaged or more than `most` bytes, unless `mayCut` asks for the first
/// of them then.
[[nodiscard]] std::optional<QByteArray> inflated(QByteArrayView bytes, Compression compression, qint64 most,
                                                 bool mayCut = false);
