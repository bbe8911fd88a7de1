// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

class HelpContents;
class HelpLibrary;
struct HelpContentsItem;
struct MainMenus;

/// Loads and removes contents files and keeps the two submenus of help sets in step. What it is given must
/// outlive it.
class ContentsFiles : public QObject {
    Q_OBJECT

public:
    ContentsFiles(HelpLibrary& library, HelpContents& pane, const MainMenus& menus, QObject* parent);

    /// See the services of HelpMainWindow of the same names.
    void insertContents(const QString& fileName);
    void removeContents(int menuId);
    void loadDefault();
    /// First record of the contents file of exactly this name, which is loaded when it is not; null when it
    /// cannot be.
    [[nodiscard]] HelpContentsItem* ensureLoaded(const QString& fileName);

    /// Fills the submenu of installed help sets from the store.
    void buildInstalledMenu();
    /// Empty for an id that no entry has.
    [[nodiscard]] QString installedFile(int menuId) const { return m_installed.value(menuId); }

private:
    HelpLibrary& m_library;
    HelpContents& m_pane;
    const MainMenus& m_menus;
    QHash<int, QString> m_installed; ///< file names by the ids of their menu entries
    QStringList m_installedFiles;    ///< in menu order
};
