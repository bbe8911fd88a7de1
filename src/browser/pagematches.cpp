// SPDX-License-Identifier: MIT
#include "browser/pagematches.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

#include <algorithm>

namespace {

constexpr int SliceTime = 15;     // ms
constexpr int VisibleSlack = 500; // characters that are marked beyond those in sight

struct Range {
    int from;
    int to;
};

/// Positions of the text in sight. Only the layout of what is in sight is asked for: far places may not have
/// been laid out yet.
Range visibleRange(const QTextEdit& view)
{
    const QRect rect = view.viewport()->rect();
    const auto positions = {view.cursorForPosition(rect.topLeft()).position(),
                            view.cursorForPosition(rect.topRight()).position(),
                            view.cursorForPosition(rect.bottomLeft()).position(),
                            view.cursorForPosition(rect.bottomRight()).position()};
    return {std::min(positions) - VisibleSlack, std::max(positions) + VisibleSlack};
}

/// A soft colour of its own, and text that can be read on it whatever the page's colours are.
QTextCharFormat markFormat(const QPalette& palette)
{
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    QTextCharFormat format;
    format.setBackground(isDark ? QColor(0x6b, 0x52, 0x0c) : QColor(0xff, 0xe9, 0x9c));
    format.setForeground(isDark ? Qt::white : Qt::black);
    return format;
}

bool isWholeWord(const QString& text, qsizetype start, qsizetype end)
{
    return (start == 0 || !text.at(start - 1).isLetterOrNumber()) &&
           (end == text.size() || !text.at(end).isLetterOrNumber());
}

} // namespace

PageMatches::PageMatches(QTextEdit* view, QObject* parent) : QObject(parent), m_view(view)
{
    m_sliceTimer.setInterval(0);
    connect(&m_sliceTimer, &QTimer::timeout, this, &PageMatches::searchSlice);
    // Positions hold for one text only.
    connect(view, &QTextEdit::textChanged, this, &PageMatches::clear);
    connect(view, &QObject::destroyed, &m_sliceTimer, &QTimer::stop);
    connect(view->verticalScrollBar(), &QScrollBar::valueChanged, this, &PageMatches::markVisible);
    connect(view->verticalScrollBar(), &QScrollBar::rangeChanged, this, &PageMatches::markVisible);
}

PageMatches::~PageMatches()
{
    clear();
}

void PageMatches::search(const QString& text, QTextDocument::FindFlags options)
{
    m_starts.clear();
    m_text = text;
    m_options = options;
    m_nextBlock = 0;
    m_sliceTimer.start();
}

void PageMatches::clear()
{
    m_sliceTimer.stop();
    m_starts.clear();
    if (m_view != nullptr && !m_view->extraSelections().isEmpty()) {
        m_view->setExtraSelections({});
    }
}

void PageMatches::searchSlice()
{
    QElapsedTimer time;
    time.start();
    auto block = m_view->document()->findBlockByNumber(m_nextBlock);
    while (block.isValid() && !m_text.isEmpty() && !isCapped()) {
        if (time.elapsed() > SliceTime) {
            m_nextBlock = block.blockNumber();
            return;
        }
        searchBlock(block);
        block = block.next();
    }
    m_sliceTimer.stop();
    markVisible();
    Q_EMIT counted();
}

void PageMatches::searchBlock(const QTextBlock& block)
{
    QString text = block.text();
    text.replace(QChar::Nbsp, u' ');
    const auto sensitivity =
        m_options.testFlag(QTextDocument::FindCaseSensitively) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const bool wholeWords = m_options.testFlag(QTextDocument::FindWholeWords);
    qsizetype start = text.indexOf(m_text, 0, sensitivity);
    while (start >= 0 && !isCapped()) {
        qsizetype next = start + m_text.size();
        if (wholeWords && !isWholeWord(text, start, next)) {
            ++next; // QTextDocument::find() goes on there, too
        } else {
            m_starts.push_back(block.position() + int(start));
        }
        start = text.indexOf(m_text, next, sensitivity);
    }
}

void PageMatches::markVisible()
{
    if (m_sliceTimer.isActive()) {
        return;
    }
    if (m_starts.empty()) {
        clear();
        return;
    }
    const auto range = visibleRange(*m_view);
    const int length = int(m_text.size());
    // The scroll bar moves before the view tells that it has another, shorter text.
    const int end = std::min(range.to, m_view->document()->characterCount() - length);
    QList<QTextEdit::ExtraSelection> marks;
    QTextEdit::ExtraSelection mark{QTextCursor(m_view->document()), markFormat(m_view->palette())};
    for (auto start = std::lower_bound(m_starts.begin(), m_starts.end(), range.from - length);
         start != m_starts.end() && *start < end; ++start) {
        mark.cursor.setPosition(*start);
        mark.cursor.setPosition(*start + length, QTextCursor::KeepAnchor);
        marks.append(mark);
    }
    m_view->setExtraSelections(marks);
}

int PageMatches::current() const
{
    if (m_view == nullptr) {
        return 0;
    }
    const QTextCursor cursor = m_view->textCursor();
    const int start = cursor.selectionStart();
    const auto found = std::lower_bound(m_starts.begin(), m_starts.end(), start);
    const bool isMatch =
        found != m_starts.end() && *found == start && cursor.selectionEnd() == start + m_text.size();
    return isMatch ? int(found - m_starts.begin()) + 1 : 0;
}
