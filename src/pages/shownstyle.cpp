// SPDX-License-Identifier: MIT
#include "pages/shownstyle.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/boxlook.h"

#include <algorithm>
#include <array>

namespace {

void apply(ShownStyle& style, std::string_view name)
{
    static constexpr std::array<std::string_view, 10> bold{"b",  "strong", "th", "dt", "h1",
                                                           "h2", "h3",     "h4", "h5", "h6"};
    static constexpr std::array<std::string_view, 6> italic{"i", "em", "cite", "dfn", "var", "address"};
    static constexpr std::array<std::string_view, 5> fixed{"code", "kbd", "pre", "tt", "samp"};
    style.isBold = style.isBold || isOneOf(name, bold);
    style.isItalic = style.isItalic || isOneOf(name, italic);
    style.isFixedPitch = style.isFixedPitch || isOneOf(name, fixed);
    style.isUnderlined = style.isUnderlined || name == "u" || name == "ins";
    style.isStruckOut = style.isStruckOut || name == "s" || name == "strike" || name == "del";
    style.isRaised = style.isRaised || name == "sub" || name == "sup";
}

std::string lineStyle(const ShownStyle& shown, const WantedLook& wanted)
{
    const bool isStruckOut = wanted.style->isStruckOut && !shown.isStruckOut;
    const bool isUnderlined = wanted.style->isUnderlined && !shown.isUnderlined && !wanted.isInLink;
    if (isStruckOut && isUnderlined) {
        return "text-decoration:underline line-through;";
    }
    return isUnderlined ? "text-decoration:underline;" : isStruckOut ? "text-decoration:line-through;" : "";
}

std::string_view caseStyle(TextCase textCase)
{
    switch (textCase) {
    case TextCase::AsWritten:
        return {};
    case TextCase::Upper:
        return "text-transform:uppercase;";
    case TextCase::Lower:
        return "text-transform:lowercase;";
    case TextCase::Capitals:
        return "text-transform:capitalize;";
    case TextCase::Small:
        return "font-variant:small-caps;";
    }
    return {};
}

std::string sizeStyle(const ShownStyle& shown, const WantedLook& wanted)
{
    const bool isRaised = wanted.style->verticalAlign == VerticalAlign::Super ||
                          wanted.style->verticalAlign == VerticalAlign::Sub;
    if (isRaised || shown.isRaised) {
        return isRaised && !shown.isRaised ? wanted.style->verticalAlign == VerticalAlign::Super
                                                 ? "vertical-align:super;"
                                                 : "vertical-align:sub;"
                                           : "";
    }
    return wanted.size.empty() ? std::string() : std::string("font-size:").append(wanted.size) + ';';
}

} // namespace

ShownStyle shownWithin(ShownStyle outer, std::string_view markup)
{
    for (size_t begin = markup.find('<'); begin != std::string_view::npos;
         begin = markup.find('<', begin + 1)) {
        const size_t end = std::min(markup.find('>', begin), markup.size());
        const auto tag = markup.substr(begin + 1, end - begin - 1);
        apply(outer, tag.substr(0, nextBlank(tag, 0)));
    }
    return outer;
}

std::string_view sizeName(float ratio)
{
    // Rich text has 0.8, 1.2, 1.5 and 2 times the size.
    struct Size {
        float from;
        std::string_view name;
    };
    static constexpr std::array<Size, 5> sizes{
        {{1.75F, "xx-large"}, {1.35F, "x-large"}, {1.13F, "large"}, {0.82F, {}}, {0, "small"}}};
    return std::find_if(sizes.begin(), sizes.end() - 1,
                        [ratio](const Size& size) { return ratio >= size.from; })
        ->name;
}

std::string styleTags(const ShownStyle& shown, const WantedLook& wanted)
{
    const auto& look = *wanted.style;
    std::string style;
    if (look.isBold != shown.isBold && (look.isBold || !shown.keepsWeight)) {
        style += look.isBold ? "font-weight:bold;" : "font-weight:normal;";
    }
    if (look.isItalic != shown.isItalic) {
        style += look.isItalic ? "font-style:italic;" : "font-style:normal;";
    }
    style += lineStyle(shown, wanted);
    style += caseStyle(look.textCase);
    style += sizeStyle(shown, wanted);
    if (wanted.color) {
        style += "color:" + BoxLook::colorName(*wanted.color) + ';';
    }
    if (wanted.ground) {
        style += "background-color:" + BoxLook::colorName(*wanted.ground) + ';';
    }
    std::string tags = style.empty() ? std::string() : startTag("span", attributeText("style", style));
    // The font of code is the reader's choice.
    return look.isFixedPitch && !shown.isFixedPitch && !wanted.keepsPitch ? "<tt>" + tags : tags;
}

std::string styleEnds(std::string_view tags)
{
    const bool isFixed = tags.substr(0, 4) == "<tt>";
    return std::string(tags.size() > (isFixed ? 4U : 0U) ? "</span>" : "") + (isFixed ? "</tt>" : "");
}
