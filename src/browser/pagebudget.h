// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagefile.h"
#include "pages/preparedpage.h"

/// How much of a page can be shown at once: a layout cannot be interrupted.
namespace PageBudget {

inline constexpr qsizetype Largest = 8 << 20; ///< characters

/// How many characters of the page, from its beginning, can be laid out without holding the window: a page
/// is cut at its largest size, or within a word or a text that is absurdly long.
[[nodiscard]] qsizetype affordableLength(const PageText& page);

/// The first `length` characters, as HTML.
[[nodiscard]] PageText beginningOf(const PageText& page, qsizetype length);

/// What the link of addNotice() leads to.
[[nodiscard]] bool isWholePageLink(const QString& href);
/// Says above the page that this is its beginning, with a link for the whole.
void addNotice(PreparedPage& page);

} // namespace PageBudget
