// SPDX-License-Identifier: MIT
#include "pages/boxcontent.h"

#include "markup/htmltree.h"
#include "pages/elementnotes.h"
#include "styles/computedstyle.h"

namespace {

/// The nearest node beside one that is not passed over; null when that is far away.
template <typename IsPassed>
const HtmlNode* neighbour(const HtmlNode& element, bool isNext, IsPassed isPassed)
{
    constexpr int farthest = 64; // nodes
    const auto step = [isNext](const HtmlNode& from) { return isNext ? from.next : from.previous; };
    int passed = 0;
    const HtmlNode* node = step(element);
    while (node != nullptr && isPassed(*node)) {
        node = ++passed < farthest ? step(*node) : nullptr;
    }
    return node;
}

const HtmlNode* seenNeighbour(const HtmlNode& element, bool isNext)
{
    return neighbour(element, isNext, isAbsent);
}

bool isCleared(const HtmlNode& node)
{
    return isElement(node) && notesOf(node).style->isCleared;
}

} // namespace

/// Whether there is nothing of a node to be shown.
bool isAbsent(const HtmlNode& node)
{
    if (isText(node)) {
        return isBlank(node.content);
    }
    const auto& notes = notesOf(node);
    return notes.element == Element::Ignored || notes.isHidden || notes.isFurniture;
}

bool isVoid(const HtmlNode& node)
{
    if (isText(node)) {
        return false;
    }
    const auto& notes = notesOf(node);
    return !notes.hasContent() && (notes.style->before == nullptr && notes.style->after == nullptr);
}

size_t lettersOf(const HtmlNode& node)
{
    return isText(node) ? node.content.size() : notesOf(node).text + notesOf(node).linkText;
}

bool holdsBlocks(const HtmlNode& element)
{
    for (const auto* child = element.firstChild; child != nullptr; child = child->next) {
        if (isElement(*child) && !isAbsent(*child) &&
            (!notesOf(*child).style->isInline() || notesOf(*child).element == Element::Break)) {
            return true;
        }
    }
    return false;
}

/// Whether a sheet makes it a cell, in a table that nobody has written.
bool isLooseCell(const HtmlNode& element)
{
    const auto* outer = element.parent == nullptr ? nullptr : notesOf(*element.parent).style;
    const bool isInTable =
        outer != nullptr && (outer->display == DisplayKind::Row || outer->display == DisplayKind::Table ||
                             outer->display == DisplayKind::RowGroup);
    return notesOf(element).style->display == DisplayKind::Cell &&
           notesOf(element).element != Element::Cell && !isInTable;
}

/// Whether a neighbour of the same kind would stand beside it.
bool standsBeside(const HtmlNode& element)
{
    const auto& notes = notesOf(element);
    const auto& style = *notes.style;
    if (notes.element == Element::Picture || isVoid(element)) {
        return false;
    }
    if (isLooseCell(element)) {
        return true;
    }
    const bool isLarge = notes.hasPicture || lettersOf(element) > ShortPart || holdsBlocks(element);
    return isLarge && (style.floating != Floating::None ||
                       (style.display == DisplayKind::InlineBlock && holdsBlocks(element)));
}

bool isFloatingBox(const HtmlNode& element)
{
    constexpr float mostPercent = 60;
    constexpr size_t mostLetters = 2000;
    const auto& notes = notesOf(element);
    const auto& style = *notes.style;
    const auto* next = seenNeighbour(element, true);
    const bool isWide = style.width.unit == StyleLength::Unit::Percent && style.width.value > mostPercent;
    const bool isNarrow = style.width.unit != StyleLength::Unit::Auto || lettersOf(element) <= ShortPart ||
                          notes.hasPicture || notes.element == Element::Table;
    return style.floating != Floating::None && next != nullptr && !isCleared(*next) && !isWide && isNarrow &&
           !isVoid(element) && lettersOf(element) <= mostLetters;
}

bool isFloatingAside(const HtmlNode& element)
{
    const auto& style = *notesOf(element).style;
    const auto* outer = element.parent == nullptr ? nullptr : notesOf(*element.parent).style;
    const auto* next =
        neighbour(element, true, [](const HtmlNode& node) { return isAbsent(node) || isVoid(node); });
    return style.floating == Floating::Right && style.isInline() && outer != nullptr && !outer->isInline() &&
           notesOf(*element.parent).isContainer() && next != nullptr && isElement(*next) &&
           !notesOf(*next).style->isInline() && isFloatingBox(element);
}

bool isFloatingInLine(const HtmlNode& element)
{
    const auto floats = [](const HtmlNode* node) {
        return node != nullptr && isElement(*node) && notesOf(*node).style->floating != Floating::None;
    };
    return floats(&element) && lettersOf(element) <= ShortPart && !notesOf(element).hasPicture &&
           !holdsBlocks(element) &&
           (floats(seenNeighbour(element, true)) || floats(seenNeighbour(element, false)));
}
