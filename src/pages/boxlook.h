// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagecontext.h"
#include "styles/computedstyle.h"

#include <optional>
#include <string>
#include <string_view>

/// How the colours of a page are shown on the reader's palette.
struct ShownColors {
    PaletteColors palette;
    Rgb pageGround = 0xFFFFFF;   ///< of the page, as it is written
    std::optional<Rgb> pageText; ///< the same
    [[nodiscard]] Rgb ground(Rgb ground) const;
    /// What a text is to have on a ground that is shown; none for the palette's own. Greys mean something in
    /// code only.
    [[nodiscard]] std::optional<Rgb> ink(const ComputedStyle& style, Rgb shownGround, bool isInCode) const;
    /// What a page's own ground needs of a text without a colour; none when it is readable.
    [[nodiscard]] std::optional<Rgb> plainInk(Rgb shownGround) const;
    /// The same for a link. In a heading it may look like the heading.
    [[nodiscard]] std::optional<Rgb> linkInk(const ComputedStyle& style, Rgb shownGround,
                                             bool isInHeading) const;
};

/// What rich text needs to show boxes and blocks as style sheets want them: attributes as attributeText()
/// makes them.
namespace BoxLook {

[[nodiscard]] std::string colorName(Rgb color);

/// Whether an element draws a box: a ground that is not that behind it, or lines at its sides.
[[nodiscard]] bool isDrawn(const ComputedStyle& style, Rgb groundBehind);
/// Whether it draws lines only above or below.
[[nodiscard]] bool hasOnlyRules(const ComputedStyle& style);

/// How a cell looks; `ground` as it is shown.
struct Cell {
    const ComputedStyle* style;
    std::optional<Rgb> ground;
    float leastPadding = 0; ///< pixels at the sides
    bool isLine = false;    ///< its lines are not to be broken
};
[[nodiscard]] std::string cell(const Cell& cell, const ShownColors& colors);

/// What a block of text takes over from those around it.
struct Flow {
    TextAlign align = TextAlign::Start;
    bool isRightToLeft = false;
};
/// The alignment and the indent of a block of text. `indent` in pixels, `more` in the words of a style sheet.
[[nodiscard]] std::string block(const ComputedStyle& style, const Flow& around, float indent,
                                std::string_view more = {});
/// What its left margin and padding come to, in reason.
[[nodiscard]] float indentOf(const ComputedStyle& style);
/// The space above and below a division, in reason.
[[nodiscard]] std::string distances(const ComputedStyle& style);

[[nodiscard]] std::string_view markName(ListMark mark);
[[nodiscard]] std::string widthText(const StyleLength& width);

} // namespace BoxLook
