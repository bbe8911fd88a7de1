// SPDX-License-Identifier: MIT
#include "markup/construction.h"
#include "markup/insertionmodes.h"

#include <algorithm>

namespace InsertionModes {

namespace {

void endOther(Construction& tree, const HtmlToken& token)
{
    for (size_t i = tree.open.size(); i > 1; --i) {
        const HtmlNode& node = tree.open.at(i - 1);
        if (node.name == token.name) {
            tree.open.generateImpliedEnds(token.tag);
            tree.open.shrink(std::min(tree.open.size(), i - 1));
            return;
        }
        if (has(node.tag, Trait::Special)) {
            return;
        }
    }
}

void endBlock(Construction& tree, Tag tag)
{
    if (tree.open.isInScope(tag)) {
        tree.open.generateImpliedEnds();
        tree.open.popUntil(tag);
    }
}

void endForm(Construction& tree)
{
    if (tree.open.count(Tag::Template) > 0) {
        endBlock(tree, Tag::Form);
        return;
    }
    const auto* const form = tree.form;
    tree.form = nullptr;
    if (form != nullptr && tree.open.isInScope(*form)) {
        tree.open.generateImpliedEnds();
        tree.open.remove(tree.open.indexOf(*form));
    }
}

void endParagraph(Construction& tree)
{
    if (!tree.open.isInButtonScope(Tag::P)) {
        tree.insertElement(Tag::P);
    }
    tree.closeParagraph();
}

void endItem(Construction& tree, Tag tag)
{
    if (tag == Tag::Li ? tree.open.isInListScope(tag) : tree.open.isInScope(tag)) {
        tree.open.generateImpliedEnds(tag);
        tree.open.popUntil(tag);
    }
}

void endHeading(Construction& tree)
{
    if (tree.open.isHeadingInScope()) {
        tree.open.generateImpliedEnds();
        tree.open.popUntil(Trait::Heading);
    }
}

void endIsland(Construction& tree, Tag tag)
{
    if (tree.open.isInScope(tag)) {
        endBlock(tree, tag);
        tree.formatting.clearToMarker();
    }
}

void putBreak(Construction& tree)
{
    HtmlToken lineBreak;
    lineBreak.tag = Tag::Br;
    lineBreak.name = tagName(Tag::Br);
    tree.reconstruct();
    tree.insertEmpty(lineBreak);
    tree.allowsFrames = false;
}

bool isBlock(Tag tag)
{
    return has(tag, Trait::Block) || tag == Tag::Button || tag == Tag::Listing || tag == Tag::Pre;
}

} // namespace

Step endInBody(Construction& tree, const HtmlToken& token)
{
    const Tag tag = token.tag;
    switch (tag) {
    case Tag::Body:
    case Tag::Html:
        return Step::Done; // what comes behind it belongs to it
    case Tag::Template:
        return inHead(tree, token);
    case Tag::Form:
        endForm(tree);
        return Step::Done;
    case Tag::P:
        endParagraph(tree);
        return Step::Done;
    case Tag::Li:
    case Tag::Dd:
    case Tag::Dt:
        endItem(tree, tag);
        return Step::Done;
    case Tag::Applet:
    case Tag::Marquee:
    case Tag::Object:
        endIsland(tree, tag);
        return Step::Done;
    case Tag::Br:
        putBreak(tree);
        return Step::Done;
    default:
        break;
    }
    if (isBlock(tag)) {
        endBlock(tree, tag);
    } else if (has(tag, Trait::Heading)) {
        endHeading(tree);
    } else if (!has(tag, Trait::Format) || !tree.adopt(tag)) {
        endOther(tree, token);
    }
    return Step::Done;
}

} // namespace InsertionModes
