// SPDX-License-Identifier: MIT
#include "pages/readingwriter.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/readinglook.h"

namespace {

constexpr int LargePicture = 200; // pixels

bool hasKeysInside(const HtmlNode& element)
{
    const auto* node = nextNode(&element, &element);
    while (node != nullptr && !isElement(*node, "kbd")) {
        node = nextNode(node, &element);
    }
    return node != nullptr;
}

/// The reading view's class of a part of code; empty for none.
std::string_view tokenClass(Role role)
{
    return role == Role::Keyword   ? "keyword"
           : role == Role::String  ? "string"
           : role == Role::Comment ? "comment"
                                   : std::string_view();
}

bool isLastElement(const HtmlNode& element)
{
    const auto* next = element.next;
    while (next != nullptr && !isElement(*next) && (!isText(*next) || isBlank(next->content))) {
        next = next->next;
    }
    return next == nullptr;
}

} // namespace

void ReadingWriter::writePage(const HtmlNode& body, const HtmlNode& content)
{
    putMarkup("<html><body>");
    writeContent(body, content);
}

std::string_view ReadingWriter::box() const
{
    return m_tables.empty() ? std::string_view() : m_tables.back().box;
}

bool ReadingWriter::isInTable() const
{
    return !m_tables.empty() && m_tables.back().box.empty() && !m_tables.back().isFlat && !isVerbatim();
}

bool ReadingWriter::enter(const HtmlNode& element)
{
    const auto& notes = notesOf(element);
    if (notes.element == Element::Ignored || notes.isHidden || notes.isFurniture) {
        for (const auto* node = &element; node != nullptr; node = nextNode(node, &element)) {
            keepAnchors(*node);
        }
        return false;
    }
    if (putSpecial(element)) {
        return false;
    }
    if (notes.element == Element::Rule) {
        openBlock("<hr>", {});
    } else if (isTooDeep()) {
        openTransparent(element);
    } else {
        openElement(element, notes);
    }
    return true;
}

void ReadingWriter::left(const HtmlNode& element)
{
    if (!m_tables.empty() && m_tables.back().element == &element) {
        m_tables.pop_back();
    }
    if (m_signature == &element) {
        m_signature = nullptr;
    }
    if (notesOf(element).element == Element::Quotation) {
        putText("”");
    }
    if (m_listing == &element) {
        m_listing = nullptr;
    } else if (m_listing != nullptr && element.parent == m_listing) {
        breakLine();
    }
}

void ReadingWriter::text(const HtmlNode& node)
{
    auto content = node.content;
    // Between the lines of a listing stand line ends of the file, not of the code.
    if (m_listing != nullptr && node.parent == m_listing && isBlank(content)) {
        return;
    }
    const bool isInPre = isVerbatim() && isElement(*node.parent, "pre");
    if (isInPre && node.next == nullptr) {
        content = content.substr(0, content.find_last_not_of(" \t\r\n") + 1);
    }
    // Rich text drops the text of a row that is in none of its cells.
    const bool isStray = isInTable() && !isBlank(content) && notesOf(*node.parent).element == Element::Row;
    putMarkup(isStray ? "<td>" : "");
    putText(content);
    putMarkup(isStray ? "</td>" : "");
}

std::string ReadingWriter::attributesOf(const HtmlNode& element) const
{
    return isElement(element, "img") ? ReadingLook::picture(element) : std::string();
}

