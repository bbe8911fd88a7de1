// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchanswer.h"

/// The places in a text that a query finds, in order and apart: its words and phrases, not those that it
/// excludes, by the rules of the search (letter case and accents do not count, nor do word forms of the
/// language; the last word counts as a beginning when `isTyping`).
[[nodiscard]] std::vector<TextRange> matchRanges(const QString& query, const QString& text,
                                                 const QString& language, bool isTyping = true);
