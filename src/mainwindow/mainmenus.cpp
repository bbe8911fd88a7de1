// SPDX-License-Identifier: MIT
#include "mainwindow/mainmenus.h"

#include "mainwindow/helpactions.h"
#include "mainwindow/helpsetmenu.h"
#include "mainwindow/outlinemenu.h"

#include <QCoreApplication>
#include <QMenuBar>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("MainMenus", source);
}

HelpSetMenu* makeHelpSetMenu(QMenuBar& bar, const char* name, const char* title)
{
    auto* menu = new HelpSetMenu(text(title), &bar);
    menu->setObjectName(QLatin1StringView(name));
    return menu;
}

} // namespace

MainMenus::MainMenus(QMenuBar& bar, const HelpActions& actions)
    : removeMenu(makeHelpSetMenu(bar, "removeMenu", QT_TRANSLATE_NOOP("MainMenus", "&Remove Contents"))),
      installedMenu(
          makeHelpSetMenu(bar, "installedMenu", QT_TRANSLATE_NOOP("MainMenus", "&Installed Contents"))),
      outlineMenu(new OutlineMenu(text(QT_TRANSLATE_NOOP("MainMenus", "&On This Page")), &bar))
{
    auto* fileMenu = bar.addMenu(text(QT_TRANSLATE_NOOP("MainMenus", "&File")));
    fileMenu->addAction(actions.fileAddContentsAction);
    fileMenu->addMenu(removeMenu);
    fileMenu->addSeparator();
    fileMenu->addMenu(installedMenu);
    fileMenu->addSeparator();
    fileMenu->addActions({actions.filePrintAction, actions.filePreviewAction, actions.fileExportAction});
    fileMenu->addSeparator();
    fileMenu->addAction(actions.fileExitAction);

    auto* editMenu = bar.addMenu(text(QT_TRANSLATE_NOOP("MainMenus", "&Edit")));
    editMenu->addActions({actions.editCopyAction, actions.editFindAction, actions.editFindNextAction,
                          actions.editFindPreviousAction});
    editMenu->addSeparator();
    editMenu->addAction(actions.editSearchAllAction);

    auto* viewMenu = bar.addMenu(text(QT_TRANSLATE_NOOP("MainMenus", "&View")));
    viewMenu->addActions({actions.viewZoomInAction, actions.viewZoomOutAction, actions.viewZoomResetAction});
    viewMenu->addAction(actions.viewReadingAction);
    viewMenu->addSeparator();
    viewMenu->addActions({actions.viewContentsAction, actions.viewGoToolbarAction});
    viewMenu->addSeparator();
    viewMenu->addAction(actions.viewSettingsAction);

    auto* goMenu = bar.addMenu(text(QT_TRANSLATE_NOOP("MainMenus", "&Go")));
    goMenu->addActions(actions.goActions());
    goMenu->addSeparator();
    goMenu->addMenu(outlineMenu);

    auto* helpMenu = bar.addMenu(text(QT_TRANSLATE_NOOP("MainMenus", "&Help")));
    helpMenu->addActions({actions.helpManualAction, actions.helpAboutAction});
}