void ReadingWriter::openElement(const HtmlNode& element, const ElementNotes& notes)
{
    switch (notes.element) {
    case Element::Block:
    case Element::Terms:
        openDivision(element, notes);
        break;
    case Element::Paragraph:
    case Element::Caption:
    case Element::TableCaption:
    case Element::Summary:
        openParagraph(element, notes);
        break;
    case Element::Heading:
        openTitle(element, notes);
        break;
    case Element::Preformatted:
        openListing(element);
        break;
    case Element::List:
        isElement(element, "ol") ? openBlock(startTag("ol", ReadingLook::numberedList(element)), "</ol>")
                                 : openList("<ul>", "</ul>");
        break;
    case Element::Item:
        openBlock(startTag("li", ReadingLook::block(element)), "</li>");
        break;
    case Element::Term:
        m_signature = notes.role == Role::Signature ? &element : m_signature;
        openBlock(notes.role == Role::Signature ? "<dt class=\"sig\">" : "<dt>", "</dt>");
        break;
    case Element::Description:
        openBlock("<dd>", "</dd>");
        break;
    case Element::Table:
        openTable(element, notes);
        break;
    case Element::Row:
        isInTable() ? openBlock("<tr>", "</tr>") : openBlock("<div>", "</div>");
        break;
    case Element::Cell:
        openCell(element);
        break;
    case Element::Quote:
        openBox(element, "quote", {}, {});
        break;
    default:
        openInline(element, notes);
    }
}

void ReadingWriter::openDivision(const HtmlNode& element, const ElementNotes& notes)
{
    const bool isList = notes.element == Element::Terms;
    if (const auto note = ReadingLook::noteClass(notes.role); !note.empty() && !isVerbatim()) {
        openBox(element, note, isList ? "<dl>" : "", isList ? "</dl>" : "");
    } else if (isList) {
        openList("<dl>", "</dl>");
    } else if (notes.role == Role::CodeBlock && !isVerbatim()) {
        m_listing = &element;
        openListing(element);
    } else if (notes.role == Role::Title || notes.role == Role::Caption) {
        openParagraph(element, notes);
    } else if (notes.role == Role::Figure || isElement(element, "figure")) {
        openContainer(R"(<div class="figure" align="center">)", "</div>");
    } else if (isVerbatim()) {
        openTransparent(element);
    } else if (const std::string tag = startTag("div", ReadingLook::block(element)); tag != "<div>") {
        openBlock(tag, "</div>");
    } else {
        openContainer({}, {});
    }
}

void ReadingWriter::openBox(const HtmlNode& element, std::string_view name, std::string_view inner,
                            std::string innerEnd)
{
    if (m_tables.size() >= DeepestTable || isVerbatim()) {
        openBlock(inner, std::move(innerEnd));
        return;
    }
    m_tables.push_back({&element, name});
    const std::string markup = ReadingLook::boxStart(name).append(inner);
    innerEnd += ReadingLook::BoxEnd;
    inner.empty() ? openContainer(markup, std::move(innerEnd)) : openBlock(markup, std::move(innerEnd));
}

/// Rich text makes a line of text as high as a picture that does not fit into it any more.
bool ReadingWriter::isSetApart(const HtmlNode& picture) const
{
    return widthOf(picture) >= LargePicture;
}

bool ReadingWriter::hasPictureApart(const HtmlNode& element) const
{
    for (const auto* node = &element; node != nullptr; node = nextNode(node, &element)) {
        if (isElement(*node, "img") && isSetApart(*node)) {
            return true;
        }
    }
    return false;
}

/// Paragraphs at the end of a cell or an item need less room below them.
std::string_view ReadingWriter::paragraphClass(const HtmlNode& paragraph, const ElementNotes& notes) const
{
    if (notes.hasPicture && hasPictureApart(paragraph)) {
        return "picture";
    }
    if (paragraph.parent == nullptr || !isLastElement(paragraph)) {
        return {};
    }
    const auto& parent = notesOf(*paragraph.parent);
    if (parent.element == Element::Item) {
        return isLastElement(*paragraph.parent) ? std::string_view() : "item";
    }
    return parent.element == Element::Cell || !ReadingLook::noteClass(parent.role).empty()
               ? "last"
               : std::string_view();
}

