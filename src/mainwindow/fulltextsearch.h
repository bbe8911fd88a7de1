// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchservice.h"

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QTimer>

class BackgroundProgress;
class Desk;
class HelpLibrary;
class QStatusBar;
class SearchPane;
struct HelpContentsRoot;

/// Searching all help sets: hands those of the library to the search service when they have been shown,
/// and brings service and pane together. What it is given must outlive it.
class FullTextSearch : public QObject {
    Q_OBJECT

public:
    FullTextSearch(HelpLibrary& library, SearchPane& pane, Desk& desk, QStatusBar& statusBar);

    /// Whether help sets are indexed; they are by default.
    void setEnabled(bool isOn) { m_isEnabled = isOn; }

    void cancelIndexing();

Q_SIGNALS:
    /// All pages of the help set of this contents file can be searched.
    void indexed(const QString& contentsFile);

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
    Desk& m_desk;
    BackgroundProgress* m_progress;
    SearchService m_service;
    QTimer m_startTimer;
    QMap<QString, QStringList> m_handedOver; ///< problems by absolute paths of contents files
    bool m_isEnabled = true;
    bool m_wasStopped = false;
};
