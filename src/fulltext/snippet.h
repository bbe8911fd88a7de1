// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/querymatcher.h"
#include "fulltext/searchanswer.h"
#include "pages/plainpage.h"

#include <QString>
#include <QStringList>

#include <string_view>
#include <vector>

/// A piece of a page's text in one line, and where it stands.
struct Snippet {
    QString text;
    std::vector<TextRange> marks;
    QStringList section; ///< headings above it, the outermost first; without the page's own
    QString anchor;      ///< of the innermost of them that has one; empty at the beginning of a page
};

/// How much of a text is looked at, in bytes.
inline constexpr size_t SnippetSource = 2'000'000;

/// The piece of a page's text that has the most of what the matcher looks for, close together and rather in
/// sentences than in lists of links; the beginning when there is none of it. With an anchor, one below it.
[[nodiscard]] Snippet makeSnippet(const PlainPage& page, QueryMatcher& matcher, std::string_view anchor = {});
