// SPDX-License-Identifier: MIT
#include "search/snippetlayout.h"

#include <QFont>

#include <algorithm>
#include <cmath>

namespace {

constexpr int LeadIn = 24; // characters before the first mark when the beginning is left out

const QString Ellipsis = QStringLiteral("…");

/// Where to begin so that the mark comes soon, at a word if there is one.
qsizetype startBefore(const QString& text, qsizetype mark)
{
    const qsizetype earliest = std::max<qsizetype>(0, mark - LeadIn);
    const qsizetype blank = text.indexOf(u' ', earliest);
    return blank >= 0 && blank < mark ? blank + 1 : earliest;
}

/// The text without its last character and the blanks before it.
QString withoutLast(QString text)
{
    text.chop(1);
    while (!text.isEmpty() && (text.back().isSpace() || text.back().isHighSurrogate())) {
        text.chop(1);
    }
    return text;
}

} // namespace

SnippetLayout::SnippetLayout(const SearchHit& hit, const QFont& font, int width, int lines)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setTextOption(option);
    m_layout.setFont(font);
    qsizetype from = 0;
    setText(hit.snippet, hit.marks, from);
    int end = layOut(width, lines);
    if (!hit.marks.empty() && hit.marks.front().start + hit.marks.front().length > end) {
        from = startBefore(hit.snippet, hit.marks.front().start);
        setText(hit.snippet, hit.marks, from);
        end = layOut(width, lines);
    }
    if (end == m_layout.text().size()) {
        return;
    }
    QString shown = hit.snippet.first(from + end - (from > 0 ? Ellipsis.size() : 0));
    while (end < m_layout.text().size() && shown.size() > from) {
        shown = withoutLast(shown);
        setText(shown + Ellipsis, hit.marks, from);
        end = layOut(width, lines);
    }
}

void SnippetLayout::setText(const QString& text, const std::vector<TextRange>& marks, qsizetype from)
{
    const QString lead = from > 0 ? Ellipsis : QString();
    m_layout.setText(lead + text.sliced(from));
    QList<QTextLayout::FormatRange> formats;
    for (const auto& mark : marks) {
        const qsizetype start = std::max<qsizetype>(0, mark.start - from);
        const qsizetype end = std::min(mark.start + mark.length, text.size()) - from;
        if (end > start) {
            QTextLayout::FormatRange format;
            format.start = int(start + lead.size());
            format.length = int(end - start);
            format.format.setFontWeight(QFont::Bold);
            formats.append(format);
        }
    }
    m_layout.setFormats(formats);
}

int SnippetLayout::layOut(int width, int lines)
{
    int end = 0;
    qreal y = 0;
    m_layout.beginLayout();
    for (int i = 0; i < lines; ++i) {
        auto line = m_layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        line.setPosition({0, y});
        y += line.height();
        end = line.textStart() + line.textLength();
    }
    m_layout.endLayout();
    return end;
}

int SnippetLayout::height() const
{
    return int(std::ceil(m_layout.boundingRect().height()));
}
