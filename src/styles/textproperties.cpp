// SPDX-License-Identifier: MIT
#include "styles/csscolor.h"
#include "styles/csslength.h"
#include "styles/cssreader.h"
#include "styles/styleproperties.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace {

constexpr double FarFromText = -500; // pixels
constexpr float SmallestFont = 1;
constexpr float LargestFont = 200;

/// What the element around it has, or the page.
const InheritedStyle& outer(const StyleSurroundings& around)
{
    static const ComputedStyle page;
    return around.parent == nullptr ? page : *around.parent;
}

/// Takes a value that has a name from a table; "inherit" takes that of the element around it.
template <typename Value, size_t Size>
void choose(Value& value, std::string_view name, const Value& inherited,
            const std::array<std::pair<std::string_view, Value>, Size>& names)
{
    const auto found =
        std::find_if(names.begin(), names.end(), [name](const auto& entry) { return entry.first == name; });
    if (found != names.end()) {
        value = found->second;
    } else if (name == "inherit" || name == "unset") {
        value = inherited;
    }
}

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

std::optional<float> fontSizeOf(std::string_view value, float parent)
{
    static const std::unordered_map<std::string_view, float> named{
        {"xx-small", 9.F}, {"x-small", 10.F}, {"small", 13.F},   {"medium", 16.F},
        {"large", 18.F},   {"x-large", 24.F}, {"xx-large", 32.F}};
    constexpr float step = 1.2F;
    if (value == "smaller" || value == "larger" || value == "inherit") {
        return value == "smaller" ? parent / step : value == "larger" ? parent * step : parent;
    }
    if (const auto found = named.find(value); found != named.end()) {
        return found->second;
    }
    const auto size = readPixels(value, parent, parent);
    return size ? std::optional(std::clamp(*size, SmallestFont, LargestFont)) : std::nullopt;
}

void applyFontSize(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.fontSize = fontSizeOf(value, outer(around).fontSize).value_or(style.fontSize);
}

/// `font: italic bold 12px/1.5 serif`.
void applyFont(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    if (value == "inherit") {
        const auto& parent = outer(around);
        style.isBold = parent.isBold;
        style.isItalic = parent.isItalic;
        style.isFixedPitch = parent.isFixedPitch;
        style.fontSize = parent.fontSize;
        return;
    }
    style.isBold = style.isItalic = false;
    style.isFixedPitch = isFixedPitch(value);
    for (const auto part : wordsOf(value)) {
        const auto size = fontSizeOf(part.substr(0, part.find('/')), outer(around).fontSize);
        const bool isSize = size && part.find_first_of("%/pemsl") != std::string_view::npos;
        style.isItalic = style.isItalic || part == "italic" || part == "oblique";
        style.isBold = style.isBold || (!isSize && boldness(part, false).value_or(false));
        style.fontSize = isSize ? *size : style.fontSize;
    }
}

void applyWeight(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.isBold = boldness(value, outer(around).isBold).value_or(style.isBold);
}

void applySlant(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.isItalic =
        value == "italic" || value == "oblique" || (value == "inherit" && outer(around).isItalic);
}

void applyFamily(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.isFixedPitch = value == "inherit" ? outer(around).isFixedPitch : isFixedPitch(value);
}

void applyColor(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    if (value == "inherit" || value == "unset" || value == "currentcolor") {
        style.color = outer(around).color;
    } else {
        style.color = readColor(value);
    }
}

void applyDecoration(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.saysUnderline = true;
    style.isUnderlined = outer(around).isUnderlined || value.find("underline") != std::string_view::npos;
    style.isStruckOut = outer(around).isStruckOut || value.find("line-through") != std::string_view::npos;
}

void applyCase(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    static constexpr std::array<std::pair<std::string_view, TextCase>, 4> names{
        {{"none", TextCase::AsWritten},
         {"uppercase", TextCase::Upper},
         {"lowercase", TextCase::Lower},
         {"capitalize", TextCase::Capitals}}};
    choose(style.textCase, value, outer(around).textCase, names);
}

