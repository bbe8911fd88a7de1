// SPDX-License-Identifier: MIT
#include "pages/shownstyle.h"

#include "markup/htmltree.h"
#include "markup/tags.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr int LeastChroma = 48; // of 255; less is a grey

void apply(ShownStyle& style, std::string_view name, std::string_view tag)
{
    static constexpr std::array<std::string_view, 10> bold{"b",  "strong", "th", "dt", "h1",
                                                           "h2", "h3",     "h4", "h5", "h6"};
    static constexpr std::array<std::string_view, 6> italic{"i", "em", "cite", "dfn", "var", "address"};
    static constexpr std::array<std::string_view, 5> fixed{"code", "kbd", "pre", "tt", "samp"};
    const bool isSignature = tag.find("class=\"sig\"") != std::string_view::npos;
    const bool isTitle = tag.find("class=\"title\"") != std::string_view::npos;
    const bool isNumbered = name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6';
    style.keepsLook = style.keepsLook || isTitle || isNumbered;
    style.isBold = (style.isBold || isOneOf(name, bold) || isTitle) && !isSignature;
    style.isItalic = style.isItalic || isOneOf(name, italic);
    style.isFixedPitch = style.isFixedPitch || isOneOf(name, fixed) || isSignature;
    style.isUnderlined = style.isUnderlined || name == "u" || name == "ins";
    style.isStruckOut = style.isStruckOut || name == "s" || name == "strike" || name == "del";
}

int chroma(Rgb color)
{
    const std::array<int, 3> parts{int(color >> 16U & 0xFFU), int(color >> 8U & 0xFFU), int(color & 0xFFU)};
    const auto [least, most] = std::minmax_element(parts.begin(), parts.end());
    return *most - *least;
}

std::string colorName(Rgb color)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%06x", color & 0xFFFFFFU);
    return text.data();
}

} // namespace

ShownStyle shownWithin(ShownStyle outer, std::string_view markup)
{
    for (size_t begin = markup.find('<'); begin != std::string_view::npos;
         begin = markup.find('<', begin + 1)) {
        const size_t end = std::min(markup.find('>', begin), markup.size());
        const auto tag = markup.substr(begin + 1, end - begin - 1);
        apply(outer, tag.substr(0, nextBlank(tag, 0)), tag);
    }
    return outer;
}

bool hasMeaningfulColor(const ComputedStyle& style, const ComputedStyle& ofPage)
{
    return style.color && style.color != ofPage.color && chroma(*style.color) >= LeastChroma;
}

std::string styleSpan(const ShownStyle& shown, const ComputedStyle& wanted, const ComputedStyle& ofPage,
                      bool isInLink, const std::function<Rgb(Rgb)>& ink)
{
    std::string style;
    if (wanted.isBold != shown.isBold && (wanted.isBold || !shown.keepsLook)) {
        style += wanted.isBold ? "font-weight:bold;" : "font-weight:normal;";
    }
    if (wanted.isItalic != shown.isItalic && (wanted.isItalic || !shown.keepsLook)) {
        style += wanted.isItalic ? "font-style:italic;" : "font-style:normal;";
    }
    const bool isStruckOut = wanted.isStruckOut && !shown.isStruckOut;
    const bool isUnderlined = wanted.isUnderlined && !shown.isUnderlined && !isInLink;
    if (isStruckOut || isUnderlined) {
        style += isUnderlined
                     ? isStruckOut ? "text-decoration:underline line-through;" : "text-decoration:underline;"
                     : "text-decoration:line-through;";
    }
    if (hasMeaningfulColor(wanted, ofPage) && !isInLink) {
        style += "color:" + colorName(ink ? ink(*wanted.color) : *wanted.color) + ';';
    }
    std::string tag = style.empty() ? std::string() : startTag("span", attributeText("style", style));
    // The font of code is the reader's choice.
    if (wanted.isFixedPitch && !shown.isFixedPitch && !ofPage.isFixedPitch) {
        tag = tag.empty() ? "<tt>" : "<tt>" + tag;
    }
    return tag;
}
