// SPDX-License-Identifier: MIT
#include "mainwindow/contentsfiles.h"

#include "contents/helpcontents.h"
#include "library/helplibrary.h"
#include "library/installedcontents.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/mainmenus.h"
#include "mainwindow/malformedfiles.h"
#include "mainwindow/windowsettings.h"

#include <algorithm>
#include <utility>

ContentsFiles::ContentsFiles(HelpLibrary& library, HelpContents& pane, const MainMenus& menus,
                             QObject* parent)
    : QObject(parent), m_library(library), m_pane(pane), m_menus(menus)
{
}

void ContentsFiles::insertContents(const QString& fileName)
{
    if (!HelpLibrary::isFile(fileName)) {
        return;
    }
    const auto loaded = m_library.loadContents(fileName, m_pane.currentRow());
    loaded.root->menuId = m_menus.removeMenu->addEntry(HelpLibrary::getTitle(fileName));
    if (loaded.firstPage != nullptr) {
        m_pane.gotoPage(loaded.firstPage);
    }
    m_library.buildIndex();
    reportMalformedFiles(loaded.malformedFiles, &m_pane);
}

void ContentsFiles::removeContents(int menuId)
{
    const auto roots = m_library.roots();
    const auto root = std::find_if(roots.begin(), roots.end(),
                                   [menuId](const auto* candidate) { return candidate->menuId == menuId; });
    if (root == roots.end()) {
        return;
    }
    m_library.removeContents(*root);
    m_pane.gotoFirstPage();
    m_menus.removeMenu->removeEntry(menuId);
}

void ContentsFiles::loadDefault()
{
    for (const auto& fileName : InstalledContents::sortingCntList(WindowSettings::loadContents())) {
        insertContents(fileName);
    }
    if (m_library.isEmpty()) {
        for (const auto& fileName : std::as_const(m_installedFiles)) {
            insertContents(fileName);
        }
    }
    m_pane.gotoFirstPage();
}

HelpContentsItem* ContentsFiles::ensureLoaded(const QString& fileName)
{
    if (m_library.getContentsByFileName(fileName) == nullptr) {
        insertContents(fileName);
    }
    return m_library.getContentsByFileName(fileName);
}

void ContentsFiles::buildInstalledMenu()
{
    m_installedFiles = InstalledContents::dropVanishedContents();
    for (const auto& fileName : std::as_const(m_installedFiles)) {
        m_installed.insert(m_menus.installedMenu->addEntry(HelpLibrary::getTitle(fileName)), fileName);
    }
}
