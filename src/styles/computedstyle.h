// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct StyleVariables;

/// An opaque colour, 0xRRGGBB.
using Rgb = uint32_t;

/// Of links, where no sheet says otherwise.
inline constexpr Rgb LinkColor = 0x0000EE;

enum class DisplayKind : uint8_t {
    Inline,
    InlineBlock,
    Block,
    ListItem,
    Table,
    RowGroup,
    Row,
    Cell,
    Caption,
    Flex,
    Grid,
    Contents, ///< as if only its content were there
    None
};
enum class WhiteSpace : uint8_t { Normal, NoWrap, Kept, KeptLines };
enum class TextCase : uint8_t { AsWritten, Upper, Lower, Capitals, Small };
enum class TextAlign : uint8_t { Start, Left, Center, Right, Justify };
enum class ListMark : uint8_t {
    Disc,
    Circle,
    Square,
    Decimal,
    LowerAlpha,
    UpperAlpha,
    LowerRoman,
    UpperRoman,
    None
};
enum class VerticalAlign : uint8_t { Baseline, Sub, Super, Top, Middle, Bottom };
enum class Side : uint8_t { Top, Right, Bottom, Left };
enum class Floating : uint8_t { None, Left, Right };

/// What is handed down from an element to those in it.
struct InheritedStyle {
    bool isBold = false;
    bool isItalic = false;
    bool isFixedPitch = false;
    bool isUnderlined = false; ///< by this element or one around it, as is the next
    bool isStruckOut = false;
    bool isVisible = true;
    bool isRightToLeft = false;
    TextCase textCase = TextCase::AsWritten;
    WhiteSpace whiteSpace = WhiteSpace::Normal;
    TextAlign align = TextAlign::Start;
    ListMark listMark = ListMark::Disc;
    float fontSize = 16;   ///< pixels
    float textIndent = 0;  ///< pixels
    float cellPadding = 1; ///< pixels in the cells of a table, as its attributes say, as is the next
    float cellBorder = 0;
    std::optional<Rgb> color; ///< of the text; none for the reader's
    const StyleVariables* variables = nullptr;
};

/// A length in pixels, or in per cent of what is around.
struct StyleLength {
    enum class Unit : uint8_t { Auto, Pixels, Percent, Share };
    float value = 0;
    Unit unit = Unit::Auto;
};

struct StyleBorder {
    float width = 3; ///< pixels
    bool isDrawn = false;
    bool hasColor = false; ///< else it has that of the text
    std::optional<Rgb> color;
};

/// The columns of a grid, and where an element stands in one.
struct GridColumns {
    std::vector<StyleLength> widths;
    float repeatedWidth = 0; ///< pixels of a column, when as many stand side by side as there is room for
};

/// What an element looks like after all style sheets.
struct ComputedStyle : InheritedStyle {
    DisplayKind display = DisplayKind::Inline;
    bool isOutOfSight = false; ///< displayed, but cut off or far away
    bool cutsOff = false;      ///< what does not fit into it
    bool isFixed = false;      ///< stays where it is while the page is scrolled
    // What a sheet says, or the element itself.
    bool saysGround = false;
    bool saysBorder = false;
    bool saysUnderline = false; ///< or that there is none
    bool isColumnFlex = false;
    bool isWrappingFlex = false;
    bool isSpread = false;  ///< the items of a flex stand as far from each other as they can
    bool isCleared = false; ///< stands below what floats before it
    Floating floating = Floating::None;
    VerticalAlign verticalAlign = VerticalAlign::Baseline;
    short columnCount = 0; ///< of text; 0 for one
    short gridStart = 0;   ///< column, from 1; 0 for the next
    short gridSpan = 1;    ///< columns; -1 for all that follow
    float flexGrow = 0;
    float gap = 0; ///< pixels between columns
    StyleLength width;
    StyleLength height;
    StyleLength maxWidth;
    std::array<float, 4> margin{};  ///< pixels, by Side
    std::array<float, 4> padding{}; ///< pixels, by Side
    std::array<StyleBorder, 4> border{};
    std::optional<Rgb> ground; ///< none for what is behind it
    GridColumns gridColumns;
    std::string counterReset; ///< names and numbers, as is the next
    std::string counterIncrement;
    std::string content; ///< of what a sheet puts before or behind: strings, attr(), counters
    const ComputedStyle* before = nullptr; ///< what a sheet puts before the content of the element
    const ComputedStyle* after = nullptr;

    [[nodiscard]] bool isDisplayed() const { return display != DisplayKind::None; }
    [[nodiscard]] bool isHidden() const { return !isDisplayed() || !isVisible || isOutOfSight || isPoint(); }
    /// Whether it has no room to show anything.
    [[nodiscard]] bool isPoint() const
    {
        const auto isNothing = [](const StyleLength& length) {
            return length.unit == StyleLength::Unit::Pixels && length.value <= 1;
        };
        return cutsOff && isNothing(width) && isNothing(height);
    }
    /// Whether it stands in a line of text.
    [[nodiscard]] bool isInline() const
    {
        return display == DisplayKind::Inline || display == DisplayKind::InlineBlock ||
               display == DisplayKind::Contents;
    }
    [[nodiscard]] float borderWidth(Side side) const
    {
        const auto& edge = border[size_t(side)];
        return edge.isDrawn ? edge.width : 0;
    }
    [[nodiscard]] bool hasBorder() const
    {
        return borderWidth(Side::Top) + borderWidth(Side::Right) + borderWidth(Side::Bottom) +
                   borderWidth(Side::Left) >
               0;
    }
};
