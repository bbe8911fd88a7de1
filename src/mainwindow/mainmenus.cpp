// SPDX-License-Identifier: MIT
#include "mainwindow/mainmenus.h"

#include "mainwindow/helpactions.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/outlinemenu.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>

namespace {

HelpSetMenu* makeHelpSetMenu(QMenuBar& bar, const char* name, const QString& title)
{
    auto* menu = new HelpSetMenu(title, &bar);
    menu->setObjectName(QLatin1StringView(name));
    return menu;
}

} // namespace

MainMenus::MainMenus(QMenuBar& bar, const HelpActions& actions)
    : removeMenu(makeHelpSetMenu(bar, "removeMenu", tr("&Remove Contents"))),
      installedMenu(makeHelpSetMenu(bar, "installedMenu", tr("&Installed Contents"))),
      recentMenu(makeHelpSetMenu(bar, "recentMenu", tr("Re&cent"))), fileMenu(bar.addMenu(tr("&File"))),
      outlineMenu(new OutlineMenu(tr("&On This Page"), &bar))
{
    fileMenu->addActions({actions.fileAddContentsAction, actions.fileMachineAction});
    fileMenu->addMenu(removeMenu);
    fileMenu->addAction(actions.fileUndoRemoveAction);
    fileMenu->addSeparator();
    fileMenu->addMenu(installedMenu);
    fileMenu->addMenu(recentMenu);
    fileMenu->addSeparator();
    fileMenu->addActions({actions.filePrintAction, actions.filePreviewAction, actions.fileExportAction});
    fileMenu->addSeparator();
    fileMenu->addAction(actions.fileExitAction);

    const auto& page = actions.page;
    auto* editMenu = bar.addMenu(tr("&Edit"));
    editMenu->addActions({page.editCopyAction, page.editFindAction, page.editFindLineAction,
                          page.editFindNextAction, page.editFindPreviousAction});
    editMenu->addSeparator();
    editMenu->addAction(actions.editSearchAllAction);

    auto* viewMenu = bar.addMenu(tr("&View"));
    viewMenu->addActions({page.viewZoomInAction, page.viewZoomOutAction, page.viewZoomResetAction});
    viewMenu->addActions({page.viewReadingAction, page.viewReloadAction});
    viewMenu->addSeparator();
    viewMenu->addActions({actions.viewGroupAction, actions.viewFollowAction});
    viewMenu->addSeparator();
    viewMenu->addActions({actions.viewContentsAction, actions.viewOutlineAction, actions.viewGoToolbarAction,
                          actions.viewFullScreenAction});
    viewMenu->addSeparator();
    viewMenu->addAction(actions.viewSettingsAction);

    auto* goMenu = bar.addMenu(tr("&Go"));
    goMenu->addActions(actions.goActions());
    goMenu->addSeparator();
    goMenu->addAction(actions.goJumpAction);
    goMenu->addMenu(outlineMenu);
    goMenu->addAction(actions.goLibraryAction);

    auto* helpMenu = bar.addMenu(tr("&Help"));
    helpMenu->addActions({actions.helpManualAction, actions.helpAboutAction});
}

QToolBar* makeGoToolBar(QMainWindow& window, const HelpActions& actions)
{
    constexpr QSize iconSize(16, 16);
    auto* toolBar = window.addToolBar(MainMenus::tr("Go"));
    toolBar->setObjectName(QStringLiteral("goToolBar"));
    toolBar->setIconSize(iconSize);
    toolBar->addActions(actions.goActions());
    toolBar->addAction(actions.goLibraryAction);
    return toolBar;
}
