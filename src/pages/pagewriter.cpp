// SPDX-License-Identifier: MIT
#include "pages/pagewriter.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/elementroles.h"
#include "pages/elementtext.h"
#include "pages/linkcode.h"
#include "pages/links.h"
#include "pages/longtable.h"

#include <QUrl>

#include <charconv>
#include <utility>

namespace {

std::string toStdString(const QString& text)
{
    return text.toStdString();
}

} // namespace

void PageWriter::write(const HtmlNode& element)
{
    walk(
        element, [this](const HtmlNode& node) { return visit(node); },
        [this](const HtmlNode& node) { leave(node); });
}

void PageWriter::writeContent(const HtmlNode& body, const HtmlNode& content)
{
    for (const auto* node = &body; node != nullptr;) {
        if (node == &content) {
            write(content);
        } else if (isElement(*node)) {
            keepAnchors(*node);
        }
        node = nextNode(node, &body, node != &content);
    }
    finish();
}

/// Whether an element was begun.
bool PageWriter::visit(const HtmlNode& node)
{
    if (m_output.isFull()) {
        return false; // the rest is left out
    }
    if (isText(node)) {
        text(node);
    }
    if (!isElement(node)) {
        return false;
    }
    if (m_openLinks == 0) {
        keepAnchors(node);
    }
    return enter(node);
}

void PageWriter::open(std::string_view markup, End end)
{
    m_lastMarkup = markup;
    m_output.open(markup, end);
    end.textBegin = m_output.textLength();
    m_ends.push_back(std::move(end));
}

void PageWriter::putText(std::string_view text, std::string_view tags, std::string ends)
{
    PageOutput::End end{std::move(ends)};
    m_output.open(tags, end);
    putText(text);
    m_output.close(end);
}

void PageWriter::leave(const HtmlNode& element)
{
    leaving(element);
    close();
    if (m_longTable.table == &element) {
        m_longTable = {};
    }
    left(element);
}

/// Ends what was opened last.
void PageWriter::close()
{
    const End end = std::move(m_ends.back());
    m_ends.pop_back();
    m_openLinks -= end.link != 0 ? 1 : 0;
    if (end.link != 0 || end.heading != 0) {
        const QString inner = toQString(m_output.textFrom(end.textBegin)).simplified();
        (end.link != 0 ? m_page.links[end.link - 1].text : m_page.headings[end.heading - 1].text) = inner;
    }
    m_output.close(end);
}

void PageWriter::openTable(const HtmlNode& table, const std::string& attributes)
{
    End end{{"</table>", true}};
    std::string markup = startTag("table", attributes);
    if (m_longTable.table == nullptr) {
        if (auto percents = columnPercents(table); !percents.empty()) {
            m_longTable = {&table, std::move(percents), nullptr, 0};
            const bool hasWidth = attributes.find(" width=") != std::string::npos;
            const bool hasStyle = attributes.find(" style=") != std::string::npos;
            markup = startTag("table", attributes + (hasWidth ? "" : R"( width="100%")") +
                                           std::string(hasStyle ? "" : PageOutput::TableMargins));
            end.again = markup;
        }
    }
    open(markup, std::move(end));
}

void PageWriter::openRows(const std::string& markup, std::string end)
{
    m_longTable.table == nullptr ? openBlock(markup, std::move(end)) : openList(markup, std::move(end));
}

std::string PageWriter::cellWidth(const HtmlNode& cell)
{
    const auto* row = cell.parent;
    if (m_longTable.table == nullptr || row == nullptr ||
        (row->parent != m_longTable.table &&
         (row->parent == nullptr || row->parent->parent != m_longTable.table))) {
        return {};
    }
    if (m_longTable.firstRow == nullptr || m_longTable.part != m_output.joints()) {
        m_longTable.firstRow = row;
        m_longTable.part = m_output.joints();
    }
    size_t column = 0;
    for (const auto* before = cell.previous; before != nullptr; before = before->previous) {
        column += isElement(*before) ? 1 : 0;
    }
    const bool isWanted = row == m_longTable.firstRow && column < m_longTable.percents.size();
    return isWanted ? attributeText("width", std::to_string(m_longTable.percents[column]) + '%')
                    : std::string();
}

void PageWriter::openLink(const HtmlNode& element)
{
    if (!hasAttribute(element, "href")) {
        openNothing();
        return;
    }
    m_output.beginParagraph();
    // Rich text has no links within links, and anchors are such.
    for (const auto* node = &element; node != nullptr; node = nextNode(node, &element)) {
        keepAnchors(*node);
    }
    End end{{"</a>"}};
    m_page.links.push_back({toQString(attribute(element, "href")), {}});
    end.link = m_page.links.size();
    m_output.putSpace();
    m_output.putAnchors();
    ++m_openLinks;
    const std::string code = attributeText("href", toStdString(linkCode(end.link - 1)));
    open(startTag("a", code + attributesOf(element)), std::move(end));
}

