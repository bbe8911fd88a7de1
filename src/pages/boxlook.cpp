// SPDX-License-Identifier: MIT
#include "pages/boxlook.h"

#include "markup/tags.h"
#include "styles/readablecolor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace {

constexpr float WidestIndent = 40;
constexpr float HighestDistance = 12;
constexpr float WidestPadding = 16;

constexpr std::array<Side, 4> AllSides{Side::Top, Side::Right, Side::Bottom, Side::Left};

std::string_view sideName(Side side)
{
    static constexpr std::array<std::string_view, 4> names{"top", "right", "bottom", "left"};
    return names[size_t(side)];
}

std::string pixels(float value)
{
    return std::to_string(std::lround(value)) + "px";
}

std::string declaration(std::string_view name, std::string_view value)
{
    return std::string(name).append(1, ':').append(value).append(1, ';');
}

/// Between the ground and the text: tells things apart and is not read.
Rgb lineColor(const PaletteColors& palette)
{
    constexpr int share = 4; // one of four parts is the text's
    Rgb color = 0;
    for (unsigned shift = 0; shift <= 16; shift += 8) {
        const int base = int(palette.base >> shift & 0xFFU);
        const int text = int(palette.text >> shift & 0xFFU);
        color |= Rgb(base + (text - base) / share) << shift;
    }
    return color;
}

/// Lines look like pale grounds: they tell things apart and are not read.
std::string border(const ComputedStyle& style, Side side, const ShownColors& colors)
{
    const float width = style.borderWidth(side);
    const auto& edge = style.border[size_t(side)];
    if (width <= 0 || (edge.hasColor && !edge.color)) {
        return {};
    }
    const Rgb shown = edge.color ? colors.ground(*edge.color) : lineColor(colors.palette);
    return declaration("border-" + std::string(sideName(side)),
                       pixels(std::max(1.F, width)) + " solid " + BoxLook::colorName(shown));
}

std::string_view alignName(TextAlign align)
{
    switch (align) {
    case TextAlign::Start:
        return {};
    case TextAlign::Left:
        return "left";
    case TextAlign::Center:
        return "center";
    case TextAlign::Right:
        return "right";
    case TextAlign::Justify:
        return {}; // such lines have gaps in them
    }
    return {};
}

} // namespace

Rgb ShownColors::ground(Rgb ground) const
{
    return groundOn(ground, pageGround, palette.base);
}

std::optional<Rgb> ShownColors::ink(const ComputedStyle& style, Rgb shownGround, bool isInCode) const
{
    constexpr double faint = 10;
    const bool isOwn = style.color && style.color != pageText;
    const bool isFaint = isOwn && isInCode && contrast(*style.color, pageGround) < faint;
    if (isOwn && (chroma(*style.color) >= LeastChroma || isFaint)) {
        return readableOn(*style.color, shownGround);
    }
    return plainInk(shownGround);
}

std::optional<Rgb> ShownColors::plainInk(Rgb shownGround) const
{
    return shownGround == palette.base || contrast(palette.text, shownGround) >= LeastContrast
               ? std::nullopt
               : std::optional(readableOn(palette.text, shownGround));
}

std::optional<Rgb> ShownColors::linkInk(const ComputedStyle& style, Rgb shownGround, bool isInHeading) const
{
    if (isInHeading && style.color && chroma(*style.color) < LeastChroma && !palette.isLinkChosen) {
        return readableOn(palette.text, shownGround);
    }
    const bool isOwn = style.color && *style.color != LinkColor && chroma(*style.color) >= LeastChroma;
    if (isOwn && !palette.isLinkChosen) {
        return readableOn(*style.color, shownGround);
    }
    return contrast(palette.link, shownGround) >= LeastContrast || palette.isLinkChosen
               ? std::nullopt
               : std::optional(readableOn(palette.link, shownGround));
}

std::string BoxLook::colorName(Rgb color)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%06x", color & 0xFFFFFFU);
    return text.data();
}

