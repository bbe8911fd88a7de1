// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagecontext.h"
#include "pages/preparedpage.h"

inline constexpr qsizetype LargestPage = 8 << 20; ///< characters

/// Turns the text of a page into HTML that rich text shows well. Never fails: a text without elements is
/// shown as it is.
[[nodiscard]] PreparedPage preparePage(const QString& html, const PageContext& context,
                                       Presentation presentation);

/// The same for a text that is no HTML; `html` is null when the text can be shown as it is.
[[nodiscard]] PreparedPage preparePlainText(const QString& text, const PageContext& context);
