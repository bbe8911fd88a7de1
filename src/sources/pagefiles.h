// SPDX-License-Identifier: MIT
#pragma once

#include "formats/regularfile.h"
#include "formats/result.h"

#include <QByteArray>
#include <QString>

#include <limits>
#include <optional>

/// The files that pages are made of: pages, pictures, style sheets.

/// What tells whether a file is still the same.
struct PageFileState {
    qint64 size = 0; ///< bytes
    qint64 time = 0; ///< of the last change, nanoseconds since 1970

    bool operator==(const PageFileState& other) const = default;
};

[[nodiscard]] bool isPageFile(const QString& path);
/// None when there is no such file.
[[nodiscard]] std::optional<PageFileState> pageFileState(const QString& path);
/// All bytes, or the first `most` of them.
[[nodiscard]] Result<QByteArray, FileError> readPageFile(const QString& path,
                                                         qint64 most = std::numeric_limits<qint64>::max());
