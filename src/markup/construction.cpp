// SPDX-License-Identifier: MIT
#include "markup/construction.h"

HtmlNode& Construction::makeElement(Tag tag, std::string_view name, const HtmlAttribute* attributes)
{
    auto& node = m_store.addNode();
    node.tag = tag;
    node.name = name;
    node.attributes = attributes;
    return node;
}

void Construction::put(HtmlNode& node, const Place& place)
{
    node.parent = place.parent;
    node.next = place.before;
    node.previous = place.before == nullptr ? place.parent->lastChild : place.before->previous;
    (node.previous == nullptr ? place.parent->firstChild : node.previous->next) = &node;
    (node.next == nullptr ? place.parent->lastChild : node.next->previous) = &node;
}

void Construction::remove(HtmlNode& node)
{
    if (node.parent == nullptr) {
        return;
    }
    (node.previous == nullptr ? node.parent->firstChild : node.previous->next) = node.next;
    (node.next == nullptr ? node.parent->lastChild : node.next->previous) = node.previous;
    node.parent = node.previous = node.next = nullptr;
}

/// Where a node goes that is put into an element.
Construction::Place Construction::place(HtmlNode& target) const
{
    const bool isMisplaced = isFostering && has(target.tag, Trait::TablePart) && target.tag != Tag::Template;
    return isMisplaced ? fosterPlace() : Place{&target, nullptr};
}

/// Before the innermost table.
Construction::Place Construction::fosterPlace() const
{
    const size_t table = open.lastIndexOf(Tag::Table);
    const size_t inner = open.lastIndexOf(Tag::Template);
    if (inner != OpenElements::Nowhere && (table == OpenElements::Nowhere || inner > table)) {
        return {&open.at(inner), nullptr};
    }
    if (table == OpenElements::Nowhere || table == 0) {
        return {&open.at(0), nullptr};
    }
    HtmlNode& element = open.at(table);
    return element.parent != nullptr ? Place{element.parent, &element} : Place{&open.at(table - 1), nullptr};
}

HtmlNode& Construction::insertElement(const HtmlToken& token)
{
    auto& node = makeElement(token.tag, token.name, token.attributes);
    put(node, place(open.current()));
    open.push(node);
    return node;
}

HtmlNode& Construction::insertElement(Tag tag)
{
    HtmlToken token;
    token.tag = tag;
    token.name = tagName(tag);
    return insertElement(token);
}

HtmlNode& Construction::insertForeign(const HtmlToken& token, bool isFormula)
{
    auto& node = insertElement(token);
    node.isFormula = isFormula;
    return node;
}

void Construction::insertEmpty(const HtmlToken& token)
{
    insertElement(token);
    open.pop();
}

/// Pieces that follow each other become one.
void Construction::insertText(std::string_view text)
{
    if (text.empty()) {
        return;
    }
    const Place where = place(open.current());
    auto* before = where.before == nullptr ? where.parent->lastChild : where.before->previous;
    if (before != nullptr && isText(*before) &&
        before->content.data() + before->content.size() == text.data()) {
        before->content = {before->content.data(), before->content.size() + text.size()};
        return;
    }
    auto& node = m_store.addNode();
    node.content = text;
    put(node, where);
}

void Construction::insertWithText(const HtmlToken& token, HtmlScanner::Content content)
{
    m_scanner.setContent(content, insertElement(token).name);
    modeAfterText = mode;
    mode = Mode::Text;
}

void Construction::makeRoot(const HtmlToken* token)
{
    root = &makeElement(Tag::Html, tagName(Tag::Html), token == nullptr ? nullptr : token->attributes);
    open.push(*root);
}

void Construction::merge(HtmlNode& element, const HtmlAttribute* attributes)
{
    for (; attributes != nullptr; attributes = attributes->next) {
        if (!hasAttribute(element, attributes->name)) {
            auto& added = m_store.addAttribute();
            added = *attributes;
            added.next = element.attributes;
            element.attributes = &added;
        }
    }
}

void Construction::closeParagraph()
{
    open.generateImpliedEnds(Tag::P);
    open.popUntil(Tag::P);
}

void Construction::endParagraph()
{
    if (open.isInButtonScope(Tag::P)) {
        closeParagraph();
    }
}

void Construction::closeCell()
{
    open.generateImpliedEnds();
    open.popUntil(Trait::Cell);
    formatting.clearToMarker();
    mode = Mode::InRow;
}

HtmlNode& Construction::copyOf(const HtmlNode& element)
{
    ++m_copies;
    return makeElement(element.tag, element.name, element.attributes);
}

