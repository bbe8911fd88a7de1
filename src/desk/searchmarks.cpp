// SPDX-License-Identifier: MIT
#include "desk/searchmarks.h"

#include "browser/helpbrowser.h"
#include "fulltext/matchranges.h"

#include <QLabel>
#include <QLocale>
#include <QStatusBar>

namespace {

PageMatches::Matcher matcherOf(const QString& query, const QString& language)
{
    return [=](const QString& text) {
        std::vector<PageMatches::Match> matches;
        for (const auto& range : matchRanges(query, text, language)) {
            matches.push_back({int(range.start), int(range.length)});
        }
        return matches;
    };
}

} // namespace

SearchMarks::SearchMarks(HelpBrowser& browser, QStatusBar& statusBar, QObject* parent)
    : QObject(parent), m_browser(browser), m_statusBar(statusBar), m_matches(&browser, nullptr),
      m_count(new QLabel(&statusBar))
{
    m_count->setObjectName(u"searchCount");
    m_count->setToolTip(
        tr("F3 goes to the next place, Shift+F3 to the one before, Esc takes the marks away"));
    m_count->hide();
    statusBar.addPermanentWidget(m_count);
    m_refreshTimer.setSingleShot(true);
    m_refreshTimer.setInterval(0);
    connect(&m_refreshTimer, &QTimer::timeout, this, &SearchMarks::search);
    connect(&m_matches, &PageMatches::counted, this, &SearchMarks::counted);
    connect(&browser, &QTextEdit::selectionChanged, this, &SearchMarks::showCount);
    connect(&browser, &PageView::pageChanged, this, &SearchMarks::pageChanged);
    // The text of one page is set anew when its looks change, and grows until all of a long page is there.
    connect(&browser, &QTextEdit::textChanged, this, [this] {
        if (isOn() && !m_browser.isFilling()) {
            m_refreshTimer.start();
        }
    });
}

void SearchMarks::mark(const QString& query, const QString& language)
{
    clear();
    m_file = m_browser.page().file;
    if (m_file.isEmpty()) {
        return; // the page says why there is nothing to show
    }
    m_query = query;
    m_language = language;
    m_start = m_browser.place();
    search();
}

void SearchMarks::search()
{
    m_refreshTimer.stop();
    m_matches.search(matcherOf(m_query, m_language));
}

void SearchMarks::counted()
{
    if (m_start >= 0 && m_matches.count() > 0) {
        QTextCursor cursor(m_browser.document());
        cursor.setPosition(m_start);
        m_browser.setTextCursor(cursor);
        m_start = -1;
        m_matches.step(true);
        Q_EMIT arrived(m_browser.textCursor().selectionStart());
    }
    showCount();
}

void SearchMarks::step(bool forward)
{
    m_matches.step(forward);
}

void SearchMarks::clear()
{
    if (m_matches.current() > 0) {
        QTextCursor cursor = m_browser.textCursor();
        cursor.setPosition(cursor.selectionStart());
        m_browser.setTextCursor(cursor);
    }
    m_query = QString();
    m_refreshTimer.stop();
    m_matches.clear();
    m_count->hide();
}

void SearchMarks::pageChanged()
{
    if (isOn() && m_browser.page().file != m_file) {
        clear();
    }
}

void SearchMarks::showCount()
{
    if (!isOn() || m_refreshTimer.isActive() || m_matches.isSearching() || m_browser.isFilling()) {
        return;
    }
    const QLocale locale;
    const QString count = (m_matches.isCapped() ? tr("more than %1") : QStringLiteral("%1"))
                              .arg(locale.toString(m_matches.count()));
    if (m_matches.count() == 0) {
        m_count->setText(m_browser.page().prepared.isBeginning
                             ? tr("Further down on this page")
                             : tr("Only in the title or keywords of this page"));
    } else if (const int current = m_matches.current(); current > 0) {
        m_count->setText(tr("%1 of %2 on this page").arg(locale.toString(current), count));
    } else {
        m_count->setText(tr("%1 on this page").arg(count));
    }
    m_count->show();
}
