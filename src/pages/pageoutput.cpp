// SPDX-License-Identifier: MIT
#include "pages/pageoutput.h"

#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/preparedpage.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr size_t PartSize = 32'000; // bytes; rich text takes about 10 ms for them

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

/// Makes a margin nothing in the tag at a position, as long as it was.
void dropMargin(std::string& html, size_t tag, std::string_view margin)
{
    const size_t found = html.find(margin, tag);
    if (found < html.find('>', tag)) {
        html[found + margin.size() - 3] = '0';
    }
}

} // namespace

void PageOutput::open(std::string_view markup, End& end)
{
    if (end.isBlock) {
        endParagraph();
        breakBlock();
        m_blocks.push_back(end.isContainer ? end.paragraph : std::string());
        m_isTextLast = m_isTextLast && markup.empty();
        m_blockEnd = markup.empty() ? m_blockEnd : std::nullopt;
    } else {
        beginParagraph();
        putSpace();
    }
    end.isBare = isBareMarkup(markup);
    m_verbatim += end.isVerbatim ? 1 : 0;
    if (end.again.empty()) {
        m_openFormats += end.isBare ? 0 : 1;
    } else {
        m_divisible.push_back({end.again, end.markup, m_html.size()});
    }
    m_openTables += isTableEnd(end.markup) ? 1 : 0;
    m_html += markup;
}

void PageOutput::close(const End& end)
{
    m_verbatim -= end.isVerbatim ? 1 : 0;
    if (end.again.empty()) {
        m_openFormats -= end.isBare ? 0 : 1;
    } else {
        m_divisible.pop_back();
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
        m_blockEnd = end.markup.empty() ? m_blockEnd : m_html.size();
        addJoint();
    }
}

void PageOutput::putEmptyBlock(std::string_view markup)
{
    endParagraph();
    breakBlock();
    m_html += markup;
    m_blockEnd = m_html.size();
}

/// Notes that the page can be divided here, when the part before has a size that is worth it.
void PageOutput::addJoint()
{
    const size_t last = m_joints.empty() ? 0 : m_joints.back();
    if (!isDivisibleHere() || m_html.size() - last < PartSize) {
        return;
    }
    divide();
}

/// Ends a part, with all elements that are open, and begins them anew.
void PageOutput::divide()
{
    std::for_each(m_divisible.rbegin(), m_divisible.rend(), [this](const Divisible& open) {
        dropMargin(m_html, open.begin, "margin-bottom:8px");
        m_html += open.end;
    });
    m_joints.push_back(m_html.size());
    for (auto& open : m_divisible) {
        open.begin = m_html.size();
        m_html += open.again;
        dropMargin(m_html, open.begin, "margin-top:4px");
    }
    m_limit.beginPart();
}

/// The last paragraph of a part must hold text, or be the one that always follows a table.
bool PageOutput::isDivisibleHere() const
{
    return m_openFormats == 0 && (m_isTextLast || isInDivisibleTable());
}

bool PageOutput::isInDivisibleTable() const
{
    return !m_divisible.empty() && isTableEnd(m_divisible.back().end);
}

void PageOutput::beginParagraph(std::string_view markup)
{
    if (!m_isParagraphOpen && !m_blocks.empty() && !m_blocks.back().empty()) {
        m_html += markup.empty() ? std::string_view(m_blocks.back()) : markup;
        m_isParagraphOpen = true;
    }
}

void PageOutput::endParagraph()
{
    if (std::exchange(m_isParagraphOpen, false)) {
        m_html += "</div>";
        m_blockEnd = m_html.size();
        breakBlock();
    }
}

void PageOutput::putSpace()
{
    putBreak();
    if (std::exchange(m_isSpaceWanted, false)) {
        m_html += ' ';
        m_text += ' ';
    }
}

void PageOutput::addAnchor(std::string_view name)
{
    if (!name.empty() && (m_anchors.empty() || m_anchors.back() != name)) {
        m_anchors.emplace_back(name);
    }
}

void PageOutput::putAnchors()
{
    for (const auto& anchor : std::exchange(m_anchors, {})) {
        m_html += startTag("a", attributeText("name", anchor)) + "</a>";
    }
}

void PageOutput::putText(std::string_view text)
{
    if (isVerbatim()) {
        putWritten(text);
    } else {
        putWords(m_limit.take(text, false), true);
    }
}

void PageOutput::putWritten(std::string_view text)
{
    text = m_limit.take(text, isVerbatim());
    putBreak();
    if (!isBlank(text)) {
        putAnchors();
        m_blockEnd.reset();
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
void PageOutput::putWords(std::string_view text, bool isForHtml)
{
    for (size_t begin = 0; begin < text.size();) {
        const size_t word = nextNonBlank(text, begin);
        m_isSpaceWanted = m_isSpaceWanted || (word != begin && !m_isLineEmpty);
        if (word == text.size()) {
            return;
        }
        const size_t end = nextBlank(text, word);
        if (isForHtml) {
            beginParagraph();
            putSpace();
            putAnchors();
            m_blockEnd.reset();
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

/// The last break of a paragraph begins no line.
void PageOutput::breakLine()
{
    if (!m_blocks.empty() && !m_blocks.back().empty() && !m_isParagraphOpen) {
        return; // between two blocks
    }
    if (isVerbatim()) {
        m_html += '\n';
        m_text += '\n';
    } else {
        putBreak();
        m_isBreakDue = true;
    }
    m_isSpaceWanted = false;
    m_isLineEmpty = true;
}

/// Writes a break that was due.
void PageOutput::putBreak()
{
    if (std::exchange(m_isBreakDue, false)) {
        m_html += "<br>";
        m_text += '\n';
    }
}

void PageOutput::breakBlock()
{
    if (!m_text.empty() && m_text.back() != '\n') {
        m_text += '\n';
    }
    m_limit.beginParagraph(m_openTables > 0);
    m_isSpaceWanted = false;
    m_isBreakDue = false;
    m_isLineEmpty = true;
}

void PageOutput::putPicture(std::string_view markup, bool isApart)
{
    if (isApart && !m_isLineEmpty) {
        breakLine();
    }
    beginParagraph(isApart ? "<div class=\"picture\">" : "");
    // Text behind a block begins a line by itself, a picture does not.
    if (const auto end = std::exchange(m_blockEnd, std::nullopt); end && !m_isParagraphOpen) {
        m_html.insert(*end, "<div>");
        m_isParagraphOpen = true;
    }
    putSpace();
    putAnchors();
    m_html += markup;
    m_isLineEmpty = isApart;
    m_isTextLast = true;
    m_isBreakDue = isApart;
}

void PageOutput::finish(PreparedPage& page)
{
    putAnchors();
    page.isBeginning = page.isBeginning || isFull();
    page.html.reserve(qsizetype(m_html.size()));
    size_t begin = 0;
    for (const size_t joint : m_joints) {
        page.html += toQString(std::string_view(m_html).substr(begin, joint - begin));
        page.joints.push_back(page.html.size());
        begin = joint;
    }
    page.html += toQString(std::string_view(m_html).substr(begin));
    page.text = toQString(m_text);
}
