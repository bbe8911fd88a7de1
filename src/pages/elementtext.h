// SPDX-License-Identifier: MIT
#pragma once

#include <string>

struct HtmlNode;

/// What there is to read in a field of a form: the text in it, or that of a button.
[[nodiscard]] std::string fieldText(const HtmlNode& input);

/// The options of a field that offers a choice.
[[nodiscard]] std::string choiceText(const HtmlNode& select);

/// The texts in a drawing.
[[nodiscard]] std::string drawingText(const HtmlNode& svg);
