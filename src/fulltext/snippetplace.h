// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/querymatcher.h"
#include "pages/plainpage.h"

#include <cstddef>
#include <string_view>

/// Part of a text, in bytes.
struct TextPart {
    size_t begin = 0;
    size_t end = 0;
};

/// Where the piece begins, within a part of the page's text, that says most about what the matcher looks for;
/// the part's beginning when nothing of it is there.
[[nodiscard]] size_t findSnippetPlace(const PlainPage& page, TextPart within, QueryMatcher& matcher);

/// Where to begin a piece of text that has a place: at its sentence or line if that is near.
[[nodiscard]] size_t sentenceBegin(std::string_view text, size_t place);

inline constexpr size_t SnippetLength = 180; // bytes, about
