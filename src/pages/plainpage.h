// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagecontext.h"

#include <QString>

#include <string>

/// What there is to read in a page, in UTF-8.
struct PlainPage {
    std::string title;
    std::string language; ///< as the page declares it, such as "en"
    std::string text;     ///< the main content; blocks end with a line end, blanks are as the page has them
    std::string headings; ///< of the main content, a line each
};

/// Reads the text that preparePage() gives for the reading view, without writing HTML. Never fails.
/// Of the context, only the file and the style sheets count.
[[nodiscard]] PlainPage readPlainPage(const QString& html, const PageContext& context);
