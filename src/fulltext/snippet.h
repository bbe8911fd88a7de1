// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/querymatcher.h"
#include "fulltext/searchanswer.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

/// A piece of a page's text in one line.
struct Snippet {
    QString text;
    std::vector<TextRange> marks;
};

/// How much of a text is looked at, in bytes.
inline constexpr size_t SnippetSource = 2'000'000;

/// The piece of a text (UTF-8) that has the most of what the matcher looks for, close together; the beginning
/// when there is none of it.
[[nodiscard]] Snippet makeSnippet(std::string_view text, QueryMatcher& matcher);
