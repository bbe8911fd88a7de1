// SPDX-License-Identifier: MIT
#include "pages/arrangement.h"

#include "markup/htmltree.h"
#include "pages/boxcontent.h"
#include "pages/boxlook.h"
#include "pages/elementnotes.h"

#include <algorithm>
#include <cmath>

namespace {

const ComputedStyle& styleOf(const HtmlNode& element)
{
    return *notesOf(element).style;
}

constexpr double ViewWidth = 700; // pixels, as far as one can know
constexpr size_t MostInRow = 12;
constexpr size_t FewInRow = 4;
constexpr float WidestGap = 24;
constexpr size_t MostItems = 20'000;

size_t fitting(const StyleLength& width, float gap)
{
    constexpr double all = 100.5; // per cent; thirds are rounded
    if (width.value < 1) {
        return 0;
    }
    if (width.unit == StyleLength::Unit::Percent) {
        return size_t(std::max(1.0, std::floor(all / double(width.value))));
    }
    return width.unit == StyleLength::Unit::Pixels
               ? size_t(std::max(1.0, std::floor((ViewWidth + double(gap)) / double(width.value + gap))))
               : 0;
}

/// Rich text has no tables in its paragraphs.
bool isArrangeable(Element element)
{
    switch (element) {
    case Element::Table:
    case Element::Row:
    case Element::Picture:
    case Element::Heading:
    case Element::Paragraph:
    case Element::Summary:
        return false;
    default:
        return true;
    }
}

} // namespace

Arrangement::Arrangement(const HtmlNode& parent, size_t mostLetters)
{
    const auto& style = styleOf(parent);
    const auto& notes = notesOf(parent);
    const auto* above = parent.parent == nullptr ? nullptr : notesOf(*parent.parent).style;
    const bool isOnlyChild = above != nullptr && above->columnCount > 1 && parent.next == nullptr;
    if (!isArrangeable(notes.element)) {
        return;
    }
    if (style.display == DisplayKind::Table) {
        placeTable(parent);
    } else if (style.display == DisplayKind::Grid) {
        addParts(parent);
        placeGrid(style);
    } else if (style.display == DisplayKind::Flex && !style.isColumnFlex) {
        addParts(parent);
        placeFlex(style);
    } else if (style.columnCount > 1 || isOnlyChild) {
        placeColumns(parent,
                     size_t(std::max(style.columnCount, isOnlyChild ? above->columnCount : short(0))));
    } else if (notes.element == Element::Terms) {
        addParts(parent);
        placeTerms();
    } else if (!style.isInline()) {
        placeRuns(parent);
    }
    const bool isPage = std::any_of(m_items.begin(), m_items.end(), [mostLetters](const ArrangedItem& item) {
        return lettersOf(*item.node) > mostLetters;
    });
    if (isPage && style.display != DisplayKind::Table) {
        m_items.clear();
    }
    finish();
}

/// The children, and those of elements that are as if they were not there.
void Arrangement::addParts(const HtmlNode& parent)
{
    const auto* node = nextNode(&parent, &parent);
    while (node != nullptr && m_items.size() < MostItems) {
        const bool isDissolved =
            isElement(*node) && !isAbsent(*node) && styleOf(*node).display == DisplayKind::Contents;
        if (!isAbsent(*node) && !isDissolved) {
            auto& item = m_items.emplace_back();
            item.node = node;
        }
        node = nextNode(node, &parent, isDissolved);
    }
}