void ReadingWriter::openParagraph(const HtmlNode& element, const ElementNotes& notes)
{
    const auto note = ReadingLook::noteClass(notes.role);
    if (!notes.hasContent() || isVerbatim()) {
        openTransparent(element);
    } else if (!note.empty()) {
        openBox(element, note, "<p class=\"last\">", "</p>");
    } else if (notes.role == Role::Title || notes.element == Element::Summary) {
        openTitle(element, notes);
    } else if (notes.role == Role::Caption || notes.element != Element::Paragraph) {
        openBlock(startTag("p", ReadingLook::block(element, "caption")), "</p>");
    } else {
        openBlock(startTag("p", ReadingLook::block(element, paragraphClass(element, notes))), "</p>");
    }
}

/// A heading of the page, or the title of a note, a table or an example.
void ReadingWriter::openTitle(const HtmlNode& element, const ElementNotes& notes)
{
    if (!notes.hasContent() || isVerbatim()) {
        openTransparent(element);
        return;
    }
    if (!box().empty()) {
        openBlock(startTag("p", attributeText("class", box())) + "<b>", "</b></p>");
    } else if (notes.element == Element::Heading) {
        const auto name = element.name;
        openHeading(name[1] - '0', startTag(name, ReadingLook::heading(element)), endTag(name));
    } else {
        openBlock(startTag("p", ReadingLook::block(element, "title")), "</p>");
    }
}

void ReadingWriter::openInline(const HtmlNode& element, const ElementNotes& notes)
{
    if (notes.element == Element::Link) {
        openLink(element);
    } else if (notes.role == Role::SignatureName || notes.role == Role::UserInterface) {
        open("<b>", "</b>");
    } else if (notes.role == Role::Remark) {
        open("<i>", "</i>");
    } else if (notes.element == Element::Code || notes.element == Element::Keys || notes.role == Role::Keys) {
        openCode(element, notes);
    } else if (notes.element == Element::Inline) {
        const auto name = element.name;
        open(startTag(name), endTag(name));
    } else if (notes.element == Element::Quotation) {
        openTransparent(element);
        putText("“");
    } else if (const auto name = tokenClass(notes.role); !name.empty() && isVerbatim()) {
        open(startTag("span", attributeText("class", name)), "</span>");
    } else {
        openTransparent(element);
    }
}

void ReadingWriter::openCode(const HtmlNode& element, const ElementNotes& notes)
{
    const bool isKeys = notes.element == Element::Keys || notes.role == Role::Keys;
    const bool isPartOfCode = isVerbatim() || m_signature != nullptr;
    if (isPartOfCode || !notes.hasContent() || (isKeys && hasKeysInside(element))) {
        openTransparent(element);
    } else {
        isKeys ? open("<kbd>", "</kbd>") : open("<code>", "</code>");
    }
}

void ReadingWriter::openListing(const HtmlNode& element)
{
    if (isVerbatim() || !notesOf(element).hasContent()) {
        openTransparent(element);
    } else if (m_tables.size() >= DeepestTable) {
        openVerbatim("<pre>", "</pre>");
    } else {
        m_tables.push_back({&element, {}});
        openVerbatim(ReadingLook::boxStart("code") + "<pre>", "</pre>" + std::string(ReadingLook::BoxEnd));
    }
}

void ReadingWriter::openTable(const HtmlNode& element, const ElementNotes& notes)
{
    if (!notes.hasContent() || isVerbatim() || m_tables.size() >= DeepestTable) {
        m_tables.push_back({&element, {}, true});
        openContainer({}, {});
        return;
    }
    m_tables.push_back({&element, {}});
    const std::string look = ReadingLook::table(element, ReadingLook::isDataTable(element));
    PageWriter::openTable(element, look);
}

void ReadingWriter::openCell(const HtmlNode& element)
{
    if (!isInTable()) {
        openBlock("<div>", "</div>");
        return;
    }
    const std::string look = ReadingLook::cell(element);
    openBlock(startTag(element.name, look + cellWidth(element)), endTag(element.name));
}