void applyVariant(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    const bool isSmall = value.find("small-caps") != std::string_view::npos;
    style.textCase = isSmall                             ? TextCase::Small
                     : style.textCase == TextCase::Small ? TextCase::AsWritten
                                                         : style.textCase;
}

void applyWhiteSpace(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    static constexpr std::array<std::pair<std::string_view, WhiteSpace>, 6> names{
        {{"normal", WhiteSpace::Normal},
         {"nowrap", WhiteSpace::NoWrap},
         {"pre", WhiteSpace::Kept},
         {"pre-wrap", WhiteSpace::Kept},
         {"break-spaces", WhiteSpace::Kept},
         {"pre-line", WhiteSpace::KeptLines}}};
    choose(style.whiteSpace, value, outer(around).whiteSpace, names);
}

void applyAlign(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    static constexpr std::array<std::pair<std::string_view, TextAlign>, 7> names{
        {{"start", TextAlign::Start},
         {"initial", TextAlign::Start},
         {"left", TextAlign::Left},
         {"center", TextAlign::Center},
         {"right", TextAlign::Right},
         {"end", TextAlign::Right},
         {"justify", TextAlign::Justify}}};
    choose(style.align, value, outer(around).align, names);
}

void applyListStyle(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    static constexpr std::array<std::pair<std::string_view, ListMark>, 11> names{
        {{"disc", ListMark::Disc},
         {"circle", ListMark::Circle},
         {"square", ListMark::Square},
         {"decimal", ListMark::Decimal},
         {"lower-alpha", ListMark::LowerAlpha},
         {"lower-latin", ListMark::LowerAlpha},
         {"upper-alpha", ListMark::UpperAlpha},
         {"upper-latin", ListMark::UpperAlpha},
         {"lower-roman", ListMark::LowerRoman},
         {"upper-roman", ListMark::UpperRoman},
         {"none", ListMark::None}}};
    for (const auto part : wordsOf(value)) {
        choose(style.listMark, part, outer(around).listMark, names);
    }
}

void applyIndent(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    const auto indent = readPixels(value, style.fontSize, around.width);
    style.isOutOfSight = style.isOutOfSight || (indent && *indent < FarFromText);
    style.textIndent = indent.value_or(style.textIndent);
}

void applyDirection(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.isRightToLeft = value == "rtl" || (value == "inherit" && outer(around).isRightToLeft);
}

void applyVisibility(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.isVisible = value == "inherit" ? outer(around).isVisible : value != "hidden" && value != "collapse";
}

void applyVerticalAlign(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    static constexpr std::array<std::pair<std::string_view, VerticalAlign>, 8> names{
        {{"baseline", VerticalAlign::Baseline},
         {"sub", VerticalAlign::Sub},
         {"super", VerticalAlign::Super},
         {"top", VerticalAlign::Top},
         {"text-top", VerticalAlign::Top},
         {"middle", VerticalAlign::Middle},
         {"bottom", VerticalAlign::Bottom},
         {"text-bottom", VerticalAlign::Bottom}}};
    const auto parent = around.parent == nullptr ? VerticalAlign::Baseline : around.parent->verticalAlign;
    choose(style.verticalAlign, value, parent, names);
}

constexpr StyleProperty TextTable[]{{"font", applyFont},
                                    {"font-size", applyFontSize},
                                    {"font-weight", applyWeight},
                                    {"font-style", applySlant},
                                    {"font-family", applyFamily},
                                    {"font-variant", applyVariant},
                                    {"font-variant-caps", applyVariant},
                                    {"color", applyColor},
                                    {"text-decoration", applyDecoration},
                                    {"text-decoration-line", applyDecoration},
                                    {"text-transform", applyCase},
                                    {"white-space", applyWhiteSpace},
                                    {"text-align", applyAlign},
                                    {"list-style", applyListStyle},
                                    {"list-style-type", applyListStyle},
                                    {"text-indent", applyIndent},
                                    {"direction", applyDirection},
                                    {"visibility", applyVisibility},
                                    {"vertical-align", applyVerticalAlign}};

} // namespace

std::span<const StyleProperty> textProperties()
{
    return TextTable;
}
