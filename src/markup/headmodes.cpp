// SPDX-License-Identifier: MIT
#include "markup/construction.h"
#include "markup/insertionmodes.h"

namespace InsertionModes {

namespace {

using Kind = HtmlToken::Kind;

/// A text without the blanks that it begins with, which are put into the tree if they are wanted there.
HtmlToken withoutBlanks(Construction& tree, HtmlToken token, bool isInserted)
{
    const size_t size = nextNonBlank(token.text, 0);
    if (isInserted) {
        tree.insertText(token.text.substr(0, size));
    }
    token.text.remove_prefix(size);
    return token;
}

/// Does `step` again with a text that does not begin with blanks; nothing is left to do for one of blanks.
template <typename Next>
Step goOn(Construction& tree, const HtmlToken& token, bool insertsBlanks, Next next)
{
    if (!token.isText()) {
        next();
        return Step::Again;
    }
    const HtmlToken rest = withoutBlanks(tree, token, insertsBlanks);
    if (rest.text.empty()) {
        return Step::Done;
    }
    next();
    while (step(tree, rest) == Step::Again) {
    }
    return Step::Done;
}

/// Ends that mean something before the body.
bool isKnownEnd(const HtmlToken& token)
{
    return token.isEnd(Tag::Head) || token.isEnd(Tag::Body) || token.isEnd(Tag::Html) || token.isEnd(Tag::Br);
}

void endTemplate(Construction& tree)
{
    if (tree.open.count(Tag::Template) == 0) {
        return;
    }
    tree.open.generateImpliedEnds();
    tree.open.popUntil(Tag::Template);
    tree.formatting.clearToMarker();
    if (!tree.templateModes.empty()) {
        tree.templateModes.pop_back();
    }
    tree.resetMode();
}

void beginTemplate(Construction& tree, const HtmlToken& token)
{
    tree.insertElement(token);
    tree.formatting.pushMarker();
    tree.allowsFrames = false;
    tree.mode = Mode::InTemplate;
    tree.templateModes.push_back(Mode::InTemplate);
}

/// An element that belongs into the head wherever it stands; false for others.
bool beginHeadElement(Construction& tree, const HtmlToken& token)
{
    switch (token.tag) {
    case Tag::Base:
    case Tag::Basefont:
    case Tag::Bgsound:
    case Tag::Link:
    case Tag::Meta:
        tree.insertEmpty(token);
        return true;
    case Tag::Title:
        tree.insertWithText(token, HtmlScanner::Content::Text);
        return true;
    case Tag::Noframes:
    case Tag::Style:
        tree.insertWithText(token, HtmlScanner::Content::Raw);
        return true;
    case Tag::Script:
        tree.insertWithText(token, HtmlScanner::Content::Script);
        return true;
    case Tag::Template:
        beginTemplate(tree, token);
        return true;
    default:
        return false;
    }
}

} // namespace

Step initial(Construction& tree, const HtmlToken& token)
{
    if (token.kind == Kind::Doctype) {
        tree.mode = Mode::BeforeHtml;
        return Step::Done;
    }
    return goOn(tree, token, false, [&tree] { tree.mode = Mode::BeforeHtml; });
}

Step beforeHtml(Construction& tree, const HtmlToken& token)
{
    if (token.isStart(Tag::Html)) {
        tree.makeRoot(&token);
        tree.mode = Mode::BeforeHead;
        return Step::Done;
    }
    if (token.kind == Kind::Doctype || (token.kind == Kind::End && !isKnownEnd(token))) {
        return Step::Done;
    }
    return goOn(tree, token, false, [&tree] {
        tree.makeRoot(nullptr);
        tree.mode = Mode::BeforeHead;
    });
}

Step beforeHead(Construction& tree, const HtmlToken& token)
{
    if (token.isStart(Tag::Html)) {
        return inBody(tree, token);
    }
    if (token.isStart(Tag::Head)) {
        tree.head = &tree.insertElement(token);
        tree.mode = Mode::InHead;
        return Step::Done;
    }
    if (token.kind == Kind::Doctype || (token.kind == Kind::End && !isKnownEnd(token))) {
        return Step::Done;
    }
    return goOn(tree, token, false, [&tree] {
        tree.head = &tree.insertElement(Tag::Head);
        tree.mode = Mode::InHead;
    });
}

Step inHead(Construction& tree, const HtmlToken& token)
{
    if (token.isStart(Tag::Html)) {
        return inBody(tree, token);
    }
    if (token.kind == Kind::Start) {
        if (beginHeadElement(tree, token) || token.tag == Tag::Head) {
            return Step::Done;
        }
        if (token.tag == Tag::Noscript) {
            tree.insertElement(token);
            tree.mode = Mode::InHeadNoscript;
            return Step::Done;
        }
    }
    if (token.isEnd(Tag::Template)) {
        endTemplate(tree);
        return Step::Done;
    }
    if (token.isEnd(Tag::Head)) {
        tree.open.pop();
        tree.mode = Mode::AfterHead;
        return Step::Done;
    }
    if (token.kind == Kind::Doctype || (token.kind == Kind::End && !isKnownEnd(token))) {
        return Step::Done;
    }
    return goOn(tree, token, true, [&tree] {
        tree.open.pop();
        tree.mode = Mode::AfterHead;
    });
}

Step inHeadNoscript(Construction& tree, const HtmlToken& token)
{
    switch (token.kind) {
    case Kind::Doctype:
        return Step::Done;
    case Kind::Start:
        if (token.tag == Tag::Html) {
            return inBody(tree, token);
        }
        if (token.tag == Tag::Head || token.tag == Tag::Noscript) {
            return Step::Done;
        }
        if (token.tag != Tag::Title && token.tag != Tag::Script && token.tag != Tag::Template &&
            beginHeadElement(tree, token)) {
            return Step::Done;
        }
        break;
    case Kind::End:
        if (token.tag == Tag::Noscript) {
            tree.open.pop();
            tree.mode = Mode::InHead;
        }
        if (token.tag != Tag::Br) {
            return Step::Done;
        }
        break;
    case Kind::Text:
    case Kind::PageEnd:
        break;
    }
    return goOn(tree, token, true, [&tree] {
        tree.open.pop();
        tree.mode = Mode::InHead;
    });
}

Step afterHead(Construction& tree, const HtmlToken& token)
{
    if (token.kind == Kind::Start) {
        if (token.tag == Tag::Html) {
            return inBody(tree, token);
        }
        if (token.tag == Tag::Body || token.tag == Tag::Frameset) {
            tree.insertElement(token);
            tree.allowsFrames = tree.allowsFrames && token.tag != Tag::Body;
            tree.mode = token.tag == Tag::Body ? Mode::InBody : Mode::InFrameset;
            return Step::Done;
        }
        if (token.tag == Tag::Head) {
            return Step::Done;
        }
        tree.open.push(*tree.head);
        const bool isDone = beginHeadElement(tree, token);
        tree.open.remove(tree.open.indexOf(*tree.head));
        if (isDone) {
            return Step::Done;
        }
    }
    if (token.isEnd(Tag::Template)) {
        return inHead(tree, token);
    }
    if (token.kind == Kind::Doctype ||
        (token.kind == Kind::End && (!isKnownEnd(token) || token.tag == Tag::Head))) {
        return Step::Done;
    }
    return goOn(tree, token, true, [&tree] {
        tree.insertElement(Tag::Body);
        tree.mode = Mode::InBody;
    });
}

/// Of a title, a script and the like.
Step inText(Construction& tree, const HtmlToken& token)
{
    if (token.isText()) {
        tree.insertText(token.text);
        return Step::Done;
    }
    tree.open.pop();
    tree.mode = tree.modeAfterText;
    return token.kind == Kind::PageEnd ? Step::Again : Step::Done;
}

Step inTemplate(Construction& tree, const HtmlToken& token)
{
    if (token.isText()) {
        return inBody(tree, token);
    }
    if (token.kind == Kind::PageEnd) {
        const bool isInTemplate = tree.open.count(Tag::Template) > 0;
        endTemplate(tree);
        return isInTemplate ? Step::Again : Step::Done;
    }
    if (token.isEnd(Tag::Template)) {
        return inHead(tree, token);
    }
    if (token.kind != Kind::Start) {
        return Step::Done;
    }
    if (beginHeadElement(tree, token)) {
        return Step::Done;
    }
    const Tag tag = token.tag;
    const bool isInTable = tag == Tag::Caption || tag == Tag::Colgroup || has(tag, Trait::RowGroup);
    tree.mode = isInTable               ? Mode::InTable
                : tag == Tag::Col       ? Mode::InColumnGroup
                : tag == Tag::Tr        ? Mode::InTableBody
                : has(tag, Trait::Cell) ? Mode::InRow
                                        : Mode::InBody;
    if (!tree.templateModes.empty()) {
        tree.templateModes.back() = tree.mode;
    }
    return Step::Again;
}

Step inFrameset(Construction& tree, const HtmlToken& token)
{
    if (token.isText()) {
        return Step::Done;
    }
    if (token.isStart(Tag::Frameset)) {
        tree.insertElement(token);
    } else if (token.isStart(Tag::Frame)) {
        tree.insertEmpty(token);
    } else if (token.isStart(Tag::Noframes)) {
        return inHead(tree, token);
    } else if (token.isEnd(Tag::Frameset) && tree.open.size() > 1) {
        tree.open.pop();
        tree.mode = tree.open.current().tag == Tag::Frameset ? Mode::InFrameset : Mode::AfterFrameset;
    }
    return Step::Done;
}

Step afterFrameset(Construction& tree, const HtmlToken& token)
{
    return token.isStart(Tag::Noframes) ? inHead(tree, token) : Step::Done;
}

} // namespace InsertionModes
