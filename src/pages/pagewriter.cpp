// SPDX-License-Identifier: MIT
#include "pages/pagewriter.h"

#include "pages/elementroles.h"
#include "pages/elementtext.h"
#include "pages/htmltree.h"
#include "pages/links.h"
#include "pages/markup.h"

#include <QUrl>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace {

constexpr std::string_view HeadingAnchor = "~heading-";
constexpr size_t PartSize = 32'000; // bytes; rich text takes about 10 ms for them

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

std::string toStdString(const QString& text)
{
    return text.toStdString();
}

/// Whether a block only divides the text, without a look of its own.
bool isBareMarkup(std::string_view markup)
{
    static constexpr std::array<std::string_view, 8> bare{"",       "<html>",    "<body>",    "<div>",
                                                          "<main>", "<section>", "<article>", "<header>"};
    return std::find(bare.begin(), bare.end(), markup) != bare.end();
}

bool isTableEnd(std::string_view markup)
{
    return markup.find("</table>") != std::string_view::npos;
}

} // namespace

QString linkCode(size_t number)
{
    return QStringLiteral("link:") + QString::number(number);
}

bool isHeadingAnchor(const QString& name)
{
    return name.startsWith(QLatin1StringView(HeadingAnchor.data(), qsizetype(HeadingAnchor.size())));
}

int linkNumber(const QString& code)
{
    bool ok = false;
    const int number = code.startsWith(u"link:") ? QStringView(code).sliced(5).toInt(&ok) : -1;
    return ok ? number : -1;
}

void PageWriter::write(const HtmlNode& element)
{
    const HtmlNode* node = &element;
    while (node != nullptr) {
        bool isOpen = false;
        if (m_limit.isReached()) {
            // The rest is left out.
        } else if (isText(*node)) {
            text(*node);
        } else if (isElement(*node)) {
            if (m_openLinks == 0) {
                keepAnchors(*node);
            }
            isOpen = enter(*node);
        }
        if (isOpen && node->firstChild != nullptr) {
            node = node->firstChild;
            continue;
        }
        if (isOpen) {
            leave(*node);
        }
        while (node != &element && node->next == nullptr) {
            node = node->parent;
            leave(*node);
        }
        node = node == &element ? nullptr : node->next;
    }
}

void PageWriter::open(std::string_view markup, End end)
{
    if (end.isBlock) {
        endParagraph();
        breakBlock();
        m_blocks.push_back(end.isContainer);
        m_isTextLast = m_isTextLast && markup.empty();
    } else {
        beginParagraph("<div>");
        putSpace();
    }
    m_verbatim += end.isVerbatim ? 1 : 0;
    end.isBare = isBareMarkup(markup);
    m_openFormats += end.isBare ? 0 : 1;
    m_openTables += isTableEnd(end.markup) ? 1 : 0;
    end.textBegin = m_text.size();
    m_html += markup;
    m_ends.push_back(std::move(end));
}

void PageWriter::leave(const HtmlNode& element)
{
    const End end = std::move(m_ends.back());
    m_ends.pop_back();
    m_verbatim -= end.isVerbatim ? 1 : 0;
    m_openFormats -= end.isBare ? 0 : 1;
    m_openLinks -= end.link != 0 ? 1 : 0;
    if (end.link != 0 || end.heading != 0) {
        const QString inner = toQString(std::string_view(m_text).substr(end.textBegin)).simplified();
        (end.link != 0 ? m_page.links[end.link - 1].text : m_page.headings[end.heading - 1].text) = inner;
    }
    if (end.isBlock) {
        endParagraph();
        m_blocks.pop_back();
    }
    m_html += end.markup;
    m_openTables -= isTableEnd(end.markup) ? 1 : 0;
    m_isTextLast = m_isTextLast && !isTableEnd(end.markup);
    if (end.isBlock) {
        breakBlock();
        addJoint();
    }
    left(element);
}

/// Notes that the page can be divided here, when the part before has a size that is worth it.
void PageWriter::addJoint()
{
    const size_t last = m_joints.empty() ? 0 : m_joints.back();
    if (m_openFormats == 0 && m_isTextLast && m_html.size() - last >= PartSize) {
        m_joints.push_back(m_html.size());
        m_limit.beginPart();
    }
}

void PageWriter::beginParagraph(std::string_view markup)
{
    if (!m_isParagraphOpen && !m_blocks.empty() && m_blocks.back()) {
        m_html += markup;
        m_isParagraphOpen = true;
    }
}

void PageWriter::endParagraph()
{
    if (std::exchange(m_isParagraphOpen, false)) {
        m_html += "</div>";
        breakBlock();
    }
}

void PageWriter::openLink(const HtmlNode& element)
{
    if (!hasAttribute(element, "href")) {
        openNothing();
        return;
    }
    beginParagraph("<div>");
    // Rich text has no links within links, and anchors are such.
    for (const auto* node = &element; node != nullptr; node = nextNode(node, &element)) {
        keepAnchors(*node);
    }
    End end{"</a>"};
    m_page.links.push_back({toQString(attribute(element, "href")), {}});
    end.link = m_page.links.size();
    putSpace();
    putAnchors();
    ++m_openLinks;
    const std::string code = attributeText("href", toStdString(linkCode(end.link - 1)));
    open(startTag("a", code + attributesOf(element)), std::move(end));
}