void PageWriter::openHeading(int level, std::string_view markup, std::string end)
{
    const std::string anchor = std::string(HeadingAnchor) + std::to_string(m_page.headings.size());
    m_output.addAnchor(anchor);
    m_page.headings.push_back({level, {}, toQString(anchor)});
    End heading{{std::move(end), true}};
    heading.heading = m_page.headings.size();
    open(markup, std::move(heading));
}

void PageWriter::keepAnchors(const HtmlNode& element)
{
    m_output.addAnchor(attribute(element, "id"));
    if (isElement(element, "a")) {
        m_output.addAnchor(attribute(element, "name"));
    }
}

QString PageWriter::localFile(std::string_view name) const
{
    return resolveFile(m_page.base, toQString(name));
}

int PageWriter::widthOf(const HtmlNode& picture) const
{
    const QString file = localFile(attribute(picture, "src"));
    int width = file.isEmpty() || !m_context.pictureWidth ? 0 : m_context.pictureWidth(file);
    if (width > 0) {
        const auto wanted = attribute(picture, "width");
        std::from_chars(wanted.data(), wanted.data() + wanted.size(), width);
    }
    return width;
}

void PageWriter::putPicture(const HtmlNode& element)
{
    if (widthOf(element) == 0) {
        putAlternative(attribute(element, "alt"));
        return;
    }
    const std::string url =
        QUrl::fromLocalFile(localFile(attribute(element, "src"))).toEncoded().toStdString();
    m_output.putPicture(startTag("img", attributeText("src", url) + attributesOf(element)),
                        isSetApart(element));
}

/// The text of a picture that cannot be shown.
void PageWriter::putAlternative(std::string_view text)
{
    if (isBlank(text)) {
        return;
    }
    m_output.beginParagraph();
    putText(" ");
    m_output.putSpace();
    putMarkup("<span class=\"alt\">");
    putText(text);
    putMarkup("</span>");
    putText(" ");
}

void PageWriter::putLink(std::string_view href, std::string_view text)
{
    m_page.links.push_back({toQString(href), toQString(text)});
    m_output.putSpace();
    putMarkup(startTag("a", attributeText("href", toStdString(linkCode(m_page.links.size() - 1)))));
    putText(text);
    putMarkup("</a>");
}

/// A page within the page becomes a link to it.
void PageWriter::putFrame(const HtmlNode& element)
{
    const auto text = frameText(element);
    if (text.empty()) {
        return;
    }
    openBlock("<p>", "</p>");
    putLink(attribute(element, "src"), text);
    close();
}

/// A part of a picture that leads elsewhere.
void PageWriter::putArea(const HtmlNode& element)
{
    auto text = attribute(element, "alt");
    if (text.empty()) {
        text = attribute(element, "title");
    }
    if (hasAttribute(element, "href") && !isBlank(text)) {
        putText(" ");
        putLink(attribute(element, "href"), text);
        putText(" ");
    }
}

/// Writes text with a blank on either side.
void PageWriter::putApart(std::string_view text)
{
    putText(" ");
    putText(text);
    putText(" ");
}

bool PageWriter::putSpecial(const HtmlNode& element)
{
    switch (elementOf(element)) {
    case Element::Picture:
        putPicture(element);
        return true;
    case Element::Frame:
        putFrame(element);
        return true;
    case Element::Field:
        putApart(fieldText(element));
        return true;
    case Element::Choice:
        putApart(choiceText(element));
        return true;
    case Element::Area:
        putArea(element);
        return true;
    case Element::Drawing:
        putApart(drawingText(element));
        return true;
    case Element::Break:
        breakLine();
        return true;
    default:
        return false;
    }
}

/// Formulas become a line of text: fractions with a stroke, powers and indices raised and lowered.
void PageWriter::openTransparent(const HtmlNode& element)
{
    const auto parent = element.parent == nullptr ? std::string_view() : element.parent->name;
    const auto* previous = element.previous;
    while (previous != nullptr && !isElement(*previous)) {
        previous = previous->previous;
    }
    const bool isFirst = previous == nullptr;
    const auto name = element.name;
    if (!isFirst && (parent == "mfrac" || name == "mtd")) {
        putText(parent == "mfrac" ? "/" : " ");
    }
    if (name == "msqrt") {
        putText("√");
    }
    if (!isFirst && parent == "msup") {
        open("<sup>", "</sup>");
    } else if (!isFirst && parent == "msub") {
        open("<sub>", "</sub>");
    } else if (name == "mtr") {
        openBlock("<div>", "</div>");
    } else {
        openNothing();
    }
}
