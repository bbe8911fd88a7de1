// SPDX-License-Identifier: MIT
#include "markup/construction.h"
#include "markup/insertionmodes.h"

namespace InsertionModes {

namespace {

using Kind = HtmlToken::Kind;

void insertBlock(Construction& tree, const HtmlToken& token)
{
    tree.endParagraph();
    tree.insertElement(token);
}

void insertInline(Construction& tree, const HtmlToken& token)
{
    tree.reconstruct();
    tree.insertElement(token);
}

void beginPreformatted(Construction& tree, const HtmlToken& token)
{
    insertBlock(tree, token);
    tree.skipsLineEnd = true;
    tree.allowsFrames = false;
}

void beginHeading(Construction& tree, const HtmlToken& token)
{
    tree.endParagraph();
    if (has(tree.open.current().tag, Trait::Heading)) {
        tree.open.pop();
    }
    tree.insertElement(token);
}

void beginForm(Construction& tree, const HtmlToken& token)
{
    const bool isInTemplate = tree.open.count(Tag::Template) > 0;
    if (tree.form != nullptr && !isInTemplate) {
        return;
    }
    insertBlock(tree, token);
    tree.form = isInTemplate ? tree.form : &tree.open.current();
}

/// Items of a list end the one before. The outermost bound are elements that are neither divisions nor
/// paragraphs.
void beginItem(Construction& tree, const HtmlToken& token)
{
    tree.allowsFrames = false;
    const bool isListItem = token.tag == Tag::Li;
    for (size_t i = tree.open.size(); i > 0; --i) {
        const Tag tag = tree.open.at(i - 1).tag;
        const bool isItem = isListItem ? tag == Tag::Li : tag == Tag::Dd || tag == Tag::Dt;
        if (isItem) {
            tree.open.generateImpliedEnds(tag);
            tree.open.popUntil(tag);
            break;
        }
        if (has(tag, Trait::Special) && tag != Tag::Address && tag != Tag::Div && tag != Tag::P) {
            break;
        }
    }
    insertBlock(tree, token);
}

void beginButton(Construction& tree, const HtmlToken& token)
{
    if (tree.open.isInScope(Tag::Button)) {
        tree.open.generateImpliedEnds();
        tree.open.popUntil(Tag::Button);
    }
    insertInline(tree, token);
    tree.allowsFrames = false;
}

/// A link within a link ends that, wherever it is.
void beginLink(Construction& tree, const HtmlToken& token)
{
    if (auto* const outer = tree.formatting.last(Tag::A)) {
        tree.adopt(Tag::A);
        tree.formatting.remove(*outer);
        if (const size_t index = tree.open.indexOf(*outer); index != OpenElements::Nowhere) {
            tree.open.remove(index);
        }
    }
    tree.reconstruct();
    tree.formatting.push(tree.insertElement(token));
}

void beginFormat(Construction& tree, const HtmlToken& token)
{
    tree.reconstruct();
    if (token.tag == Tag::Nobr && tree.open.isInScope(Tag::Nobr)) {
        tree.adopt(Tag::Nobr);
        tree.reconstruct();
    }
    tree.formatting.push(tree.insertElement(token));
}

void beginTable(Construction& tree, const HtmlToken& token)
{
    tree.endParagraph(); // in very old pages, too: rich text has no tables in paragraphs
    tree.insertElement(token);
    tree.allowsFrames = false;
    tree.mode = Mode::InTable;
}

void putField(Construction& tree, const HtmlToken& token)
{
    const auto* type = token.attribute("type");
    const bool isSeen = token.tag != Tag::Input || type == nullptr || !equalsLower(type->value, "hidden");
    tree.reconstruct();
    tree.insertEmpty(token);
    tree.allowsFrames = tree.allowsFrames && !isSeen;
}

void beginTextArea(Construction& tree, const HtmlToken& token)
{
    tree.insertWithText(token, HtmlScanner::Content::Text);
    tree.skipsLineEnd = true;
    tree.allowsFrames = false;
}

void beginSelect(Construction& tree, const HtmlToken& token)
{
    insertInline(tree, token);
    tree.allowsFrames = false;
    switch (tree.mode) {
    case Mode::InTable:
    case Mode::InCaption:
    case Mode::InTableBody:
    case Mode::InRow:
    case Mode::InCell:
        tree.mode = Mode::InSelectInTable;
        break;
    default:
        tree.mode = Mode::InSelect;
    }
}

void beginOption(Construction& tree, const HtmlToken& token)
{
    if (tree.open.current().tag == Tag::Option) {
        tree.open.pop();
    }
    insertInline(tree, token);
}

/// A part of a text with small notes above it.
void beginRuby(Construction& tree, const HtmlToken& token)
{
    if (tree.open.isInScope(Tag::Ruby)) {
        const bool isNote = token.tag == Tag::Rp || token.tag == Tag::Rt;
        tree.open.generateImpliedEnds(isNote ? Tag::Rtc : Tag::Text);
    }
    tree.insertElement(token);
}

void beginFrames(Construction& tree, const HtmlToken& token)
{
    if (tree.open.size() < 2 || tree.open.at(1).tag != Tag::Body || !tree.allowsFrames) {
        return;
    }
    tree.remove(tree.open.at(1));
    tree.open.shrink(1);
    tree.insertElement(token);
    tree.mode = Mode::InFrameset;
}

void mergeBody(Construction& tree, const HtmlToken& token)
{
    if (tree.open.size() > 1 && tree.open.at(1).tag == Tag::Body && tree.open.count(Tag::Template) == 0) {
        tree.allowsFrames = false;
        tree.merge(tree.open.at(1), token.attributes);
    }
}

/// Elements that cannot have content, and those whose content is no markup; false for others.
bool beginSpecial(Construction& tree, const HtmlToken& token)
{
    switch (token.tag) {
    case Tag::Area:
    case Tag::Br:
    case Tag::Embed:
    case Tag::Img:
    case Tag::Keygen:
    case Tag::Wbr:
    case Tag::Input:
        putField(tree, token);
        return true;
    case Tag::Param:
    case Tag::Source:
    case Tag::Track:
        tree.insertEmpty(token);
        return true;
    case Tag::Hr:
        tree.endParagraph();
        tree.insertEmpty(token);
        tree.allowsFrames = false;
        return true;
    case Tag::Image: {
        HtmlToken picture = token;
        picture.tag = Tag::Img;
        picture.name = tagName(Tag::Img);
        putField(tree, picture);
        return true;
    }
    case Tag::Textarea:
        beginTextArea(tree, token);
        return true;
    case Tag::Xmp:
        tree.endParagraph();
        tree.reconstruct();
        tree.allowsFrames = false;
        tree.insertWithText(token, HtmlScanner::Content::Raw);
        return true;
    case Tag::Iframe:
        tree.allowsFrames = false;
        tree.insertWithText(token, HtmlScanner::Content::Raw);
        return true;
    case Tag::Noembed:
        tree.insertWithText(token, HtmlScanner::Content::Raw);
        return true;
    case Tag::Plaintext:
        insertBlock(tree, token);
        tree.scanner().setContent(HtmlScanner::Content::Plain, {});
        return true;
    default:
        return false;
    }
}

/// False for elements of which nothing special is to be said.
bool beginBlock(Construction& tree, const HtmlToken& token)
{
    switch (token.tag) {
    case Tag::H1:
    case Tag::H2:
    case Tag::H3:
    case Tag::H4:
    case Tag::H5:
    case Tag::H6:
        beginHeading(tree, token);
        return true;
    case Tag::Pre:
    case Tag::Listing:
        beginPreformatted(tree, token);
        return true;
    case Tag::Form:
        beginForm(tree, token);
        return true;
    case Tag::Li:
    case Tag::Dd:
    case Tag::Dt:
        beginItem(tree, token);
        return true;
    case Tag::Table:
        beginTable(tree, token);
        return true;
    default:
        if (has(token.tag, Trait::Block)) {
            insertBlock(tree, token);
        }
        return has(token.tag, Trait::Block);
    }
}

bool beginInline(Construction& tree, const HtmlToken& token)
{
    switch (token.tag) {
    case Tag::A:
        beginLink(tree, token);
        return true;
    case Tag::Button:
        beginButton(tree, token);
        return true;
    case Tag::Applet:
    case Tag::Marquee:
    case Tag::Object:
        insertInline(tree, token);
        tree.formatting.pushMarker();
        tree.allowsFrames = false;
        return true;
    case Tag::Select:
        beginSelect(tree, token);
        return true;
    case Tag::Optgroup:
    case Tag::Option:
        beginOption(tree, token);
        return true;
    case Tag::Rb:
    case Tag::Rtc:
    case Tag::Rp:
    case Tag::Rt:
        beginRuby(tree, token);
        return true;
    case Tag::Math:
    case Tag::Svg:
        tree.reconstruct();
        insertForeign(tree, token, token.tag == Tag::Math);
        return true;
    default:
        if (has(token.tag, Trait::Format)) {
            beginFormat(tree, token);
        }
        return has(token.tag, Trait::Format);
    }
}

Step begin(Construction& tree, const HtmlToken& token)
{
    switch (token.tag) {
    case Tag::Html:
        if (tree.open.count(Tag::Template) == 0) {
            tree.merge(*tree.root, token.attributes);
        }
        return Step::Done;
    case Tag::Base:
    case Tag::Basefont:
    case Tag::Bgsound:
    case Tag::Link:
    case Tag::Meta:
    case Tag::Noframes:
    case Tag::Script:
    case Tag::Style:
    case Tag::Template:
    case Tag::Title:
        return inHead(tree, token);
    case Tag::Body:
        mergeBody(tree, token);
        return Step::Done;
    case Tag::Frameset:
        beginFrames(tree, token);
        return Step::Done;
    case Tag::Caption:
    case Tag::Col:
    case Tag::Colgroup:
    case Tag::Frame:
    case Tag::Head:
    case Tag::Tbody:
    case Tag::Td:
    case Tag::Tfoot:
    case Tag::Th:
    case Tag::Thead:
    case Tag::Tr:
        return Step::Done;
    default:
        if (!beginBlock(tree, token) && !beginInline(tree, token) && !beginSpecial(tree, token)) {
            insertInline(tree, token);
        }
        return Step::Done;
    }
}

} // namespace

Step inBody(Construction& tree, const HtmlToken& token)
{
    switch (token.kind) {
    case Kind::Text:
        tree.reconstruct();
        tree.insertText(token.text);
        tree.allowsFrames = tree.allowsFrames && isBlank(token.text);
        return Step::Done;
    case Kind::Start:
        return begin(tree, token);
    case Kind::End:
        return endInBody(tree, token);
    case Kind::PageEnd:
        return tree.templateModes.empty() ? Step::Done : inTemplate(tree, token);
    case Kind::Doctype:
        return Step::Done;
    }
    return Step::Done;
}

} // namespace InsertionModes
