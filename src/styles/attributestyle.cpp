// SPDX-License-Identifier: MIT
#include "styles/attributestyle.h"

#include "markup/htmltree.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace {

int numberOf(std::string_view value, int fallback)
{
    std::from_chars(value.data(), value.data() + value.size(), fallback);
    return std::clamp(fallback, 0, 1000);
}

bool isPartOfTable(const HtmlNode& element)
{
    static constexpr std::array<std::string_view, 6> names{"table", "tr", "td", "th", "tbody", "thead"};
    return std::find(names.begin(), names.end(), element.name) != names.end();
}

/// What could end the declaration has no meaning in a value.
std::string said(std::string_view property, std::string_view value)
{
    const bool isPlain = value.size() < 64 && value.find_first_of(";:{}") == std::string_view::npos;
    return isPlain ? std::string(property).append(1, ':').append(value).append(1, ';') : std::string();
}

std::string colorName(std::string_view value)
{
    const bool isHex =
        value.size() == 6 && value.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
    return (isHex ? "#" : "") + std::string(value);
}

std::string lengthName(std::string_view value)
{
    const bool isPercent = !value.empty() && value.back() == '%';
    const int number = numberOf(value, 0);
    return number == 0 ? std::string() : std::to_string(number) + (isPercent ? "%" : "px");
}

/// Where an element is to stand. A table or a picture stands beside the text, or in the middle of the line.
std::string alignment(const HtmlNode& element, std::string_view value)
{
    const bool isPicture = element.name == "img";
    if (isPicture || element.name == "table") {
        return equalsLower(value, "left") || equalsLower(value, "right") ? said("float", value)
               : isPicture                                               ? said("vertical-align", value)
                                                                         : std::string();
    }
    return said("text-align", value);
}

std::string fontSize(std::string_view value)
{
    static constexpr std::array<std::string_view, 7> sizes{"10px", "13px", "16px", "18px",
                                                           "24px", "32px", "48px"};
    constexpr int usual = 3;
    const bool isRelative = !value.empty() && (value.front() == '+' || value.front() == '-');
    const int number = numberOf(isRelative ? value.substr(1) : value, usual);
    const int size = !isRelative ? number : usual + (value.front() == '+' ? number : -number);
    return said("font-size", sizes[size_t(std::clamp(size, 1, 7) - 1)]);
}

std::string one(const HtmlNode& element, std::string_view name, std::string_view value)
{
    if (name == "align") {
        return alignment(element, value);
    }
    if (name == "bgcolor" && (isPartOfTable(element) || element.name == "body")) {
        return said("background-color", colorName(value));
    }
    if (name == "color" && element.name == "font") {
        return said("color", colorName(value));
    }
    if (name == "size" && element.name == "font") {
        return fontSize(value);
    }
    if (name == "text" && element.name == "body") {
        return said("color", colorName(value));
    }
    if (name == "dir") {
        return said("direction", value);
    }
    if (name == "valign") {
        return said("vertical-align", value);
    }
    if (name == "nowrap") {
        return said("white-space", "nowrap");
    }
    const bool hasWidth =
        isPartOfTable(element) || element.name == "img" || element.name == "hr" || element.name == "col";
    return name == "width" && hasWidth ? said("width", lengthName(value)) : std::string();
}

} // namespace

std::string attributeStyle(const HtmlNode& element)
{
    std::string style;
    for (const auto* written = element.attributes; written != nullptr; written = written->next) {
        style += one(element, written->name, written->value);
    }
    if (element.name == "table") {
        const auto border = attribute(element, "border");
        style += hasAttribute(element, "border") && border != "0" ? "-cell-border:1px;" : "-cell-border:0;";
        style += "-cell-padding:" + std::to_string(numberOf(attribute(element, "cellpadding"), 1)) + "px;";
    }
    return style;
}

bool isCell(const HtmlNode& element)
{
    return element.name == "td" || element.name == "th";
}