void PageWriter::openHeading(int level, std::string_view markup, std::string end)
{
    const std::string anchor = std::string(HeadingAnchor) + std::to_string(m_page.headings.size());
    addAnchor(anchor);
    m_page.headings.push_back({level, {}, toQString(anchor)});
    End heading{std::move(end), true};
    heading.heading = m_page.headings.size();
    open(markup, std::move(heading));
}

void PageWriter::putSpace()
{
    if (std::exchange(m_isBreakDue, false)) {
        breakLine();
    }
    if (std::exchange(m_isSpaceWanted, false)) {
        m_html += ' ';
        m_text += ' ';
    }
}

void PageWriter::keepAnchors(const HtmlNode& element)
{
    addAnchor(attribute(element, "id"));
    if (isElement(element, "a")) {
        addAnchor(attribute(element, "name"));
    }
}

void PageWriter::addAnchor(std::string_view name)
{
    if (!name.empty() && (m_anchors.empty() || m_anchors.back() != name)) {
        m_anchors.emplace_back(name);
    }
}

void PageWriter::putAnchors()
{
    for (const auto& anchor : std::exchange(m_anchors, {})) {
        m_html += startTag("a", attributeText("name", anchor)) + "</a>";
    }
}

void PageWriter::putText(std::string_view text)
{
    if (isVerbatim()) {
        putWritten(text);
    } else {
        putWords(m_limit.take(text, false), true);
    }
}

void PageWriter::putWritten(std::string_view text)
{
    text = m_limit.take(text, isVerbatim());
    if (!isBlank(text)) {
        putAnchors();
    }
    appendEscaped(m_html, text);
    if (isVerbatim()) {
        m_text += text;
        m_isLineEmpty = m_isLineEmpty && isBlank(text);
        m_isTextLast = m_isTextLast || !isBlank(text);
    } else {
        putWords(text, false);
    }
}

/// Writes text with one blank for a run of them.
void PageWriter::putWords(std::string_view text, bool isForHtml)
{
    for (size_t begin = 0; begin < text.size();) {
        const size_t word = nextNonBlank(text, begin);
        m_isSpaceWanted = m_isSpaceWanted || (word != begin && !m_isLineEmpty);
        if (word == text.size()) {
            return;
        }
        const size_t end = nextBlank(text, word);
        if (isForHtml) {
            beginParagraph("<div>");
            putSpace();
            putAnchors();
            appendEscaped(m_html, text.substr(word, end - word));
        } else if (std::exchange(m_isSpaceWanted, false)) {
            m_text += ' ';
        }
        m_text += text.substr(word, end - word);
        m_isLineEmpty = false;
        m_isTextLast = true;
        begin = end;
    }
}

void PageWriter::breakLine()
{
    m_isBreakDue = false;
    if (!m_blocks.empty() && m_blocks.back() && !m_isParagraphOpen) {
        return; // between two blocks
    }
    m_html += isVerbatim() ? "\n" : "<br>";
    m_text += '\n';
    m_isSpaceWanted = false;
    m_isLineEmpty = true;
}

void PageWriter::breakBlock()
{
    if (!m_text.empty() && m_text.back() != '\n') {
        m_text += '\n';
    }
    m_limit.beginParagraph(m_openTables > 0);
    m_isSpaceWanted = false;
    m_isBreakDue = false;
    m_isLineEmpty = true;
}

void PageWriter::finish()
{
    putAnchors();
    m_page.isBeginning = m_page.isBeginning || m_limit.isReached();
    for (size_t begin = 0; const size_t joint : m_joints) {
        m_page.html += toQString(std::string_view(m_html).substr(begin, joint - begin));
        m_page.joints.push_back(m_page.html.size());
        begin = joint;
    }
    m_page.html += toQString(std::string_view(m_html).substr(m_joints.empty() ? 0 : m_joints.back()));
    m_page.text = QString::fromUtf8(m_text.data(), qsizetype(m_text.size()));
}

QString PageWriter::localFile(std::string_view name) const
{
    const QString target = name.empty() ? QString() : resolveLink(m_page.base, toQString(name));
    return target.startsWith(u'/') ? target.section(u'#', 0, 0) : QString();
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
    const bool isApart = isSetApart(element);
    if (isApart && !m_isLineEmpty) {
        breakLine();
    }
    beginParagraph(isApart ? "<div class=\"picture\">" : "<div>");
    putSpace();
    putAnchors();
    const std::string url =
        QUrl::fromLocalFile(localFile(attribute(element, "src"))).toEncoded().toStdString();
    m_html += startTag("img", attributeText("src", url) + attributesOf(element));
    m_isLineEmpty = false;
    m_isTextLast = true;
    m_isBreakDue = isApart;
}

/// The text of a picture that cannot be shown.
void PageWriter::putAlternative(std::string_view text)
{
    if (isBlank(text)) {
        return;
    }
    beginParagraph("<div>");
    putSpace();
    putMarkup("<span class=\"alt\">");
    putText(text);
    putMarkup("</span>");
}

void PageWriter::putLink(std::string_view href, std::string_view text)
{
    m_page.links.push_back({toQString(href), toQString(text)});
    m_html += startTag("a", attributeText("href", toStdString(linkCode(m_page.links.size() - 1))));
    putText(text);
    m_html += "</a>";
}

/// A page within the page becomes a link to it.
void PageWriter::putFrame(const HtmlNode& element)
{
    const auto source = attribute(element, "src");
    if (source.empty()) {
        return;
    }
    auto text = attribute(element, "title");
    if (text.empty()) {
        text = attribute(element, "name");
    }
    openBlock("<p>", "</p>");
    putLink(source, text.empty() ? source : text);
    leave(element);
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
