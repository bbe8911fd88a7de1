// SPDX-License-Identifier: MIT
#include "markup/htmlnode.h"

#include <algorithm>

bool hasAttribute(const HtmlNode& node, std::string_view name)
{
    const auto* found = node.attributes;
    while (found != nullptr && found->name != name) {
        found = found->next;
    }
    return found != nullptr;
}

std::string_view attribute(const HtmlNode& node, std::string_view name)
{
    const auto* found = node.attributes;
    while (found != nullptr && found->name != name) {
        found = found->next;
    }
    return found == nullptr ? std::string_view() : found->value;
}

bool equalsLower(std::string_view text, std::string_view lower)
{
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? char(a - 'A' + 'a') : a) == b; });
}
