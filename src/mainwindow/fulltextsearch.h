// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchservice.h"
#include "mainwindow/searchmarks.h"

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QTimer>

class BackgroundProgress;
class HelpBrowser;
class HelpLibrary;
class QStatusBar;
class SearchPane;
struct HelpContentsRoot;

/// Searching all help sets: hands those of the library to the search service when they have been shown,
/// brings service and pane together, and marks in the page shown what was found. What it is given must
/// outlive it.
class FullTextSearch : public QObject {
    Q_OBJECT

public:
    FullTextSearch(HelpLibrary& library, SearchPane& pane, HelpBrowser& browser, QStatusBar& statusBar);

    /// Whether help sets are indexed; they are by default.
    void setEnabled(bool isOn) { m_isEnabled = isOn; }

    /// The marks in the page shown.
    [[nodiscard]] SearchMarks& marks() { return m_marks; }
    void cancelIndexing();

Q_SIGNALS:
    /// A page that was found is about to be shown.
    void aboutToShow();

private:
    void connectPane();
    void connectService();
    void handOver();
    void indexAgain();
    void withdraw(const HelpContentsRoot& removed);
    void tellPane();
    void showProblems();
    [[nodiscard]] QStringList problems() const;

    HelpLibrary& m_library;
    SearchPane& m_pane;
    HelpBrowser& m_browser;
    BackgroundProgress* m_progress;
    SearchMarks m_marks;
    SearchService m_service;
    QTimer m_startTimer;
    QMap<QString, QStringList> m_handedOver; ///< problems by absolute paths of contents files
    bool m_isEnabled = true;
    bool m_wasStopped = false;
};
