// SPDX-License-Identifier: MIT
#include "pages/elementtext.h"

#include "markup/htmltree.h"

#include <algorithm>
#include <array>

namespace {

/// The texts in an element, but for those of style sheets and scripts.
std::string textsOf(const HtmlNode& element, std::string_view separator)
{
    std::string texts;
    for (const auto* node = &element; node != nullptr;) {
        if (isText(*node) && !isBlank(node->content)) {
            texts.append(texts.empty() ? "" : separator).append(node->content);
        }
        node = nextNode(node, &element, !isElement(*node, "style") && !isElement(*node, "script"));
    }
    return texts;
}

} // namespace

std::string fieldText(const HtmlNode& input)
{
    static constexpr std::array<std::string_view, 6> withText{"",      "text",   "submit",
                                                              "reset", "button", "search"};
    const auto type = attribute(input, "type");
    const bool hasText = std::any_of(withText.begin(), withText.end(),
                                     [type](std::string_view known) { return equalsLower(type, known); });
    return std::string(hasText ? attribute(input, "value") : std::string_view());
}

std::string choiceText(const HtmlNode& select)
{
    return textsOf(select, " / ");
}

std::string drawingText(const HtmlNode& svg)
{
    return textsOf(svg, " ");
}

std::string_view frameText(const HtmlNode& frame)
{
    const auto source = attribute(frame, "src");
    const bool isMade = source.empty() || equalsLower(source.substr(0, 11), "javascript:") ||
                        equalsLower(source.substr(0, 6), "about:");
    if (isMade) {
        return {};
    }
    const auto title = attribute(frame, "title");
    const auto name = title.empty() ? attribute(frame, "name") : title;
    return name.empty() ? source : name;
}
