// SPDX-License-Identifier: MIT
#pragma once

#include "library/helplibrary.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <chrono>
#include <deque>
#include <functional>
#include <vector>

class Desk;
class HelpContents;
struct MainMenus;

/// Loads and removes contents files and keeps the two submenus of help sets in step. Files are read in the
/// background, one after another; what is ready soon is shown before a call returns. A page is shown only if
/// the user has not gone to another one since it was asked for. What it is given must outlive it.
class ContentsFiles : public QObject {
    Q_OBJECT

public:
    using Step = std::function<void()>;

    ContentsFiles(HelpLibrary& library, HelpContents& pane, Desk& desk, const MainMenus& menus,
                  QObject* parent);
    ~ContentsFiles() override;

    /// See the services of HelpMainWindow of the same names.
    std::optional<HelpLibrary::Refusal> insertContents(const QString& named);
    void removeContents(int menuId);
    /// Brings the help set that was removed last back to its place, and its page if that was shown.
    void undoRemove();
    [[nodiscard]] bool canUndoRemove() const { return !m_removed.empty(); }
    /// The same for the viewer's own manual, which is not stored as open; false when it is not installed.
    bool showManual(const std::function<void(HelpContentsItem*)>& show);
    void loadDefault();
    /// Shows something of the first record of the contents file of exactly this name, which is loaded when it
    /// is not; `show` is not called when it cannot be.
    void showWhenLoaded(const QString& named, const std::function<void(HelpContentsItem*)>& show);
    /// Shows something else after all that is to be loaded.
    void showAfterLoading(const Step& show);
    /// Gives up all that is not loaded yet.
    void cancel();
    /// The files that are still to be loaded.
    [[nodiscard]] const QStringList& pendingFiles() const { return m_pendingFiles; }
    /// Files that were open last and cannot be opened now, though they may be there.
    [[nodiscard]] const QStringList& absentFiles() const { return m_absentFiles; }
    /// Absolute names of the contents files to be opened at the next start, in load order.
    [[nodiscard]] QStringList filesToStore() const;
    /// Absolute names of the contents files that have been opened in this run, the latest first.
    [[nodiscard]] const QStringList& openedFiles() const { return m_openedFiles; }
    /// No longer counts this file among them, or none when the name is empty.
    void forgetOpened(const QString& fileName);
    [[nodiscard]] bool wasAnyOpened() const { return m_wasAnyOpened; }

Q_SIGNALS:
    /// There is something to bring back, or nothing any more.
    void removedChanged(bool canUndo);

public:
    /// A sentence for people.
    [[nodiscard]] static QString describe(const QString& fileName, const HelpLibrary::Refusal& refusal);

    /// Fills the submenu of installed help sets from the store, anew when it is filled.
    void buildInstalledMenu();
    /// Empty for an id that no entry has.
    [[nodiscard]] QString installedFile(int menuId) const { return m_installed.value(menuId); }

private:
    void add(const Step& step);
    void proceed();
    void waitBriefly();
    void load(const QString& fileName, int moves, bool isReported, const HelpLibrary::CurrentRow& current);
    void remember(const HelpContentsRoot& root);
    [[nodiscard]] const HelpContentsListViewItem* lastRowOf(const QString& fileName) const;
    void adopt(const HelpLibrary::Loaded& loaded, int moves, bool isReported);
    void reportLimit(const QString& fileName, const QString& reason);
    [[nodiscard]] int userMoves();
    /// Only if the user has not moved since there were so many moves.
    void show(const Step& step, int moves);

    /// A help set that was removed.
    struct Removed {
        QString fileName;
        QString behind; ///< the contents file of the help set before it in the tree; empty for none
        QString page;   ///< empty when its page was not shown
        int place = 0;
    };

    HelpLibrary& m_library;
    HelpContents& m_pane;
    Desk& m_desk;
    const MainMenus& m_menus;
    QHash<int, QString> m_installed; ///< file names by the ids of their menu entries
    QStringList m_installedFiles;    ///< in menu order
    std::deque<Step> m_steps;        ///< to be done when no file is being loaded
    QStringList m_pendingFiles;
    QStringList m_absentFiles;
    QStringList m_openedFiles;
    QString m_manual;               ///< contents file of the manual, once it has been asked for
    std::vector<Removed> m_removed; ///< the last one is the last
    bool m_isDefault = false;       ///< what is opened was not asked for by name
    bool m_wasAnyOpened = false;
    bool m_isLoading = false;
    const HelpContentsItem* m_shown = nullptr; ///< record of the page shown when it was last looked at
    int m_userMoves = 0;
    std::chrono::milliseconds m_patience; ///< for waiting before the event loop turns
};
