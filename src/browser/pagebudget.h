// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagefile.h"
#include "pages/preparedpage.h"

/// How much of a page can be shown at once: a layout cannot be interrupted, and some grow with the square of
/// the page.
namespace PageBudget {

inline constexpr qsizetype Largest = 8 << 20; ///< characters

/// How many characters of the page, from its beginning, are laid out within about a second. Tried out on
/// pieces of the page when it is large.
[[nodiscard]] qsizetype affordableLength(const PageText& page, Presentation presentation);

/// The first `length` characters, as HTML.
[[nodiscard]] PageText beginningOf(const PageText& page, qsizetype length);

/// What the link of addNotice() leads to.
[[nodiscard]] bool isWholePageLink(const QString& href);
/// Says above the page that this is its beginning, with a link for the whole.
void addNotice(PreparedPage& page);

} // namespace PageBudget
