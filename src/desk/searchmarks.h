// SPDX-License-Identifier: MIT
#pragma once

#include "browser/pagematches.h"

#include <QObject>
#include <QTimer>

class HelpBrowser;
class QLabel;
class QStatusBar;

/// Marks in the page shown what a full-text search found, until the user takes the marks away or another page
/// comes, and counts them in the status bar. What it is given must outlive it.
class SearchMarks : public QObject {
    Q_OBJECT

public:
    SearchMarks(HelpBrowser& browser, QStatusBar& statusBar, QObject* parent);

    /// Marks what `query` finds in the page shown and goes to the first place at or behind the top of the
    /// view. Word forms of the language count as the same.
    void mark(const QString& query, const QString& language);
    [[nodiscard]] bool isOn() const { return !m_query.isNull(); }
    /// Goes to the next place or the one before; at the end, from the other end.
    void step(bool forward);
    void clear();

Q_SIGNALS:
    /// The first place, at this position of the text, has been gone to.
    void arrived(int position);

private:
    void search();
    void counted();
    void pageChanged();
    void showCount();

    HelpBrowser& m_browser;
    QStatusBar& m_statusBar;
    PageMatches m_matches;
    QLabel* m_count;
    QString m_query; ///< null while nothing is marked
    QString m_language;
    QString m_file;        ///< of the page marked
    int m_start = -1;      ///< where the first place is looked for; -1 when the user has been taken there
    QTimer m_refreshTimer; ///< the page's text has changed
};
