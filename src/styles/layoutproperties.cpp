// SPDX-License-Identifier: MIT
#include "styles/csslength.h"
#include "styles/cssreader.h"
#include "styles/styleproperties.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <unordered_map>

namespace {

constexpr double FarAway = -500; // pixels
constexpr size_t MostColumns = 24;
constexpr double NarrowestColumn = 40; // pixels

void applyDisplay(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    static const std::unordered_map<std::string_view, DisplayKind> names{
        {"inline", DisplayKind::Inline},
        {"inline-block", DisplayKind::InlineBlock},
        {"inline-flex", DisplayKind::InlineBlock},
        {"inline-grid", DisplayKind::InlineBlock},
        {"inline-table", DisplayKind::InlineBlock},
        {"block", DisplayKind::Block},
        {"flow-root", DisplayKind::Block},
        {"list-item", DisplayKind::ListItem},
        {"table", DisplayKind::Table},
        {"table-row-group", DisplayKind::RowGroup},
        {"table-header-group", DisplayKind::RowGroup},
        {"table-footer-group", DisplayKind::RowGroup},
        {"table-row", DisplayKind::Row},
        {"table-cell", DisplayKind::Cell},
        {"table-caption", DisplayKind::Caption},
        {"table-column", DisplayKind::None},
        {"table-column-group", DisplayKind::None},
        {"flex", DisplayKind::Flex},
        {"-webkit-flex", DisplayKind::Flex},
        {"grid", DisplayKind::Grid},
        {"contents", DisplayKind::Contents},
        {"none", DisplayKind::None},
        {"initial", DisplayKind::Inline}};
    const auto found = names.find(value);
    if (found != names.end()) {
        style.display = found->second;
    } else if (value == "inherit" && around.parent != nullptr) {
        style.display = around.parent->display;
    }
}

void applyPosition(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.isFixed = value == "fixed" || value == "sticky";
}

void applyPlace(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    const auto length = readLength(value, FontSize);
    style.isOutOfSight = style.isOutOfSight || (length && *length < FarAway);
}

/// What screen readers get and nobody sees.
void applyClip(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.isOutOfSight = value.find("rect(0") == 0 || value.find("rect(1px") == 0;
}

void applyClipPath(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.isOutOfSight = style.isOutOfSight || value.find("inset(50%") == 0;
}

void applyFloat(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.floating = value == "left" || value == "inline-start"  ? Floating::Left
                     : value == "right" || value == "inline-end" ? Floating::Right
                                                                 : Floating::None;
}

void applyWidth(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.width = readStyleLength(value, style.fontSize);
}

void applyHeight(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.height = readStyleLength(value, style.fontSize);
}

void applyOverflow(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.cutsOff = value == "hidden" || value == "clip";
}

void applyMaxWidth(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.maxWidth = readStyleLength(value, style.fontSize);
}

void applyClear(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.isCleared = value == "both" || value == "left" || value == "right";
}

int wholeNumber(std::string_view value, int fallback)
{
    std::from_chars(value.data(), value.data() + value.size(), fallback);
    return std::clamp(fallback, -1, int(MostColumns));
}

void applyColumns(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    style.columnCount = 0;
    for (const auto word : wordsOf(value)) {
        const auto width = readLength(word, style.fontSize);
        if (width && *width > NarrowestColumn && style.columnCount == 0) {
            style.columnCount = short(std::clamp(around.width / *width, 1.0, double(MostColumns)));
        } else if (!width) {
            style.columnCount = short(std::max(0, wholeNumber(word, 0)));
        }
    }
}

/// The narrowest that a column can be: "minmax(10em, 1fr)", "fit-content(20em)", "12em".
StyleLength trackOf(std::string_view track, double em)
{
    constexpr std::string_view minmax = "minmax(";
    if (track.substr(0, minmax.size()) == minmax) {
        const auto limits = splitCss(track.substr(minmax.size(), track.size() - minmax.size() - 1), ',');
        const auto least = readStyleLength(limits.front(), em);
        const auto most = readStyleLength(limits.back(), em);
        const bool isShared =
            least.unit != StyleLength::Unit::Pixels && most.unit == StyleLength::Unit::Share;
        return isShared ? most : least;
    }
    return readStyleLength(track, em);
}

void addTracks(GridColumns& columns, std::string_view value, double em, int depth);

/// "3, 1fr 2fr" or "auto-fill, minmax(20em, 1fr)".
void addRepeated(GridColumns& columns, std::string_view arguments, double em, int depth)
{
    const size_t comma = arguments.find(',');
    if (comma == std::string_view::npos) {
        return;
    }
    const auto count = trimmedCss(arguments.substr(0, comma));
    const auto tracks = trimmedCss(arguments.substr(comma + 1));
    if (count.substr(0, 5) == "auto-") {
        columns.repeatedWidth = trackOf(tracks, em).value;
        return;
    }
    for (int i = wholeNumber(count, 1); i > 0 && columns.widths.size() < MostColumns; --i) {
        addTracks(columns, tracks, em, depth + 1);
    }
}

void addTracks(GridColumns& columns, std::string_view value, double em, int depth)
{
    constexpr std::string_view repeat = "repeat(";
    for (const auto track : wordsOf(value)) {
        if (columns.widths.size() == MostColumns || depth > 1) {
            return;
        }
        if (track.front() == '[') {
            continue; // the name of a line
        }
        if (track.substr(0, repeat.size()) == repeat) {
            addRepeated(columns, track.substr(repeat.size(), track.size() - repeat.size() - 1), em, depth);
        } else {
            columns.widths.push_back(trackOf(track, em));
        }
    }
}

void applyGridColumns(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.gridColumns = {};
    if (value != "none" && value != "subgrid") {
        addTracks(style.gridColumns, value, style.fontSize, 0);
    }
}

/// "… / columns".
void applyGridTemplate(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    if (const auto parts = splitCss(value, '/'); parts.size() == 2) {
        applyGridColumns(style, parts[1], around);
    }
}

/// "2", "1 / 3", "1 / -1" or "span 2".
void applyGridPlace(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    constexpr std::string_view span = "span ";
    const auto parts = splitCss(value, '/');
    style.gridStart = 0;
    style.gridSpan = 1;
    int start = 0;
    for (size_t i = 0; i < parts.size(); ++i) {
        const auto part = parts[i];
        const bool isEnd = i > 0;
        if (part.substr(0, span.size()) == span) {
            style.gridSpan = short(std::max(1, wholeNumber(trimmedCss(part.substr(span.size())), 1)));
        } else if (const int line = wholeNumber(part, 0); isEnd && line != 0) {
            style.gridSpan = short(line < 0 ? -1 : std::max(1, line - std::max(1, start)));
        } else if (!isEnd) {
            start = line;
            style.gridStart = short(std::max(0, line));
        }
    }
}

void applyFlexDirection(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    for (const auto word : wordsOf(value)) {
        style.isColumnFlex =
            word.substr(0, 6) == "column" || (style.isColumnFlex && word.substr(0, 3) != "row");
        style.isWrappingFlex = word.substr(0, 4) == "wrap" || (style.isWrappingFlex && word != "nowrap");
    }
}

void applyFlexGrow(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    std::string_view unit;
    const auto first = wordsOf(value);
    const auto number = first.empty() ? std::nullopt : readCssNumber(first.front(), unit);
    style.flexGrow = number && unit.empty() ? float(*number) : value == "auto" ? 1.F : 0.F;
    if (first.size() > 1) {
        const auto basis = readStyleLength(first.back(), style.fontSize);
        const bool isWidth = basis.unit != StyleLength::Unit::Auto && basis.value > 0;
        style.width = isWidth ? basis : style.width;
    }
}

void applyFlexBasis(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    const auto basis = readStyleLength(value, style.fontSize);
    style.width = basis.unit == StyleLength::Unit::Auto ? style.width : basis;
}

void applyJustify(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.isSpread = value == "space-between";
}

void applyGap(ComputedStyle& style, std::string_view value, const StyleSurroundings& around)
{
    const auto words = wordsOf(value);
    style.gap = words.empty() ? 0 : readPixels(words.back(), style.fontSize, around.width).value_or(0);
}

void applyReset(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.counterReset = value == "none" ? std::string_view() : value;
}

void applyIncrement(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.counterIncrement = value == "none" ? std::string_view() : value;
}

void applyContent(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.content = value == "none" || value == "normal" ? std::string_view() : value;
}

/// Of a table's attributes; not for sheets.
void applyCellBorder(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.cellBorder = float(readLength(value, style.fontSize).value_or(0));
}

void applyCellPadding(ComputedStyle& style, std::string_view value, const StyleSurroundings& /*around*/)
{
    style.cellPadding = float(readLength(value, style.fontSize).value_or(1));
}

constexpr StyleProperty LayoutTable[]{{"-cell-border", applyCellBorder},
                                      {"-cell-padding", applyCellPadding},
                                      {"display", applyDisplay},
                                      {"content", applyContent},
                                      {"position", applyPosition},
                                      {"left", applyPlace},
                                      {"top", applyPlace},
                                      {"clip", applyClip},
                                      {"clip-path", applyClipPath},
                                      {"float", applyFloat},
                                      {"width", applyWidth},
                                      {"max-width", applyMaxWidth},
                                      {"height", applyHeight},
                                      {"overflow", applyOverflow},
                                      {"clear", applyClear},
                                      {"columns", applyColumns},
                                      {"column-count", applyColumns},
                                      {"column-width", applyColumns},
                                      {"-moz-column-count", applyColumns},
                                      {"-webkit-column-count", applyColumns},
                                      {"grid-template-columns", applyGridColumns},
                                      {"grid-template", applyGridTemplate},
                                      {"grid-column", applyGridPlace},
                                      {"grid-column-start", applyGridPlace},
                                      {"flex-direction", applyFlexDirection},
                                      {"flex-wrap", applyFlexDirection},
                                      {"flex-flow", applyFlexDirection},
                                      {"flex", applyFlexGrow},
                                      {"flex-grow", applyFlexGrow},
                                      {"flex-basis", applyFlexBasis},
                                      {"justify-content", applyJustify},
                                      {"gap", applyGap},
                                      {"grid-gap", applyGap},
                                      {"column-gap", applyGap},
                                      {"counter-reset", applyReset},
                                      {"counter-increment", applyIncrement}};

} // namespace

std::span<const StyleProperty> layoutProperties()
{
    return LayoutTable;
}
