// SPDX-License-Identifier: MIT
#include "styles/csscolor.h"
#include "styles/csslength.h"
#include "styles/cssreader.h"
#include "styles/styleproperties.h"

#include <algorithm>
#include <array>

namespace {

constexpr float FarToTheLeft = -500; // pixels
constexpr float WidestBorder = 20;

bool isLineStyle(std::string_view word)
{
    static constexpr std::array<std::string_view, 8> styles{"solid",  "dashed", "dotted", "double",
                                                            "groove", "ridge",  "inset",  "outset"};
    return std::find(styles.begin(), styles.end(), word) != styles.end();
}

bool isNone(std::string_view word)
{
    return word == "none" || word == "hidden";
}

std::optional<float> lineWidth(std::string_view word, const ComputedStyle& style)
{
    constexpr std::array<std::pair<std::string_view, float>, 3> named{
        {{"thin", 1.F}, {"medium", 3.F}, {"thick", 5.F}}};
    for (const auto& [name, width] : named) {
        if (word == name) {
            return width;
        }
    }
    const auto length = readLength(word, style.fontSize);
    return length ? std::optional(std::clamp(float(*length), 0.F, WidestBorder)) : std::nullopt;
}

/// One to four values for top, right, bottom and left.
template <typename Use>
void forSides(std::string_view value, Use use)
{
    const auto words = wordsOf(value);
    if (words.empty() || words.size() > 4) {
        return;
    }
    const std::array<size_t, 4> chosen{0, words.size() > 1 ? 1U : 0U, words.size() > 2 ? 2U : 0U,
                                       words.size() > 3   ? 3U
                                       : words.size() > 1 ? 1U
                                                          : 0U};
    for (size_t side = 0; side < chosen.size(); ++side) {
        use(side, words[chosen[side]]);
    }
}

/// `1px solid red`, in any order. What is not said is as if it never had been.
void setBorder(ComputedStyle& style, size_t side, std::string_view value)
{
    StyleBorder border;
    for (const auto word : wordsOf(value)) {
        if (isLineStyle(word) || isNone(word)) {
            border.isDrawn = !isNone(word);
        } else if (const auto width = lineWidth(word, style)) {
            border.width = *width;
        } else {
            border.hasColor = word != "currentcolor";
            border.color = readColor(word);
            border.isDrawn = border.isDrawn && word != "transparent";
        }
    }
    style.border[size_t(side)] = border;
    style.saysBorder = true;
}

void setBorderWidth(ComputedStyle& style, size_t side, std::string_view word)
{
    style.border[side].width = lineWidth(word, style).value_or(style.border[side].width);
}

void setBorderStyle(ComputedStyle& style, size_t side, std::string_view word)
{
    style.border[side].isDrawn = isLineStyle(word);
    style.saysBorder = true;
}

void setBorderColor(ComputedStyle& style, size_t side, std::string_view word)
{
    style.border[side].hasColor = word != "currentcolor";
    style.border[side].color = readColor(word);
}

using SetSide = void (*)(ComputedStyle&, size_t, std::string_view);

template <SetSide set>
void applySides(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    forSides(value, [&style](size_t side, std::string_view word) { set(style, side, word); });
}

template <SetSide set, size_t side>
void applySide(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    set(style, side, value);
}

void applyBorder(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    for (size_t side = 0; side < 4; ++side) {
        setBorder(style, side, value);
    }
}

template <size_t side>
void applyMargin(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    const auto margin = readPixels(value, style.fontSize, around.width);
    style.isOutOfSight =
        style.isOutOfSight || (side == size_t(Side::Left) && margin && *margin < FarToTheLeft);
    style.margin[side] = margin.value_or(0);
}

void applyMargins(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    forSides(value, [&](size_t side, std::string_view word) {
        style.margin[side] = readPixels(word, style.fontSize, around.width).value_or(0);
    });
}

template <size_t side>
void applyPadding(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.padding[side] = std::max(0.F, readPixels(value, style.fontSize, around.width).value_or(0));
}

void applyPaddings(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    forSides(value, [&](size_t side, std::string_view word) {
        style.padding[side] = std::max(0.F, readPixels(word, style.fontSize, around.width).value_or(0));
    });
}

/// The first colour in it, also of a gradient.
void applyGround(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.saysGround = true;
    if (value == "inherit" && around.parent != nullptr) {
        style.ground = around.parent->ground;
        return;
    }
    style.ground.reset();
    for (auto word : wordsOf(value)) {
        if (const size_t bracket = word.find("gradient("); bracket != std::string_view::npos) {
            const auto inner = word.substr(bracket + 9, word.size() - bracket - 10);
            for (const auto part : splitCss(inner, ',')) {
                const auto color = readColor(wordsOf(part).empty() ? part : wordsOf(part).front());
                style.ground = style.ground ? style.ground : color;
            }
        } else if (const auto color = readColor(word)) {
            style.ground = color;
        }
    }
}

constexpr size_t Top = 0;
constexpr size_t Right = 1;
constexpr size_t Bottom = 2;
constexpr size_t Left = 3;

constexpr StyleProperty BoxTable[]{
    {"border", applyBorder},
    {"border-top", applySide<setBorder, Top>},
    {"border-right", applySide<setBorder, Right>},
    {"border-bottom", applySide<setBorder, Bottom>},
    {"border-left", applySide<setBorder, Left>},
    {"border-width", applySides<setBorderWidth>},
    {"border-top-width", applySide<setBorderWidth, Top>},
    {"border-right-width", applySide<setBorderWidth, Right>},
    {"border-bottom-width", applySide<setBorderWidth, Bottom>},
    {"border-left-width", applySide<setBorderWidth, Left>},
    {"border-style", applySides<setBorderStyle>},
    {"border-top-style", applySide<setBorderStyle, Top>},
    {"border-right-style", applySide<setBorderStyle, Right>},
    {"border-bottom-style", applySide<setBorderStyle, Bottom>},
    {"border-left-style", applySide<setBorderStyle, Left>},
    {"border-color", applySides<setBorderColor>},
    {"border-top-color", applySide<setBorderColor, Top>},
    {"border-right-color", applySide<setBorderColor, Right>},
    {"border-bottom-color", applySide<setBorderColor, Bottom>},
    {"border-left-color", applySide<setBorderColor, Left>},
    {"margin", applyMargins},
    {"margin-top", applyMargin<Top>},
    {"margin-right", applyMargin<Right>},
    {"margin-bottom", applyMargin<Bottom>},
    {"margin-left", applyMargin<Left>},
    {"padding", applyPaddings},
    {"padding-top", applyPadding<Top>},
    {"padding-right", applyPadding<Right>},
    {"padding-bottom", applyPadding<Bottom>},
    {"padding-left", applyPadding<Left>},
    {"padding-inline-start", applyPadding<Left>},
    {"background", applyGround},
    {"background-color", applyGround},
    {"background-image", [](ComputedStyle& style, std::string_view value, const StyleSurroundings& around) {
         if (value.find("gradient(") != std::string_view::npos) {
             applyGround(style, value, around);
         }
     }}};

} // namespace

std::span<const StyleProperty> boxProperties()
{
    return BoxTable;
}
