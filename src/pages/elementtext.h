// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

struct HtmlNode;

/// What there is to read in a field of a form: the text in it, or that of a button.
[[nodiscard]] std::string fieldText(const HtmlNode& input);

/// The options of a field that offers a choice.
[[nodiscard]] std::string choiceText(const HtmlNode& select);

/// The texts in a drawing.
[[nodiscard]] std::string drawingText(const HtmlNode& svg);

/// What a link to the page in a frame says; empty when a script would make that page.
[[nodiscard]] std::string_view frameText(const HtmlNode& frame);
