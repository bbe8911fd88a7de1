// SPDX-License-Identifier: MIT
#include "pages/elementroles.h"

#include "markup/htmltree.h"

#include <string_view>
#include <unordered_map>

namespace {

template <typename Value>
using Words = std::unordered_map<std::string_view, Value>;

template <typename Value>
void add(Words<Value>& words, Value value, std::string_view names)
{
    anyWord(names, [&](std::string_view name) {
        words.emplace(name, value);
        return false;
    });
}

void addFurniture(Words<Role>& words)
{
    add(words, Role::Furniture,
        "navheader navfooter mw-editsection edit-page edit-this-page editlink copybutton copybtn copy-button "
        "btn-clipboard skip-link skip-nav skip-to-content skip-navigation skipnav searchbox search-box "
        "MSearchBox navpath sphinxsidebar topNav bottomNav subNav rst-footer-buttons rst-versions "
        "wy-nav-side wy-nav-top wy-breadcrumbs md-header md-sidebar md-footer md-top md-skip linenos "
        "linenodiv listing_lines "
        "back-to-top backtotop cookie-banner mobile-nav nav-panel prev-next "
        "prevnext");
    add(words, Role::ProbableFurniture,
        "navigation related navbar nav sidebar header menu search pager pagination breadcrumb "
        "breadcrumbs toolbar tabs topnav nav-bar navrow");
    add(words, Role::Footer, "footer");
    add(words, Role::Hidden, "sr-only visually-hidden visuallyhidden screen-reader-text screen-reader-only");
}

void addStructure(Words<Role>& words)
{
    add(words, Role::MainContent,
        "bodywrapper documentwrapper md-content contentContainer mainContent main-content markdown-body "
        "doc-content doc-contents entry-content rst-content page-content");
    add(words, Role::Document,
        "book part chapter preface appendix article refentry reference sect1 sect2 section glossary "
        "bibliography index colophon set toc legalnotice titlepage");
    add(words, Role::Note, "note seealso important admonition info alert-info");
    add(words, Role::Tip, "tip hint success alert-success");
    add(words, Role::Warning, "warning caution attention deprecated deprecated-removed alert-warning");
    add(words, Role::Danger, "danger error alert-danger");
    add(words, Role::Aside, "topic aside impl-detail");
    add(words, Role::Title, "admonition-title topic-title sidebar-title title rubric admonitionheading");
    add(words, Role::Caption, "caption figcaption code-block-caption");
    add(words, Role::Figure, "figure mediaobject image informalfigure imageblock");
    add(words, Role::DataTable,
        "docutils informaltable grid dataframe memberdecls fieldtable tableblock confluenceTable");
}

void addText(Words<Role>& words)
{
    add(words, Role::CodeBlock, "fragment");
    add(words, Role::Signature, "sig memproto");
    add(words, Role::SignatureName, "sig-name descname");
    add(words, Role::Remark, "versionmodified lineannotation");
    add(words, Role::Keys, "keycap keysym shortcut-key");
    add(words, Role::UserInterface,
        "guilabel guimenu guimenuitem guisubmenu guibutton guiicon menuselection menuchoice uicontrol "
        "menucascade");
    add(words, Role::Keyword, "k kc kd kn kp kr kt ow keyword keywordtype keywordflow hljs-keyword");
    add(words, Role::String, "s s1 s2 sa sb sc sd se si sh string stringliteral charliteral hljs-string");
    add(words, Role::Comment, "c c1 cm ch cs comment hljs-comment");
}

Words<Role> makeRoles()
{
    Words<Role> words;
    addFurniture(words);
    addStructure(words);
    addText(words);
    return words;
}

} // namespace

