// SPDX-License-Identifier: MIT
#include "browser/pageplaces.h"

#include "browser/pageanchors.h"
#include "browser/pagefiller.h"
#include "markup/tags.h"

#include <QScrollBar>
#include <QTextBrowser>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

constexpr int LookedAt = 10; // pixels from the left edge of the view, at which its first line is looked for

} // namespace

int PagePlaces::place() const
{
    return m_view.verticalScrollBar()->value() == 0
               ? 0
               : m_view.cursorForPosition(QPoint(LookedAt, 0)).position();
}

void PagePlaces::setPlace(int place)
{
    // A view that is not laid out yet has no range to scroll in.
    m_pending = m_view.isVisible() ? 0 : place;
    if (place <= 0) {
        m_view.verticalScrollBar()->setValue(0);
        return;
    }
    const auto* document = m_view.document();
    while (place >= document->characterCount() && m_filler.addPart()) {
    }
    QTextCursor cursor(m_view.document());
    cursor.setPosition(std::min(place, document->characterCount() - 1));
    scrollBeyond([this, &cursor] {
        auto* bar = m_view.verticalScrollBar();
        bar->setValue(bar->value() + m_view.cursorRect(cursor).top());
    });
}

void PagePlaces::viewIsShown()
{
    if (const int place = std::exchange(m_pending, 0); place > 0) {
        setPlace(place);
    }
}

int PagePlaces::goTo(const QString& anchor, const QString& html)
{
    for (const auto& name : {anchor, QUrl::fromPercentEncoding(anchor.toUtf8()),
                             QString::fromLatin1(QUrl::toPercentEncoding(anchor))}) {
        if (const int position = find(name, html); position >= 0) {
            scrollBeyond([this, &name] { m_view.scrollToAnchor(name); });
            m_view.horizontalScrollBar()->setValue(0);
            return position;
        }
    }
    m_view.verticalScrollBar()->setValue(0);
    return -1;
}

/// Completes a long page as far as needed.
int PagePlaces::find(const QString& name, const QString& html)
{
    const QString written = QString::fromStdString(attributeText("name", name.toStdString()));
    if (!html.contains(written)) {
        return -1;
    }
    const auto* document = m_view.document();
    int from = 0;
    int found = PageAnchors::find(*document, name, from);
    while (found < 0) {
        from = document->characterCount() - 1;
        if (!m_filler.addPart()) {
            return -1;
        }
        found = PageAnchors::find(*document, name, from);
    }
    return found;
}

/// Calls `scroll`, which goes to a place, until there is as much of a long page below the place as it takes.
void PagePlaces::scrollBeyond(const std::function<void()>& scroll)
{
    const auto* bar = m_view.verticalScrollBar();
    do {
        scroll();
    } while (m_view.isVisible() && bar->value() == bar->maximum() && m_filler.addPart());
}