void Arrangement::placeGrid(const ComputedStyle& style)
{
    const auto& columns = style.gridColumns;
    const size_t count = columns.repeatedWidth > 0
                             ? fitting({columns.repeatedWidth, StyleLength::Unit::Pixels}, style.gap)
                             : columns.widths.size();
    if (count < 2 || m_items.size() < 2) {
        m_items.clear();
        return;
    }
    const bool isShared =
        !columns.widths.empty() &&
        std::all_of(columns.widths.begin(), columns.widths.end(), [](const StyleLength& width) {
            return width.unit == StyleLength::Unit::Share && width.value > 0;
        });
    float sum = 0;
    for (const auto& width : columns.widths) {
        sum += width.value;
    }
    m_isWide = isShared;
    size_t column = count; // the next one in the row
    for (auto& item : m_items) {
        const auto* own = isText(*item.node) ? nullptr : &styleOf(*item.node);
        const bool isPlaced = own != nullptr && own->gridStart > 0;
        size_t start = isPlaced ? std::min(size_t(own->gridStart) - 1, count - 1) : column;
        const size_t wanted = own == nullptr ? 1 : own->gridSpan < 0 ? count : size_t(own->gridSpan);
        const bool isToTheEnd = own != nullptr && own->gridSpan < 0 && isPlaced;
        item.beginsRow = column >= count || start < column || (start + wanted > count && !isToTheEnd);
        start = item.beginsRow && !isPlaced ? 0 : start;
        const size_t span = std::min(wanted, count - start);
        item.emptyBefore = int(start - (item.beginsRow ? 0 : column));
        item.span = int(span);
        item.gap = start == 0 ? 0 : style.gap;
        if (isShared && span == 1 && start < columns.widths.size()) {
            item.width = std::to_string(std::lround(100 * columns.widths[start].value / sum)) + '%';
        }
        column = start + span;
    }
}

void Arrangement::placeFlex(const ComputedStyle& style)
{
    std::erase_if(m_items, [](const ArrangedItem& item) { return isVoid(*item.node); });
    const bool isShort = std::all_of(m_items.begin(), m_items.end(), [](const ArrangedItem& item) {
        return lettersOf(*item.node) <= ShortPart && !(isElement(*item.node) && holdsBlocks(*item.node));
    });
    if (m_items.size() < 2 || (m_items.size() > FewInRow && isShort && style.isWrappingFlex)) {
        m_items.clear();
        return;
    }
    size_t perRow = m_items.size() > MostInRow ? FewInRow : m_items.size();
    for (auto& item : m_items) {
        if (isElement(*item.node)) {
            const auto& width = styleOf(*item.node).width;
            const size_t fit = style.isWrappingFlex ? fitting(width, style.gap) : 0;
            perRow = fit > 0 ? std::min(perRow, fit) : perRow;
            item.width = width.unit == StyleLength::Unit::Percent ? BoxLook::widthText(width) : std::string();
        }
        item.gap = style.gap;
    }
    m_isWide = style.isSpread;
    m_items.back().isAtRight = style.isSpread;
    if (perRow < 2) {
        m_items.clear();
    } else {
        divideIntoRows(m_items, perRow);
    }
}

void Arrangement::divideIntoRows(std::vector<ArrangedItem>& items, size_t perRow) const
{
    for (size_t i = 0; i < items.size(); ++i) {
        items[i].beginsRow = i % perRow == 0;
        items[i].gap = items[i].beginsRow ? 0 : items[i].gap;
    }
}

/// Text in columns: the children one after another, each column about as long as the others.
void Arrangement::placeColumns(const HtmlNode& parent, size_t count)
{
    constexpr size_t ofItem = 40; // letters that an item takes room for, even if it is short
    constexpr float gap = 16;
    addParts(parent);
    if (m_items.size() < count || m_items.size() < 2) {
        m_items.clear();
        return;
    }
    m_isListInColumns = notesOf(parent).element == Element::List;
    m_isWide = true;
    size_t all = 0;
    for (const auto& item : m_items) {
        all += std::max(ofItem, lettersOf(*item.node));
    }
    size_t sum = 0;
    size_t column = 0;
    for (auto& item : m_items) {
        const bool isFirst = &item == &m_items.front();
        const size_t wanted = std::min(count - 1, sum * count / std::max<size_t>(1, all));
        item.beginsRow = isFirst;
        item.beginsCell = isFirst || wanted > column;
        item.gap = isFirst ? 0 : gap;
        item.width = std::to_string(100 / count) + '%';
        column = std::max(column, wanted);
        sum += std::max(ofItem, lettersOf(*item.node));
    }
    for (size_t i = 0; i + 1 < m_items.size(); ++i) {
        m_items[i].endsCell = m_items[i + 1].beginsCell;
    }
}

