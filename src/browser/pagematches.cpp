// SPDX-License-Identifier: MIT
#include "browser/pagematches.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr int SliceTime = 15;     // ms
constexpr int VisibleSlack = 500; // characters that are marked beyond those in sight
constexpr int PartAbove = 4;      // of the view's height, above a match that is brought into sight

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

/// What QTextDocument::find() finds in a paragraph.
std::vector<PageMatches::Match> findText(const QString& sought, QTextDocument::FindFlags options,
                                         const QString& searched)
{
    std::vector<PageMatches::Match> matches;
    const auto sensitivity =
        options.testFlag(QTextDocument::FindCaseSensitively) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const bool wholeWords = options.testFlag(QTextDocument::FindWholeWords);
    qsizetype start = searched.indexOf(sought, 0, sensitivity);
    while (start >= 0 && matches.size() < PageMatches::MaximumCount) {
        qsizetype next = start + sought.size();
        if (wholeWords && !isWholeWord(searched, start, next)) {
            ++next; // QTextDocument::find() goes on there, too
        } else {
            matches.push_back({int(start), int(sought.size())});
        }
        start = searched.indexOf(sought, next, sensitivity);
    }
    return matches;
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

void PageMatches::search(const Matcher& matcher)
{
    m_matches.clear();
    m_matcher = matcher;
    m_nextBlock = 0;
    m_sliceTimer.start();
}

void PageMatches::search(const QString& text, QTextDocument::FindFlags options)
{
    search(text.isEmpty() ? Matcher()
                          : [=](const QString& searched) { return findText(text, options, searched); });
}

void PageMatches::clear()
{
    m_sliceTimer.stop();
    m_matches.clear();
    // Those of another search stay.
    if (m_view != nullptr && std::exchange(m_isMarking, false)) {
        m_view->setExtraSelections({});
    }
}

void PageMatches::searchSlice()
{
    QElapsedTimer time;
    time.start();
    auto block = m_view->document()->findBlockByNumber(m_nextBlock);
    while (block.isValid() && m_matcher != nullptr && !isCapped()) {
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
    for (const auto& match : m_matcher(text)) {
        if (isCapped()) {
            return;
        }
        m_matches.push_back({block.position() + match.start, match.length});
    }
}

void PageMatches::markVisible()
{
    if (m_sliceTimer.isActive()) {
        return;
    }
    if (m_matches.empty()) {
        clear();
        return;
    }
    const auto range = visibleRange(*m_view);
    QList<QTextEdit::ExtraSelection> marks;
    QTextEdit::ExtraSelection mark{QTextCursor(m_view->document()), markFormat(m_view->palette())};
    auto match = firstFrom(range.from);
    while (match != m_matches.begin() && std::prev(match)->start + std::prev(match)->length > range.from) {
        --match;
    }
    // The scroll bar moves before the view tells that it has another, shorter text.
    const int length = m_view->document()->characterCount();
    for (; match != m_matches.end() && match->start < range.to && match->start + match->length < length;
         ++match) {
        mark.cursor.setPosition(match->start);
        mark.cursor.setPosition(match->start + match->length, QTextCursor::KeepAnchor);
        marks.append(mark);
    }
    m_isMarking = true;
    m_view->setExtraSelections(marks);
}

std::vector<PageMatches::Match>::const_iterator PageMatches::firstFrom(int position) const
{
    return std::lower_bound(m_matches.begin(), m_matches.end(), position,
                            [](const Match& match, int bound) { return match.start < bound; });
}

int PageMatches::current() const
{
    if (m_view == nullptr) {
        return 0;
    }
    const QTextCursor cursor = m_view->textCursor();
    const int start = cursor.selectionStart();
    const auto found = firstFrom(start);
    const bool isMatch =
        found != m_matches.end() && found->start == start && cursor.selectionEnd() == start + found->length;
    return isMatch ? int(found - m_matches.begin()) + 1 : 0;
}

void PageMatches::step(bool forward)
{
    if (m_view == nullptr || m_matches.empty()) {
        return;
    }
    auto next = firstFrom(m_view->textCursor().selectionStart());
    if (forward) {
        next += current() > 0 ? 1 : 0;
        select(next == m_matches.end() ? m_matches.front() : *next);
    } else {
        select(next == m_matches.begin() ? m_matches.back() : *std::prev(next));
    }
}

/// A match that was out of sight comes into the upper part of the view, where what follows can be read.
void PageMatches::select(const Match& match)
{
    QTextCursor cursor(m_view->document());
    cursor.setPosition(match.start);
    const bool isInSight = m_view->viewport()->rect().contains(m_view->cursorRect(cursor));
    cursor.setPosition(match.start + match.length, QTextCursor::KeepAnchor);
    m_view->setTextCursor(cursor);
    if (!isInSight) {
        auto* scroll = m_view->verticalScrollBar();
        scroll->setValue(scroll->value() + m_view->cursorRect(cursor).top() -
                         m_view->viewport()->height() / PartAbove);
    }
}