/// In groups of what they mean; an element that HTML gets anew belongs into one of them.
// clang-format off
Element elementOf(const HtmlNode& node)
{
    using enum Tag;
    switch (node.tag) {
    case Text: case Head: case Script: case Style: case Template: case Title: case Meta: case Link:
    case Base: case Basefont: case Bgsound: case Col: case Colgroup: case Param: case Source: case Track:
    case Datalist: case Wbr: case Keygen: case Noframes: case Noembed: case ForeignNote: return Element::Ignored;
    case Html: case Body: case Div: case Section: case Article: case Main: case Header: case Footer:
    case Aside: case Center: case Details: case Address: case Hgroup: case Fieldset: case Form:
    case Nav: case Dialog: case Search: case Noscript: case Frameset: case Object: case Applet: case Marquee:
    case Video: case Audio: case Canvas: case Map: case Figure: case ForeignDocument: return Element::Block;
    case P: case Legend: return Element::Paragraph;
    case H1: case H2: case H3: case H4: case H5: case H6: return Element::Heading;
    case B: case Strong: case I: case Em: case Cite: case Dfn: case Var: case U: case Ins: case S:
    case Strike: case Del: case Small: case Big: case Sub: case Sup: return Element::Inline;
    case Code: case Tt: case Samp: return Element::Code;
    case Kbd: return Element::Keys;
    case Q: return Element::Quotation;
    case Pre: case Listing: case Xmp: case Plaintext: case Textarea: return Element::Preformatted;
    case Ul: case Ol: case Menu: case Dir: return Element::List;
    case Li: return Element::Item;
    case Dl: return Element::Terms;
    case Dt: return Element::Term;
    case Dd: return Element::Description;
    case Table: return Element::Table;
    case Caption: return Element::TableCaption;
    case Tr: return Element::Row;
    case Td: case Th: return Element::Cell;
    case Figcaption: return Element::Caption;
    case Blockquote: return Element::Quote;
    case A: return Element::Link;
    case Img: case Image: return Element::Picture;
    case Br: return Element::Break;
    case Hr: return Element::Rule;
    case Summary: return Element::Summary;
    case Iframe: case Frame: case Embed: return Element::Frame;
    case Input: return Element::Field;
    case Select: return Element::Choice;
    case Area: return Element::Area;
    case Svg: return Element::Drawing;
    case Unknown: case ForeignText: case Math: case Abbr: case Acronym: case Bdi: case Bdo: case Button:
    case Data: case Font: case Label: case Mark: case Meter: case Nobr: case Optgroup: case Option:
    case Output: case Picture: case Progress: case Rb: case Rp: case Rt: case Rtc: case Ruby: case Slot:
    case Span: case Tbody: case Tfoot: case Thead: case Time: return Element::Transparent;
    case Foreign:
    return node.name == "annotation" ? Element::Ignored : Element::Transparent;
    }
    return Element::Transparent;
}
// clang-format on

bool isInlineElement(Element element)
{
    switch (element) {
    case Element::Transparent:
    case Element::Inline:
    case Element::Code:
    case Element::Keys:
    case Element::Quotation:
    case Element::Link:
        return true;
    case Element::Ignored:
    case Element::Block:
    case Element::Paragraph:
    case Element::Heading:
    case Element::Preformatted:
    case Element::List:
    case Element::Item:
    case Element::Terms:
    case Element::Term:
    case Element::Description:
    case Element::Table:
    case Element::TableCaption:
    case Element::Row:
    case Element::Cell:
    case Element::Caption:
    case Element::Quote:
    case Element::Picture:
    case Element::Break:
    case Element::Rule:
    case Element::Summary:
    case Element::Frame:
    case Element::Field:
    case Element::Choice:
    case Element::Area:
    case Element::Drawing:
        return false;
    }
    return false;
}

Role roleOf(const HtmlNode& node)
{
    static const auto roles = makeRoles();
    Role role = Role::None;
    anyWord(attribute(node, "class"), [&](std::string_view word) {
        const auto found = roles.find(word);
        role = found == roles.end() ? role : found->second;
        // Warnings are often marked as notes, too, and notes as sections.
        return role != Role::None && role != Role::Note && role != Role::Document;
    });
    return role;
}
