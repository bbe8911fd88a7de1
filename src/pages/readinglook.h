// SPDX-License-Identifier: MIT
#pragma once

#include "pages/elementroles.h"

#include <string>
#include <string_view>

struct HtmlNode;

/// The classes and attributes that the reading view gives to what it writes. Attributes are as
/// attributeText() makes them.
namespace ReadingLook {

/// The class of a note; empty for elements that are none.
[[nodiscard]] std::string_view noteClass(Role role);

/// What begins and ends a table with one cell, which is what rich text has for a ground or a bar at the side.
[[nodiscard]] std::string boxStart(std::string_view className);
inline constexpr std::string_view BoxEnd = "</td></tr></table>";

/// A class, and the element's alignment and direction of writing.
[[nodiscard]] std::string block(const HtmlNode& element, std::string_view className = {});
/// The same of a heading, with its size.
[[nodiscard]] std::string heading(const HtmlNode& element);
/// The number that a list starts with, and its kind of numbers.
[[nodiscard]] std::string numberedList(const HtmlNode& list);
[[nodiscard]] std::string listStart(const HtmlNode& list);
[[nodiscard]] std::string table(const HtmlNode& table, bool isData);
[[nodiscard]] std::string cell(const HtmlNode& cell);
/// The rows and columns that a cell takes.
[[nodiscard]] std::string spans(const HtmlNode& cell);
[[nodiscard]] std::string picture(const HtmlNode& picture);

/// Whether a table holds data; the others only place things side by side.
[[nodiscard]] bool isDataTable(const HtmlNode& table);

} // namespace ReadingLook