/// Cells in rows, whatever the elements are called.
void Arrangement::placeTable(const HtmlNode& table)
{
    std::vector<ArrangedItem> items;
    const auto* node = nextNode(&table, &table);
    bool isRowOpen = false;
    while (node != nullptr && items.size() < MostItems) {
        const bool isSeen = isElement(*node) && !isAbsent(*node);
        const auto display = isSeen ? styleOf(*node).display : DisplayKind::None;
        const bool isOpened = display == DisplayKind::RowGroup || display == DisplayKind::Contents;
        if (display == DisplayKind::Row) {
            placeRow(*node, items);
            isRowOpen = false;
        } else if (!isAbsent(*node) && !isOpened) {
            auto& item = items.emplace_back();
            item.node = node;
            item.beginsRow = !isRowOpen;
            isRowOpen = display == DisplayKind::Cell;
        }
        node = nextNode(node, &table, isOpened);
    }
    const auto rows =
        std::count_if(items.begin(), items.end(), [](const auto& item) { return item.beginsRow; });
    // One column needs no table.
    if (size_t(rows) < items.size()) {
        m_items = std::move(items);
    }
}

void Arrangement::placeRow(const HtmlNode& row, std::vector<ArrangedItem>& items)
{
    const size_t first = items.size();
    for (const auto* child = row.firstChild; child != nullptr; child = child->next) {
        if (!isAbsent(*child)) {
            auto& item = items.emplace_back();
            item.node = child;
            item.beginsRow = items.size() == first + 1;
        }
    }
}

/// Terms that float, with what is said of them at their right.
void Arrangement::placeTerms()
{
    const bool areBeside = std::any_of(m_items.begin(), m_items.end(), [](const ArrangedItem& item) {
        return isElement(*item.node, "dt") && styleOf(*item.node).floating == Floating::Left;
    });
    if (!areBeside) {
        m_items.clear();
        return;
    }
    bool isTermLast = false;
    for (auto& item : m_items) {
        const bool isTerm = isElement(*item.node, "dt");
        item.beginsRow = isTerm || !isTermLast;
        item.emptyBefore = !isTerm && !isTermLast ? 1 : 0;
        isTermLast = isTerm;
    }
}

/// Neighbours that stand beside each other.
void Arrangement::placeRuns(const HtmlNode& parent)
{
    std::vector<ArrangedItem> run;
    for (const auto* child = parent.firstChild; child != nullptr; child = child->next) {
        if (isAbsent(*child)) {
            continue;
        }
        if (isElement(*child) && standsBeside(*child)) {
            auto& item = run.emplace_back();
            item.node = child;
            continue;
        }
        placeRun(std::move(run));
        run.clear();
    }
    placeRun(std::move(run));
}

void Arrangement::placeRun(std::vector<ArrangedItem> run)
{
    if (run.size() < 2) {
        return;
    }
    size_t perRow = std::min(run.size(), FewInRow);
    float sum = 0;
    bool isKnown = true;
    for (auto& item : run) {
        const auto& style = styleOf(*item.node);
        isKnown = isKnown && style.width.unit == StyleLength::Unit::Percent;
        sum += style.width.value;
        if (style.display == DisplayKind::Cell) {
            perRow = run.size();
            isKnown = false;
            continue; // as wide as what is in it
        }
        item.width = BoxLook::widthText(style.width);
        if (const size_t fit = fitting(style.width, 0); fit > 0 && !isKnown) {
            perRow = std::min(run.size(), fit);
        }
    }
    constexpr float all = 101;
    if (isKnown) {
        const bool isOneRow = sum <= all;
        perRow = isOneRow ? run.size() : std::min(run.size(), fitting(styleOf(*run.front().node).width, 0));
        m_isWide = true;
    }
    if (perRow < 2) {
        return;
    }
    divideIntoRows(run, perRow);
    run.front().beginsTable = true;
    run.back().endsTable = true;
    m_items.insert(m_items.end(), run.begin(), run.end());
}

void Arrangement::finish()
{
    if (m_items.empty()) {
        return;
    }
    m_items.front().beginsTable = true;
    m_items.front().beginsRow = true;
    m_items.back().endsTable = true;
    for (size_t i = 0; i < m_items.size(); ++i) {
        auto& item = m_items[i];
        const bool isLast = i + 1 == m_items.size() || item.endsTable;
        item.endsRow = isLast || m_items[i + 1].beginsRow;
        item.endsCell = item.endsCell || item.endsRow;
        item.gap = std::min(item.gap, WidestGap);
        m_rows += item.beginsRow ? 1 : 0;
    }
}

const ArrangedItem* Arrangement::take(const HtmlNode& node)
{
    const bool isNext = m_next < m_items.size() && m_items[m_next].node == &node;
    return isNext ? &m_items[m_next++] : nullptr;
}
