// SPDX-License-Identifier: MIT
#include "pages/faithfulwriter.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/elementroles.h"

#include <algorithm>
#include <array>

namespace {

bool isEmptyElement(std::string_view name)
{
    static constexpr std::array<std::string_view, 3> names{"hr", "wbr", "col"};
    return isOneOf(name, names);
}

bool isTablePart(std::string_view name)
{
    static constexpr std::array<std::string_view, 8> names{"table", "caption", "thead", "tbody",
                                                           "tfoot", "tr",      "td",    "th"};
    return isOneOf(name, names);
}

bool isLeftOut(std::string_view name)
{
    static constexpr std::array<std::string_view, 10> names{
        "script",   "template", "title",   "meta",       "base",
        "datalist", "noframes", "noembed", "annotation", "annotation-xml"};
    return isOneOf(name, names);
}

/// Targets and names are written by themselves, scripts never; a tool tip with markup in it would not be
/// taken as plain text.
bool isKept(std::string_view name, std::string_view value)
{
    static constexpr std::array<std::string_view, 5> handled{"id", "name", "href", "src", "alt"};
    return !isOneOf(name, handled) && name.substr(0, 2) != "on" &&
           (name != "title" || value.find('<') == std::string_view::npos);
}

} // namespace

void FaithfulWriter::writePage(const HtmlNode& root)
{
    write(root);
    finish();
}

std::string FaithfulWriter::attributesOf(const HtmlNode& element) const
{
    std::string kept;
    for (const auto* written = element.attributes; written != nullptr; written = written->next) {
        if (isKept(written->name, written->value)) {
            kept += attributeText(written->name, written->value);
        }
    }
    return kept;
}

void FaithfulWriter::left(const HtmlNode& element)
{
    m_tables -= isElement(element, "table") ? 1 : 0;
}

void FaithfulWriter::text(const HtmlNode& node)
{
    putWritten(node.content);
}

bool FaithfulWriter::enter(const HtmlNode& element)
{
    const auto name = element.name;
    if (isLeftOut(name) || putSpecial(element)) {
        return false;
    }
    if (name == "frameset") {
        putFrames(element);
        return false;
    }
    if (name == "style") {
        putStyle(element);
        return false;
    }
    if (name == "link") {
        putStyleSheet(element);
        return false;
    }
    if (isEmptyElement(name)) {
        putEmpty(element);
        return false;
    }
    m_tables += name == "table" ? 1 : 0;
    if (isTooDeep()) {
        openTransparent(element);
    } else if (m_tables > DeepestTable && isTablePart(name)) {
        openBlock("<div>", "</div>");
    } else {
        openElement(element);
    }
    return true;
}

void FaithfulWriter::putEmpty(const HtmlNode& element)
{
    const std::string markup = startTag(element.name, attributesOf(element));
    if (element.name == "hr") {
        putEmptyBlock(markup);
    } else {
        putMarkup(markup);
    }
}

void FaithfulWriter::openElement(const HtmlNode& element)
{
    const auto name = element.name;
    std::string attributes = attributesOf(element);
    if (name == "table") {
        openTable(element, attributes);
        return;
    }
    if ((name == "td" || name == "th") && !hasAttribute(element, "width")) {
        attributes += cellWidth(element);
    }
    const std::string begin = startTag(name, attributes);
    std::string end = endTag(name);
    const Element kind = elementOf(element);
    if (name == "head") {
        openTransparent(element);
    } else if (kind == Element::Link) {
        openLink(element);
    } else if (kind == Element::Heading) {
        openHeading(name[1] - '0', begin, std::move(end));
    } else if (kind == Element::Preformatted) {
        openVerbatim(begin, std::move(end));
    } else if (name == "tbody") {
        openRows(begin, std::move(end));
    } else if (name == "ul" || name == "dl") {
        openList(begin, std::move(end));
    } else if (!isInlineElement(kind)) {
        openBlock(begin, std::move(end));
    } else {
        open(begin, std::move(end));
    }
}

/// Links to the pages of its frames.
void FaithfulWriter::putFrames(const HtmlNode& frameset)
{
    for (const auto* node = &frameset; node != nullptr; node = nextNode(node, &frameset)) {
        if (isElement(*node, Tag::Frame)) {
            write(*node);
        }
    }
}

/// The text of a style element is no HTML; what could end the element early is left out.
void FaithfulWriter::putStyle(const HtmlNode& element)
{
    keepWhole();
    putMarkup("<style>");
    for (const auto* child = element.firstChild; child != nullptr; child = child->next) {
        putMarkup(child->content.substr(0, child->content.find("</")));
    }
    putMarkup("</style>");
}

void FaithfulWriter::putStyleSheet(const HtmlNode& element)
{
    const bool isSheet = anyWord(attribute(element, "rel"),
                                 [](std::string_view word) { return equalsLower(word, "stylesheet"); });
    if (isSheet) {
        keepWhole();
        // Rich text takes all behind an unclosed link element for its content and shows nothing of it.
        putMarkup(startTag("link",
                           attributeText("href", attribute(element, "href")) + attributesOf(element) + "/"));
    }
}
