// SPDX-License-Identifier: MIT
#include "browser/pagefiller.h"

#include <QTextCursor>
#include <QTextDocument>

#include <utility>

namespace {

constexpr int Pause = 5; // ms between parts, for input and painting

} // namespace

PageFiller::PageFiller(QTextDocument& document) : m_document(document)
{
    m_timer.setInterval(Pause);
    connect(&m_timer, &QTimer::timeout, this, &PageFiller::addPart);
}

QString PageFiller::begin(const PreparedPage& page)
{
    m_timer.stop();
    m_html = page.html;
    m_ends = page.joints;
    m_ends.push_back(m_html.size());
    m_begin = 0;
    m_next = 1;
    return takeUntil(m_ends.front());
}

void PageFiller::goOn()
{
    if (!isComplete() && !m_timer.isActive()) {
        m_timer.start();
    }
}

bool PageFiller::addPart()
{
    const bool isLeft = !isComplete();
    if (isLeft) {
        append(takeUntil(m_ends[m_next++]));
    }
    if (isComplete()) {
        m_timer.stop();
        m_html.clear();
    }
    return isLeft;
}

void PageFiller::complete()
{
    if (!isComplete()) {
        m_next = m_ends.size() - 1;
        addPart();
    }
}

qsizetype PageFiller::stop(const QString& html)
{
    m_timer.stop();
    m_html.clear();
    m_next = m_ends.size();
    append(html);
    return m_begin;
}

QString PageFiller::takeUntil(qsizetype end)
{
    const qsizetype begin = std::exchange(m_begin, end);
    return m_html.sliced(begin, end - begin);
}

/// The first block of inserted HTML becomes part of the last one that is there, without its own format; hence
/// one for that purpose.
void PageFiller::append(const QString& html)
{
    QTextCursor cursor(&m_document);
    cursor.movePosition(QTextCursor::End);
    const int position = cursor.position();
    cursor.beginEditBlock();
    cursor.insertHtml(QStringLiteral("<div>&#8203;</div>") + html);
    cursor.setPosition(position);
    cursor.deleteChar();
    Q_EMIT partAdded(position);
    cursor.endEditBlock();
}
