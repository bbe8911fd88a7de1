// SPDX-License-Identifier: MIT
// How StyledWriter begins lists and tables.
#include "pages/styledwriter.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/boxcontent.h"
#include "pages/readinglook.h"

namespace {

constexpr float CellPadding = 4;       // pixels at the sides, at least
constexpr float WidestCell = 90;       // per cent; more would leave no room for the others
constexpr size_t LongestCellLine = 60; // letters

ListMark markOf(const HtmlNode& list)
{
    for (const auto* child = list.firstChild; child != nullptr; child = child->next) {
        if (isElement(*child, "li") && !notesOf(*child).isHidden) {
            const auto& style = *notesOf(*child).style;
            return style.display == DisplayKind::ListItem ? style.listMark : ListMark::None;
        }
    }
    return ListMark::None;
}

std::string listAttributes(const HtmlNode& list, ListMark mark)
{
    std::string look = isElement(list, "ol") ? ReadingLook::listStart(list) : std::string();
    const bool isUsual = mark == (isElement(list, "ol") ? ListMark::Decimal : ListMark::Disc);
    return isUsual ? look
                   : look + attributeText("style", "list-style-type:" + std::string(BoxLook::markName(mark)));
}

/// Whether a table, or a cell of it, draws lines.
bool hasLines(const HtmlNode& table)
{
    constexpr int most = 64; // elements that are looked at
    int looked = 0;
    for (const auto* node = &table; node != nullptr && looked < most; node = nextNode(node, &table)) {
        if (isElement(*node)) {
            ++looked;
            const Element kind = notesOf(*node).element;
            if ((kind == Element::Cell || kind == Element::Row) && notesOf(*node).style->hasBorder()) {
                return true;
            }
        }
    }
    return false;
}

/// The table of a row, if the row is its first one.
const HtmlNode* tableBegunBy(const HtmlNode& row)
{
    const auto* table = row.parent;
    table = table != nullptr && !isElement(*table, Tag::Table) ? table->parent : table;
    if (table == nullptr || !isElement(*table, Tag::Table)) {
        return nullptr;
    }
    const auto* node = table->firstChild;
    while (node != nullptr && !isElement(*node, Tag::Tr)) {
        const bool isGroup =
            isElement(*node, Tag::Thead) || isElement(*node, Tag::Tbody) || isElement(*node, Tag::Tfoot);
        node = nextNode(node, table, isGroup);
    }
    return node == &row ? table : nullptr;
}

/// The width that a table gives to the column of a cell in its first row.
StyleLength widthOfColumn(const HtmlNode& cell)
{
    const auto* table = tableBegunBy(*cell.parent);
    int column = 0;
    for (const auto* before = cell.previous; before != nullptr; before = before->previous) {
        column += isElement(*before) ? 1 : 0;
    }
    const auto* node = table == nullptr ? nullptr : table->firstChild;
    while (node != nullptr) {
        if (isElement(*node, Tag::Col) && column-- == 0) {
            return notesOf(*node).style->width;
        }
        node = nextNode(node, table, isElement(*node, Tag::Colgroup));
    }
    return {};
}

} // namespace

void StyledWriter::openListElement(const HtmlNode& element, const ElementNotes& notes)
{
    const ListMark mark = markOf(element);
    const bool isArranged = frame().isArranged;
    const bool isInColumns = isArranged && m_arrangements.back().isListInColumns();
    if (mark == ListMark::None || (isArranged && !isInColumns) || !notes.hasContent()) {
        openBlockElement(element, notes);
        return;
    }
    frame().isList = true;
    frame().flow = {notes.style->align, notes.style->isRightToLeft};
    const std::string name = isElement(element, "ol") ? "ol" : "ul";
    const std::string markup = startTag(name, listAttributes(element, mark));
    if (isInColumns) {
        openContainer({}, {});
    } else if (name == "ol") {
        openBlock(markup, endTag(name));
    } else {
        openList(markup, endTag(name));
    }
}

void StyledWriter::openTableElement(const HtmlNode& element, const ElementNotes& notes)
{
    if (!notes.hasContent() || m_openTables >= DeepestTable) {
        frame().isTableFlat = true;
        openContainer({}, {});
        return;
    }
    ++m_openTables;
    frame().isTable = frame().hasTable = true;
    frame().flow = {};
    const auto& style = *notes.style;
    std::string look = R"( cellspacing="0")";
    const auto width = BoxLook::widthText(style.width);
    if (!width.empty() && !(style.width.unit == StyleLength::Unit::Percent && style.width.value > 100)) {
        look += attributeText("width", width);
    }
    std::string rules = hasLines(element) ? "border-collapse:collapse;" : "";
    if (style.floating != Floating::None) {
        rules += style.floating == Floating::Left ? "float:left;" : "float:right;";
    }
    if (!rules.empty()) {
        rules += "margin-top:4px;margin-bottom:8px";
        look += attributeText("style", rules);
    }
    openTable(element, look);
}

void StyledWriter::openCell(const HtmlNode& element, const ElementNotes& notes)
{
    if (!isInTable()) {
        openContainer({}, {});
        return;
    }
    ComputedStyle style = *notes.style;
    if (element.parent != nullptr && !style.saysBorder) {
        const auto& row = styleOf(*element.parent);
        for (const Side side : {Side::Top, Side::Bottom}) {
            auto& own = style.border[size_t(side)];
            own = style.borderWidth(side) > 0 ? own : row.border[size_t(side)];
        }
    }
    auto& open = frame();
    std::optional<Rgb> shown;
    if (const auto ground = groundOfCell(element)) {
        open.ground = *ground;
        open.shownGround = m_colors.ground(*ground);
        shown = open.shownGround;
    }
    open.flow = {style.align, style.isRightToLeft};
    open.isOwnCell = true;
    const bool isLine =
        style.whiteSpace == WhiteSpace::NoWrap && notes.text + notes.linkText <= LongestCellLine;
    std::string look = BoxLook::cell({&style, shown, CellPadding, isLine}, m_colors) +
                       BoxLook::block(style, {}, 0) + ReadingLook::spans(element);
    const auto width = cellWidth(element);
    const auto own = style.width.unit == StyleLength::Unit::Auto ? widthOfColumn(element) : style.width;
    const bool isWidest = own.unit == StyleLength::Unit::Percent && own.value > WidestCell;
    look += width.empty() && !isWidest && !BoxLook::widthText(own).empty()
                ? attributeText("width", BoxLook::widthText(own))
                : width;
    if (holdsBlocks(element)) {
        openContainer(startTag("td", look), "</td>");
    } else {
        openBlock(startTag("td", look), "</td>");
    }
}
