// SPDX-License-Identifier: MIT
#include "styles/stylevalues.h"

#include "styles/csscolor.h"
#include "styles/cssreader.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

namespace {

constexpr double FarAway = -500; // pixels

bool isFixedPitch(std::string_view families)
{
    static constexpr std::array<std::string_view, 6> signs{"mono",       "courier", "consol",
                                                           "typewriter", "menlo",   "code"};
    const auto first = splitCss(families, ',').front();
    const bool isGeneric = families.find("monospace") != std::string_view::npos;
    return isGeneric || std::any_of(signs.begin(), signs.end(), [first](std::string_view sign) {
               return first.find(sign) != std::string_view::npos;
           });
}

std::optional<bool> boldness(std::string_view value, bool parent)
{
    constexpr double boldFrom = 600;
    std::string_view unit;
    if (const auto weight = readCssNumber(value, unit)) {
        return *weight >= boldFrom;
    }
    if (value == "bold" || value == "bolder") {
        return true;
    }
    return value == "normal" || value == "lighter" ? std::optional(false)
           : value == "inherit"                    ? std::optional(parent)
                                                   : std::nullopt;
}

/// `font: italic bold 12px/1.5 serif`.
void applyFont(ComputedStyle& style, std::string_view value)
{
    style.isBold = style.isItalic = false;
    style.isFixedPitch = isFixedPitch(value);
    for (const auto part : splitCss(value, ' ')) {
        const bool isSize = part.find_first_of("%/pe") != std::string_view::npos;
        style.isItalic = style.isItalic || part == "italic" || part == "oblique";
        style.isBold = style.isBold || (!isSize && boldness(part, false).value_or(false));
    }
}

void applyDecoration(ComputedStyle& style, std::string_view value)
{
    style.isUnderlined = style.isUnderlined || value.find("underline") != std::string_view::npos;
    style.isStruckOut = style.isStruckOut || value.find("line-through") != std::string_view::npos;
}

/// What screen readers get and nobody sees.
bool isFarAway(std::string_view name, std::string_view value)
{
    const bool isPlace = name == "left" || name == "top" || name == "text-indent" || name == "margin-left";
    const auto length = isPlace ? readLength(value, FontSize) : std::nullopt;
    return (length && *length < FarAway) || (name == "clip" && value.find("rect(0") == 0) ||
           (name == "clip" && value.find("rect(1px") == 0) ||
           (name == "clip-path" && value.find("inset(50%") == 0);
}

} // namespace

std::optional<double> readLength(std::string_view value, double em)
{
    static const std::unordered_map<std::string_view, double> units{
        {"px", 1}, {"pt", 4.0 / 3}, {"pc", 16}, {"in", 96}, {"cm", 37.8}, {"mm", 3.78}, {"rem", FontSize}};
    std::string_view unit;
    const auto number = readCssNumber(value, unit);
    if (!number) {
        return std::nullopt;
    }
    if (unit == "em" || unit == "ex" || unit == "ch") {
        return *number * em * (unit == "em" ? 1 : 0.5);
    }
    const auto found = units.find(unit);
    if (found != units.end()) {
        return *number * found->second;
    }
    return *number == 0 && unit.empty() ? std::optional(0.0) : std::nullopt;
}

void keepKnown(std::vector<CssDeclaration>& declarations)
{
    static const std::unordered_set<std::string_view> known{
        "display", "visibility", "position",    "font-weight", "font-style",      "font-family",
        "font",    "color",      "left",        "top",         "text-decoration", "text-decoration-line",
        "clip",    "clip-path",  "text-indent", "margin-left"};
    std::erase_if(declarations, [](const CssDeclaration& declaration) {
        return !known.contains(declaration.name) && declaration.name.compare(0, 2, "--") != 0;
    });
    for (auto& declaration : declarations) {
        declaration.value = lowerCss(declaration.value);
    }
}

void applyDeclaration(ComputedStyle& style, std::string_view name, std::string_view value,
                      const InheritedStyle& parent)
{
    const bool isInherited = value == "inherit";
    if (isFarAway(name, value)) {
        style.isOutOfSight = true;
    } else if (name == "display") {
        style.isDisplayed = value != "none";
    } else if (name == "visibility") {
        style.isVisible = isInherited ? parent.isVisible : value != "hidden" && value != "collapse";
    } else if (name == "position") {
        style.isFixed = value == "fixed" || value == "sticky";
    } else if (name == "font-weight") {
        style.isBold = boldness(value, parent.isBold).value_or(style.isBold);
    } else if (name == "font-style") {
        style.isItalic = value == "italic" || value == "oblique" || (isInherited && parent.isItalic);
    } else if (name == "font-family") {
        style.isFixedPitch = isInherited ? parent.isFixedPitch : isFixedPitch(value);
    } else if (name == "font" && !isInherited) {
        applyFont(style, value);
    } else if (name == "color") {
        style.color = isInherited ? parent.color : readColor(value);
    } else if (name == "text-decoration" || name == "text-decoration-line") {
        applyDecoration(style, value);
    }
}
