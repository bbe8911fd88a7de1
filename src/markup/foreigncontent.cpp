// SPDX-License-Identifier: MIT
#include "markup/construction.h"
#include "markup/insertionmodes.h"
#include "markup/tags.h"

namespace InsertionModes {

namespace {

using Kind = HtmlToken::Kind;

/// The kind of an element of a drawing or a formula.
Tag foreignTag(const HtmlToken& token, bool isFormula)
{
    static constexpr std::array<std::string_view, 5> texts{"mi", "mo", "mn", "ms", "mtext"};
    static constexpr std::array<std::string_view, 3> documents{"foreignobject", "desc", "title"};
    if (!isFormula) {
        return isOneOf(token.name, documents) ? Tag::ForeignDocument : Tag::Foreign;
    }
    if (token.name != "annotation-xml") {
        return isOneOf(token.name, texts) ? Tag::ForeignText : Tag::Foreign;
    }
    const auto* found = token.attribute("encoding");
    const bool isDocument = found != nullptr && (equalsLower(found->value, "text/html") ||
                                                 equalsLower(found->value, "application/xhtml+xml"));
    return isDocument ? Tag::ForeignDocument : Tag::ForeignNote;
}

/// Elements that end a drawing or a formula in which they stand.
bool breaksOut(const HtmlToken& token)
{
    switch (token.tag) {
    case Tag::B:
    case Tag::Big:
    case Tag::Blockquote:
    case Tag::Body:
    case Tag::Br:
    case Tag::Center:
    case Tag::Code:
    case Tag::Dd:
    case Tag::Div:
    case Tag::Dl:
    case Tag::Dt:
    case Tag::Em:
    case Tag::Embed:
    case Tag::H1:
    case Tag::H2:
    case Tag::H3:
    case Tag::H4:
    case Tag::H5:
    case Tag::H6:
    case Tag::Head:
    case Tag::Hr:
    case Tag::I:
    case Tag::Img:
    case Tag::Li:
    case Tag::Listing:
    case Tag::Menu:
    case Tag::Meta:
    case Tag::Nobr:
    case Tag::Ol:
    case Tag::P:
    case Tag::Pre:
    case Tag::Ruby:
    case Tag::S:
    case Tag::Small:
    case Tag::Span:
    case Tag::Strong:
    case Tag::Strike:
    case Tag::Sub:
    case Tag::Sup:
    case Tag::Table:
    case Tag::Tt:
    case Tag::U:
    case Tag::Ul:
    case Tag::Var:
        return true;
    case Tag::Font:
        return token.attribute("color") != nullptr || token.attribute("face") != nullptr ||
               token.attribute("size") != nullptr;
    default:
        return false;
    }
}

Step endForeign(Construction& tree, const HtmlToken& token)
{
    for (size_t i = tree.open.size() - 1; i > 0; --i) {
        const HtmlNode& node = tree.open.at(i);
        if (!isForeignTag(node.tag)) {
            return step(tree, token);
        }
        if (node.name == token.name) {
            tree.open.shrink(i);
            return Step::Done;
        }
    }
    return Step::Done;
}

} // namespace

bool isForeign(const Construction& tree, const HtmlToken& token)
{
    if (tree.open.isEmpty() || token.kind == Kind::PageEnd) {
        return false;
    }
    const HtmlNode& current = tree.open.current();
    const bool isStart = token.kind == Kind::Start;
    switch (current.tag) {
    case Tag::ForeignText:
        return !token.isText() && !(isStart && token.name != "mglyph" && token.name != "malignmark");
    case Tag::ForeignDocument:
        return !token.isText() && !isStart;
    case Tag::ForeignNote:
        return !token.isStart(Tag::Svg);
    case Tag::Foreign:
    case Tag::Math:
    case Tag::Svg:
        return true;
    default:
        return false;
    }
}

void insertForeign(Construction& tree, const HtmlToken& token, bool isFormula)
{
    HtmlToken foreign = token;
    const bool isRoot = token.tag == Tag::Math || token.tag == Tag::Svg;
    foreign.tag = isRoot && (token.tag == Tag::Math) == isFormula ? token.tag : foreignTag(token, isFormula);
    tree.insertForeign(foreign, isFormula);
    if (token.isSelfClosing) {
        tree.open.pop();
    }
}

Step inForeignContent(Construction& tree, const HtmlToken& token)
{
    switch (token.kind) {
    case Kind::Text:
        tree.insertText(token.text);
        tree.allowsFrames = tree.allowsFrames && isBlank(token.text);
        return Step::Done;
    case Kind::Start:
        if (!breaksOut(token)) {
            insertForeign(tree, token, tree.open.current().isFormula);
            return Step::Done;
        }
        break;
    case Kind::End:
        if (token.tag != Tag::Br && token.tag != Tag::P) {
            return endForeign(tree, token);
        }
        break;
    case Kind::Doctype:
    case Kind::PageEnd:
        return Step::Done;
    }
    while (isForeignTag(tree.open.current().tag) && tree.open.current().tag != Tag::ForeignText &&
           tree.open.current().tag != Tag::ForeignDocument) {
        tree.open.pop();
    }
    return step(tree, token);
}

} // namespace InsertionModes
