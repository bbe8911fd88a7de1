// SPDX-License-Identifier: MIT
#include "markup/construction.h"
#include "markup/insertionmodes.h"

namespace InsertionModes {

namespace {

using Kind = HtmlToken::Kind;

/// What a token does that stands in a table, but in none of its cells.
Step foster(Construction& tree, const HtmlToken& token)
{
    tree.isFostering = true;
    const Step result = inBody(tree, token);
    tree.isFostering = false;
    return result;
}

/// Ends all that is open within the innermost element that `isContext`.
template <typename Test>
void clearTo(Construction& tree, Test isContext)
{
    while (tree.open.size() > 1 && !isContext(tree.open.current().tag) &&
           tree.open.current().tag != Tag::Template) {
        tree.open.pop();
    }
}

void clearToTable(Construction& tree)
{
    clearTo(tree, [](Tag tag) { return tag == Tag::Table; });
}
void clearToRowGroup(Construction& tree)
{
    clearTo(tree, [](Tag tag) { return has(tag, Trait::RowGroup); });
}
void clearToRow(Construction& tree)
{
    clearTo(tree, [](Tag tag) { return tag == Tag::Tr; });
}

/// Ends of elements that mean nothing where they stand in a table.
bool isIdleEnd(const HtmlToken& token)
{
    const Tag tag = token.tag;
    return token.kind == Kind::End && (tag == Tag::Body || tag == Tag::Caption || tag == Tag::Col ||
                                       tag == Tag::Colgroup || tag == Tag::Html);
}

bool isTableStart(const HtmlToken& token)
{
    const Tag tag = token.tag;
    return token.kind == Kind::Start &&
           (tag == Tag::Caption || tag == Tag::Col || tag == Tag::Colgroup || tag == Tag::Tr ||
            has(tag, Trait::RowGroup) || has(tag, Trait::Cell));
}

Step beginInTable(Construction& tree, const HtmlToken& token)
{
    switch (token.tag) {
    case Tag::Caption:
        clearToTable(tree);
        tree.formatting.pushMarker();
        tree.insertElement(token);
        tree.mode = Mode::InCaption;
        return Step::Done;
    case Tag::Colgroup:
        clearToTable(tree);
        tree.insertElement(token);
        tree.mode = Mode::InColumnGroup;
        return Step::Done;
    case Tag::Col:
        clearToTable(tree);
        tree.insertElement(Tag::Colgroup);
        tree.mode = Mode::InColumnGroup;
        return Step::Again;
    case Tag::Tbody:
    case Tag::Tfoot:
    case Tag::Thead:
        clearToTable(tree);
        tree.insertElement(token);
        tree.mode = Mode::InTableBody;
        return Step::Done;
    case Tag::Td:
    case Tag::Th:
    case Tag::Tr:
        clearToTable(tree);
        tree.insertElement(Tag::Tbody);
        tree.mode = Mode::InTableBody;
        return Step::Again;
    case Tag::Table:
        if (!tree.open.isInTableScope(Tag::Table)) {
            return Step::Done;
        }
        tree.open.popUntil(Tag::Table);
        tree.resetMode();
        return Step::Again;
    case Tag::Script:
    case Tag::Style:
    case Tag::Template:
        return inHead(tree, token);
    case Tag::Input: {
        const auto* type = token.attribute("type");
        if (type == nullptr || !equalsLower(type->value, "hidden")) {
            return foster(tree, token);
        }
        tree.insertEmpty(token);
        return Step::Done;
    }
    case Tag::Form:
        if (tree.form == nullptr && tree.open.count(Tag::Template) == 0) {
            tree.form = &tree.insertElement(token);
            tree.open.pop();
        }
        return Step::Done;
    default:
        return foster(tree, token);
    }
}

Step endInTable(Construction& tree, const HtmlToken& token)
{
    if (token.tag == Tag::Table) {
        if (tree.open.isInTableScope(Tag::Table)) {
            tree.open.popUntil(Tag::Table);
            tree.resetMode();
        }
        return Step::Done;
    }
    if (token.tag == Tag::Template) {
        return inHead(tree, token);
    }
    const bool isIdle = isIdleEnd(token) || token.tag == Tag::Tr || has(token.tag, Trait::RowGroup) ||
                        has(token.tag, Trait::Cell);
    return isIdle ? Step::Done : foster(tree, token);
}

/// Leaves a row, or rows that stand together, when `isOpen`.
Step leave(Construction& tree, bool isOpen, void (*clear)(Construction&), Mode outer, Step result)
{
    if (!isOpen) {
        return Step::Done;
    }
    clear(tree);
    tree.open.pop();
    tree.mode = outer;
    return result;
}

} // namespace

Step inTable(Construction& tree, const HtmlToken& token)
{
    switch (token.kind) {
    case Kind::Text:
        if (has(tree.open.current().tag, Trait::TablePart) && isBlank(token.text)) {
            tree.insertText(token.text);
            return Step::Done;
        }
        return foster(tree, token);
    case Kind::Start:
        return beginInTable(tree, token);
    case Kind::End:
        return endInTable(tree, token);
    case Kind::PageEnd:
        return inBody(tree, token);
    case Kind::Doctype:
        return Step::Done;
    }
    return Step::Done;
}

Step inCaption(Construction& tree, const HtmlToken& token)
{
    const bool isEnd = token.isEnd(Tag::Caption);
    if (isEnd || isTableStart(token) || token.isEnd(Tag::Table)) {
        if (!tree.open.isInTableScope(Tag::Caption)) {
            return Step::Done;
        }
        tree.open.generateImpliedEnds();
        tree.open.popUntil(Tag::Caption);
        tree.formatting.clearToMarker();
        tree.mode = Mode::InTable;
        return isEnd ? Step::Done : Step::Again;
    }
    const bool isIdle =
        isIdleEnd(token) ||
        (token.kind == Kind::End &&
         (token.tag == Tag::Tr || has(token.tag, Trait::RowGroup) || has(token.tag, Trait::Cell)));
    return isIdle ? Step::Done : inBody(tree, token);
}

Step inColumnGroup(Construction& tree, const HtmlToken& token)
{
    if (token.isText() && isBlank(token.text)) {
        tree.insertText(token.text);
        return Step::Done;
    }
    if (token.isStart(Tag::Col)) {
        tree.insertEmpty(token);
        return Step::Done;
    }
    if (token.isStart(Tag::Html) || token.kind == Kind::PageEnd) {
        return inBody(tree, token);
    }
    if (token.isStart(Tag::Template) || token.isEnd(Tag::Template)) {
        return inHead(tree, token);
    }
    const bool isOpen = tree.open.current().tag == Tag::Colgroup;
    if (token.kind == Kind::Doctype || token.isEnd(Tag::Col) || !isOpen) {
        return Step::Done;
    }
    tree.open.pop();
    tree.mode = Mode::InTable;
    return token.isEnd(Tag::Colgroup) ? Step::Done : Step::Again;
}

Step inTableBody(Construction& tree, const HtmlToken& token)
{
    if (token.isStart(Tag::Tr)) {
        clearToRowGroup(tree);
        tree.insertElement(token);
        tree.mode = Mode::InRow;
        return Step::Done;
    }
    if (token.kind == Kind::Start && has(token.tag, Trait::Cell)) {
        clearToRowGroup(tree);
        tree.insertElement(Tag::Tr);
        tree.mode = Mode::InRow;
        return Step::Again;
    }
    if (token.kind == Kind::End && has(token.tag, Trait::RowGroup)) {
        return leave(tree, tree.open.isInTableScope(token.tag), clearToRowGroup, Mode::InTable, Step::Done);
    }
    if (isTableStart(token) || token.isEnd(Tag::Table)) {
        return leave(tree, tree.open.isRowGroupInTableScope(), clearToRowGroup, Mode::InTable, Step::Again);
    }
    return inTable(tree, token);
}

Step inRow(Construction& tree, const HtmlToken& token)
{
    if (token.kind == Kind::Start && has(token.tag, Trait::Cell)) {
        clearToRow(tree);
        tree.insertElement(token);
        tree.mode = Mode::InCell;
        tree.formatting.pushMarker();
        return Step::Done;
    }
    const bool isOpen = tree.open.isInTableScope(Tag::Tr);
    if (token.isEnd(Tag::Tr)) {
        return leave(tree, isOpen, clearToRow, Mode::InTableBody, Step::Done);
    }
    if (isTableStart(token) || token.isEnd(Tag::Table)) {
        return leave(tree, isOpen, clearToRow, Mode::InTableBody, Step::Again);
    }
    if (token.kind == Kind::End && has(token.tag, Trait::RowGroup)) {
        return leave(tree, isOpen && tree.open.isInTableScope(token.tag), clearToRow, Mode::InTableBody,
                     Step::Again);
    }
    return inTable(tree, token);
}

Step inCell(Construction& tree, const HtmlToken& token)
{
    const Tag tag = token.tag;
    if (token.kind == Kind::End && has(tag, Trait::Cell)) {
        if (tree.open.isInTableScope(tag)) {
            tree.open.generateImpliedEnds();
            tree.open.popUntil(tag);
            tree.formatting.clearToMarker();
            tree.mode = Mode::InRow;
        }
        return Step::Done;
    }
    const bool endsTable =
        token.kind == Kind::End && (tag == Tag::Table || tag == Tag::Tr || has(tag, Trait::RowGroup));
    if (isTableStart(token) || (endsTable && tree.open.isInTableScope(tag))) {
        tree.closeCell();
        return Step::Again;
    }
    return endsTable || isIdleEnd(token) ? Step::Done : inBody(tree, token);
}

Step inSelect(Construction& tree, const HtmlToken& token)
{
    const auto endIf = [&tree](Tag tag) {
        if (tree.open.current().tag == tag) {
            tree.open.pop();
        }
    };
    const auto leaveSelect = [&tree] {
        const bool isOpen = tree.open.isInSelectScope(Tag::Select);
        if (isOpen) {
            tree.open.popUntil(Tag::Select);
            tree.resetMode();
        }
        return isOpen;
    };
    if (token.isText()) {
        tree.insertText(token.text);
        return Step::Done;
    }
    if (token.isEnd(Tag::Select) || token.isStart(Tag::Select)) {
        leaveSelect();
        return Step::Done;
    }
    if (token.kind == Kind::PageEnd || token.isStart(Tag::Html)) {
        return inBody(tree, token);
    }
    if (token.isEnd(Tag::Template) || token.isStart(Tag::Template) || token.isStart(Tag::Script)) {
        return inHead(tree, token);
    }
    if (token.isEnd(Tag::Option)) {
        endIf(Tag::Option);
    } else if (token.isEnd(Tag::Optgroup)) {
        const size_t size = tree.open.size();
        if (size > 1 && tree.open.at(size - 2).tag == Tag::Optgroup) {
            endIf(Tag::Option);
        }
        endIf(Tag::Optgroup);
    } else if (token.isStart(Tag::Option) || token.isStart(Tag::Optgroup) || token.isStart(Tag::Hr)) {
        endIf(Tag::Option);
        if (token.tag != Tag::Option) {
            endIf(Tag::Optgroup);
        }
        token.tag == Tag::Hr ? tree.insertEmpty(token) : static_cast<void>(tree.insertElement(token));
    } else if (token.isStart(Tag::Input) || token.isStart(Tag::Keygen) || token.isStart(Tag::Textarea)) {
        return leaveSelect() ? Step::Again : Step::Done;
    }
    return Step::Done;
}

Step inSelectInTable(Construction& tree, const HtmlToken& token)
{
    const Tag tag = token.tag;
    const bool isTable = tag == Tag::Caption || tag == Tag::Table || tag == Tag::Tr ||
                         has(tag, Trait::RowGroup) || has(tag, Trait::Cell);
    const bool isTag = token.kind == Kind::Start || token.kind == Kind::End;
    if (!isTag || !isTable) {
        return inSelect(tree, token);
    }
    if (token.kind == Kind::End && !tree.open.isInTableScope(tag)) {
        return Step::Done;
    }
    tree.open.popUntil(Tag::Select);
    tree.resetMode();
    return Step::Again;
}

} // namespace InsertionModes
