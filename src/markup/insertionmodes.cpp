// SPDX-License-Identifier: MIT
#include "markup/insertionmodes.h"

#include "markup/construction.h"

InsertionModes::Step InsertionModes::step(Construction& tree, const HtmlToken& token)
{
    switch (tree.mode) {
    case Mode::Initial:
        return initial(tree, token);
    case Mode::BeforeHtml:
        return beforeHtml(tree, token);
    case Mode::BeforeHead:
        return beforeHead(tree, token);
    case Mode::InHead:
        return inHead(tree, token);
    case Mode::InHeadNoscript:
        return inHeadNoscript(tree, token);
    case Mode::AfterHead:
        return afterHead(tree, token);
    case Mode::InBody:
        return inBody(tree, token);
    case Mode::Text:
        return inText(tree, token);
    case Mode::InTable:
        return inTable(tree, token);
    case Mode::InCaption:
        return inCaption(tree, token);
    case Mode::InColumnGroup:
        return inColumnGroup(tree, token);
    case Mode::InTableBody:
        return inTableBody(tree, token);
    case Mode::InRow:
        return inRow(tree, token);
    case Mode::InCell:
        return inCell(tree, token);
    case Mode::InSelect:
        return inSelect(tree, token);
    case Mode::InSelectInTable:
        return inSelectInTable(tree, token);
    case Mode::InTemplate:
        return inTemplate(tree, token);
    case Mode::InFrameset:
        return inFrameset(tree, token);
    case Mode::AfterFrameset:
        return afterFrameset(tree, token);
    }
    return Step::Done;
}
