// SPDX-License-Identifier: MIT
#pragma once

#include "desk/librarypage.h"
#include "library/backgroundtasks.h"
#include "mainwindow/wish.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

class ContentsFiles;
class HelpLibrary;
class HelpSetMenu;
struct HelpContentsRoot;
struct SetFacts;

/// Fills the library page, looks at help sets that are not open in the background, and turns what the user
/// wants there into wishes. What it is given must outlive it.
class LibraryKeeper : public QObject {
    Q_OBJECT

public:
    LibraryKeeper(HelpLibrary& library, ContentsFiles& files, HelpSetMenu& recentMenu, QObject* parent);

    /// Fills the page, now and whenever something changes.
    void keep(LibraryPage* page);
    /// Something that could not be opened, for the page to say.
    void addNotice(const QString& notice);
    /// All pages of this help set can be searched.
    void noteIndexed(const QString& contentsFile);
    /// Fills the submenu of what was open before.
    void fillRecentMenu();
    /// Contents files that were opened before and are not open now, the latest first.
    [[nodiscard]] QStringList closedBefore() const;
    /// What was open together when the viewer was closed last, or before that; empty for nothing else than
    /// what is open.
    [[nodiscard]] QStringList lastSession() const;

Q_SIGNALS:
    void wished(const Wish& wish);
    void addRequested();
    void machineRequested();
    void manualRequested();
    void removeRequested(int menuId);
    /// The installed contents list is another one.
    void installedChanged();

private:
    void connectPage(LibraryPage& page);
    void fill();
    [[nodiscard]] std::vector<LibraryEntry> openEntries();
    [[nodiscard]] LibraryEntry openEntry(const HelpContentsRoot& root);
    [[nodiscard]] LibraryEntry entryOf(LibraryEntry::Kind kind, const QString& fileName);
    void examine(const QString& fileName);
    void install(const QString& fileName, bool isInstalled);
    void remove(LibraryEntry::Kind kind, const QString& fileName);
    [[nodiscard]] static QString stateOf(const SetFacts& facts, bool isIndexed);

    HelpLibrary& m_library;
    ContentsFiles& m_files;
    HelpSetMenu& m_recentMenu;
    QHash<int, QString> m_recent; ///< contents files by the ids of their entries
    QPointer<LibraryPage> m_page;
    QStringList m_notices;
    QHash<QString, LibraryEntry> m_known; ///< by contents file
    QSet<QString> m_indexed;              ///< contents files of help sets that were indexed in this run
    BackgroundTasks m_looking{BackgroundTasks::Priority::Low};
};
