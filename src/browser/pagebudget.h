// SPDX-License-Identifier: MIT
#pragma once

#include "pages/preparedpage.h"

/// Pages of which only the beginning is shown, because all of it would take long.
namespace PageBudget {

/// What the link of wholePageNotice() leads to.
[[nodiscard]] bool isWholePageLink(const QString& href);
/// A paragraph, as HTML, that says `text` and has a link for the whole page, which is added to `links`.
[[nodiscard]] QString wholePageNotice(const QString& text, std::vector<PageLink>& links);
/// Says above the page that this is its beginning.
void addNotice(PreparedPage& page);

} // namespace PageBudget