void Construction::reconstruct()
{
    if (m_copies >= MostCopies) {
        return;
    }
    const size_t begin = formatting.begin();
    size_t first = formatting.size();
    while (first > begin && open.indexOf(formatting.at(first - 1)) == OpenElements::Nowhere) {
        --first;
    }
    for (size_t i = first; i < formatting.size() && m_copies < MostCopies; ++i) {
        auto& node = copyOf(formatting.at(i));
        put(node, place(open.current()));
        open.push(node);
        formatting.replace(i, node);
    }
}

bool Construction::adopt(Tag tag)
{
    constexpr int mostTurns = 8;
    if (open.current().tag == tag && formatting.indexOf(open.current()) == FormattingElements::Nowhere) {
        open.pop();
        return true;
    }
    for (int turn = 0; turn < mostTurns; ++turn) {
        auto* const element = formatting.last(tag);
        if (element == nullptr) {
            return turn > 0;
        }
        const size_t index = open.indexOf(*element);
        if (index == OpenElements::Nowhere) {
            formatting.remove(*element);
            return true;
        }
        if (!open.isInScope(*element)) {
            return true;
        }
        size_t furthest = index + 1;
        while (furthest < open.size() && !has(open.at(furthest).tag, Trait::Special)) {
            ++furthest;
        }
        if (furthest == open.size() || m_copies >= MostCopies) {
            open.shrink(index);
            formatting.remove(*element);
            return true;
        }
        adoptAround(*element, index, furthest);
    }
    return true;
}

/// Takes a block out of a formatting element that ends within it, and puts what is in the block so far into a
/// copy of the element.
void Construction::adoptAround(HtmlNode& element, size_t index, size_t furthest)
{
    HtmlNode& block = open.at(furthest);
    HtmlNode& ancestor = open.at(index - 1);
    size_t bookmark = formatting.indexOf(element);
    HtmlNode& last = moveUp(index, furthest, bookmark);
    remove(last);
    put(last, place(ancestor));
    auto& copy = copyOf(element);
    while (auto* child = block.firstChild) {
        remove(*child);
        put(*child, {&copy, nullptr});
        ++m_copies;
    }
    put(copy, {&block, nullptr});
    formatting.insert(bookmark, copy);
    formatting.remove(element);
    open.remove(open.indexOf(element));
    open.insert(open.indexOf(block) + 1, copy);
}

/// Puts a block into copies of the formatting elements between it and the one at `index`, and returns the
/// outermost of them.
HtmlNode& Construction::moveUp(size_t index, size_t furthest, size_t& bookmark)
{
    constexpr int mostKept = 3;
    HtmlNode* const block = &open.at(furthest);
    HtmlNode* last = block;
    int count = 0;
    for (size_t i = furthest - 1; i > index; --i) {
        HtmlNode& node = open.at(i);
        size_t entry = formatting.indexOf(node);
        if (++count > mostKept && entry != FormattingElements::Nowhere) {
            bookmark -= entry < bookmark ? 1 : 0;
            formatting.remove(node);
            entry = FormattingElements::Nowhere;
        }
        if (entry == FormattingElements::Nowhere) {
            open.remove(i);
            continue;
        }
        auto& copy = copyOf(node);
        formatting.replace(entry, copy);
        open.replace(i, copy);
        if (last == block) {
            bookmark = entry + 1;
        }
        remove(*last);
        put(*last, {&copy, nullptr});
        last = &copy;
    }
    return *last;
}

void Construction::resetMode()
{
    for (size_t i = open.size(); i > 0; --i) {
        const Mode found = modeIn(i - 1);
        if (found != Mode::Text) {
            mode = found;
            return;
        }
    }
    mode = Mode::InBody;
}

/// The mode that an open element calls for; Text for none.
Mode Construction::modeIn(size_t index) const
{
    const bool isLast = index == 0;
    switch (open.at(index).tag) {
    case Tag::Select: {
        const size_t table = open.lastIndexOf(Tag::Table);
        return table != OpenElements::Nowhere && table < index ? Mode::InSelectInTable : Mode::InSelect;
    }
    case Tag::Td:
    case Tag::Th:
        return isLast ? Mode::InBody : Mode::InCell;
    case Tag::Tr:
        return Mode::InRow;
    case Tag::Tbody:
    case Tag::Thead:
    case Tag::Tfoot:
        return Mode::InTableBody;
    case Tag::Caption:
        return Mode::InCaption;
    case Tag::Colgroup:
        return Mode::InColumnGroup;
    case Tag::Table:
        return Mode::InTable;
    case Tag::Template:
        return templateModes.empty() ? Mode::InBody : templateModes.back();
    case Tag::Head:
        return Mode::InHead;
    case Tag::Body:
        return Mode::InBody;
    case Tag::Frameset:
        return Mode::InFrameset;
    case Tag::Html:
        return head == nullptr ? Mode::BeforeHead : Mode::AfterHead;
    default:
        return Mode::Text;
    }
}