bool BoxLook::isDrawn(const ComputedStyle& style, Rgb groundBehind)
{
    const bool hasSides = style.borderWidth(Side::Left) > 0 || style.borderWidth(Side::Right) > 0;
    const bool hasGround = style.ground && *style.ground != groundBehind;
    return hasGround || hasSides || (style.borderWidth(Side::Top) > 0 && style.borderWidth(Side::Bottom) > 0);
}

bool BoxLook::hasOnlyRules(const ComputedStyle& style)
{
    return style.hasBorder() && style.borderWidth(Side::Left) + style.borderWidth(Side::Right) <= 0;
}

std::string BoxLook::cell(const Cell& cell, const ShownColors& colors)
{
    const auto& style = *cell.style;
    std::string look;
    if (cell.ground) {
        look += declaration("background-color", colorName(*cell.ground));
    }
    for (const Side side : AllSides) {
        look += border(style, side, colors);
        const bool isAtSide = side == Side::Left || side == Side::Right;
        const float padding = std::max(style.padding[size_t(side)], isAtSide ? cell.leastPadding : 0.F);
        if (padding > 0) {
            look += declaration("padding-" + std::string(sideName(side)),
                                pixels(std::min(padding, WidestPadding)));
        }
    }
    look += cell.isLine ? "white-space:nowrap;" : "";
    std::string attributes = look.empty() ? std::string() : attributeText("style", look);
    const auto vertical = style.verticalAlign;
    if (vertical == VerticalAlign::Middle || vertical == VerticalAlign::Bottom) {
        attributes += attributeText("valign", vertical == VerticalAlign::Middle ? "middle" : "bottom");
    }
    return attributes;
}

std::string BoxLook::block(const ComputedStyle& style, const Flow& around, float indent,
                           std::string_view more)
{
    std::string look(more);
    if (indent >= 1) {
        look += declaration("margin-left", pixels(indent));
    }
    const float first = std::clamp(style.textIndent, -WidestIndent, WidestIndent);
    if (std::abs(first) >= 1 && first + indent >= 0) {
        look += declaration("text-indent", pixels(first));
    }
    std::string attributes = look.empty() ? std::string() : attributeText("style", look);
    if (const auto align = alignName(style.align); align != alignName(around.align)) {
        attributes += attributeText("align", !align.empty() ? align : style.isRightToLeft ? "right" : "left");
    }
    return style.isRightToLeft == around.isRightToLeft
               ? attributes
               : attributes + attributeText("dir", style.isRightToLeft ? "rtl" : "ltr");
}

float BoxLook::indentOf(const ComputedStyle& style)
{
    const float indent = style.margin[size_t(Side::Left)] + style.padding[size_t(Side::Left)];
    return std::clamp(indent, 0.F, WidestIndent);
}

std::string BoxLook::distances(const ComputedStyle& style)
{
    constexpr float share = 0.75F;
    std::string look;
    for (const Side side : {Side::Top, Side::Bottom}) {
        const float distance = (style.margin[size_t(side)] + style.padding[size_t(side)]) * share;
        if (distance >= 1) {
            look += declaration("margin-" + std::string(sideName(side)),
                                pixels(std::min(distance, HighestDistance)));
        }
    }
    return look;
}

std::string_view BoxLook::markName(ListMark mark)
{
    static constexpr std::array<std::string_view, 9> names{"disc",        "circle",      "square",
                                                           "decimal",     "lower-alpha", "upper-alpha",
                                                           "lower-roman", "upper-roman", "none"};
    return names[size_t(mark)];
}

std::string BoxLook::widthText(const StyleLength& width)
{
    if (width.unit == StyleLength::Unit::Pixels && width.value >= 1) {
        return std::to_string(std::lround(width.value));
    }
    return width.unit == StyleLength::Unit::Percent && width.value >= 1
               ? std::to_string(std::lround(width.value)) + '%'
               : std::string();
}
