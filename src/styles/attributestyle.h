// SPDX-License-Identifier: MIT
#pragma once

#include <string>

struct HtmlNode;

/// What the attributes of an element say of its look, such as `align` or `bgcolor`, in the words of a style
/// sheet; empty when they say nothing.
[[nodiscard]] std::string attributeStyle(const HtmlNode& element);

[[nodiscard]] bool isCell(const HtmlNode& element);
