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

/// Whether a file is called like a page of HTML.
[[nodiscard]] bool isHtmlName(QStringView fileName);
[[nodiscard]] bool isPageFile(const QString& path);
/// None when there is no such file.
[[nodiscard]] std::optional<PageFileState> pageFileState(const QString& path);
/// All bytes, or the first `most` of them.
[[nodiscard]] Result<QByteArray, FileError> readPageFile(const QString& path,
                                                         qint64 most = std::numeric_limits<qint64>::max());
/// The path of the file that a path in a package means which leads to none there, such as one in another
/// package; null when there is none.
[[nodiscard]] QString pageFileElsewhere(const QString& path);
/// The path of the package that a file is in; null for files of the file system.
[[nodiscard]] QString packageOf(const QString& path);
/// What a path in a package, or a link of the scheme of packages, calls a file in there: folder, "/", name,
/// anchor; null for anything else.
[[nodiscard]] QString packedName(const QString& target);
/// The path, or how people call a file in a package: `guide.qch › start.html`.
[[nodiscard]] QString readablePageName(const QString& path);
