// SPDX-License-Identifier: MIT
#pragma once

#include "styles/computedstyle.h"

#include <cstddef>
#include <string>
#include <vector>

struct HtmlNode;

/// A part of an element that stands in a cell of rows and columns.
struct ArrangedItem {
    const HtmlNode* node = nullptr;
    bool beginsTable = false;
    bool endsTable = false;
    bool beginsRow = false;
    bool endsRow = false;
    bool beginsCell = true;
    bool endsCell = true;
    bool isAtRight = false;
    int emptyBefore = 0; ///< cells
    int span = 1;        ///< columns
    float gap = 0;       ///< pixels to what stands before it
    std::string width;   ///< such as "30%"; empty for what it takes
};

/// What style sheets put side by side in an element: grids, flexible rows, columns of text, tables that are
/// none in HTML, and neighbours that float.
class Arrangement {
public:
    Arrangement() = default;
    /// For an element that was surveyed, on a page with style sheets. A part with more than `mostLetters` is
    /// the page's text itself, with what stands beside that.
    Arrangement(const HtmlNode& parent, size_t mostLetters);

    [[nodiscard]] bool isEmpty() const { return m_items.empty(); }
    /// The place of the part that comes next; null when `node` is none of the parts.
    [[nodiscard]] const ArrangedItem* take(const HtmlNode& node);
    /// Whether the rows are so many that they should be divided.
    [[nodiscard]] bool isLong() const { return m_rows >= ManyRows; }
    /// Whether it is as wide as there is room.
    [[nodiscard]] bool isWide() const { return m_isWide; }
    /// Whether the cells hold the items of a list that was divided into columns.
    [[nodiscard]] bool isListInColumns() const { return m_isListInColumns; }

private:
    static constexpr size_t ManyRows = 100;

    void addParts(const HtmlNode& parent);
    void placeGrid(const ComputedStyle& style);
    void placeFlex(const ComputedStyle& style);
    void placeColumns(const HtmlNode& parent, size_t count);
    void placeTable(const HtmlNode& table);
    void placeRow(const HtmlNode& row, std::vector<ArrangedItem>& items);
    void placeTerms();
    void placeRuns(const HtmlNode& parent);
    void placeRun(std::vector<ArrangedItem> run);
    void divideIntoRows(std::vector<ArrangedItem>& items, size_t perRow) const;
    void finish();

    std::vector<ArrangedItem> m_items;
    size_t m_next = 0;
    size_t m_rows = 0;
    bool m_isWide = false;
    bool m_isListInColumns = false;
};
