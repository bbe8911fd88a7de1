// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

struct HtmlNode;

// What there is in the parts of a page that has style sheets and was surveyed.

inline constexpr size_t ShortPart = 40; ///< bytes, of a part that fits into a line with others

/// Whether there is nothing of a node to be shown.
[[nodiscard]] bool isAbsent(const HtmlNode& node);
/// Whether an element is there, but with nothing in it.
[[nodiscard]] bool isVoid(const HtmlNode& node);
/// Bytes of text without blanks; of a text, all of it.
[[nodiscard]] size_t lettersOf(const HtmlNode& node);

/// Whether something in an element would break its line.
[[nodiscard]] bool holdsBlocks(const HtmlNode& element);
/// Whether a sheet makes it a cell, in a table that nobody has written.
[[nodiscard]] bool isLooseCell(const HtmlNode& element);
/// Whether a neighbour of the same kind would stand beside it.
[[nodiscard]] bool standsBeside(const HtmlNode& element);
/// Whether an element floats by itself as a box that text can stand beside.
[[nodiscard]] bool isFloatingBox(const HtmlNode& element);
/// Whether an element of a line floats to the right of the block that comes next.
[[nodiscard]] bool isFloatingAside(const HtmlNode& element);
/// Whether a short element floats with others like it, and so stands in a line with them.
[[nodiscard]] bool isFloatingInLine(const HtmlNode& element);
