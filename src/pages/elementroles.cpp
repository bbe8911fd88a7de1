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

Words<Element> makeElements()
{
    Words<Element> words;
    add(words, Element::Ignored,
        "head script style template title meta link base col colgroup param source track datalist wbr "
        "annotation annotation-xml");
    add(words, Element::Block,
        "html body div section article main header footer aside center details address hgroup fieldset "
        "form nav dialog search noscript noframes frameset object video audio canvas map figure");
    add(words, Element::Paragraph, "p legend");
    add(words, Element::Heading, "h1 h2 h3 h4 h5 h6");
    add(words, Element::Inline, "b strong i em cite dfn var u ins s strike del small big sub sup");
    add(words, Element::Code, "code tt samp");
    add(words, Element::Preformatted, "pre listing xmp plaintext textarea");
    add(words, Element::List, "ul ol menu dir");
    add(words, Element::Cell, "td th");
    add(words, Element::Frame, "iframe frame embed");
    add(words, Element::Choice, "select");
    add(words, Element::Keys, "kbd");
    add(words, Element::Quotation, "q");
    add(words, Element::Item, "li");
    add(words, Element::Terms, "dl");
    add(words, Element::Term, "dt");
    add(words, Element::Description, "dd");
    add(words, Element::Table, "table");
    add(words, Element::Row, "tr");
    add(words, Element::TableCaption, "caption");
    add(words, Element::Caption, "figcaption");
    add(words, Element::Quote, "blockquote");
    add(words, Element::Link, "a");
    add(words, Element::Picture, "img image");
    add(words, Element::Break, "br");
    add(words, Element::Rule, "hr");
    add(words, Element::Summary, "summary");
    add(words, Element::Field, "input");
    add(words, Element::Area, "area");
    add(words, Element::Drawing, "svg");
    return words;
}

void addFurniture(Words<Role>& words)
{
    add(words, Role::Furniture,
        "headerlink navheader navfooter permalink header-anchor anchor-link anchorjs-link heading-anchor "
        "hash-link mw-editsection edit-page edit-this-page editlink copybutton copybtn copy-button "
        "btn-clipboard skip-link skip-nav skip-to-content skip-navigation skipnav searchbox search-box "
        "MSearchBox navpath sphinxsidebar topNav bottomNav subNav rst-footer-buttons rst-versions "
        "wy-nav-side wy-nav-top wy-breadcrumbs md-header md-sidebar md-footer md-top md-skip linenos "
        "linenodiv listing_lines back-to-top backtotop cookie-banner mobile-nav nav-panel prev-next "
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

Element elementOf(const HtmlNode& node)
{
    static const auto elements = makeElements();
    const auto found = elements.find(node.name);
    return found == elements.end() ? Element::Transparent : found->second;
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
