// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/querymatcher.h"
#include "fulltext/searchanswer.h"

#include <string_view>
#include <vector>

/// The places of matches in a text of UTF-8, counted in UTF-16: in order, with those that overlap or touch
/// made one.
[[nodiscard]] std::vector<TextRange> utf16Ranges(std::string_view utf8,
                                                 std::vector<QueryMatcher::Match> matches);
