// SPDX-License-Identifier: MIT
#pragma once

#include "formats/pagelocation.h"
#include "formats/result.h"

#include <QString>

#include <limits>

/// Splits a page name at its "#", unless a file has that very name. A directory with an index.html means that
/// file.
[[nodiscard]] PageLocation locatePage(const QString& name);

/// The text of a page file.
struct PageText {
    QString text;
    bool isHtml = true; ///< otherwise plain text
};

/// Why a page cannot be shown.
enum class PageError { NotFound, Directory, NotRegular, Unreadable, TooLarge, NotText, Empty, NothingToShow };

/// A sentence for people.
[[nodiscard]] QString describe(PageError error);

/// The text of a page file, or of its first `most` bytes.
[[nodiscard]] Result<PageText, PageError> readPage(const QString& file,
                                                   qint64 most = std::numeric_limits<qint64>::max());
