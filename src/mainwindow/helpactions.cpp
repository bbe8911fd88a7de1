// SPDX-License-Identifier: MIT
#include "mainwindow/helpactions.h"

#include "icons/icons.h"

#include <QAction>
#include <QMainWindow>

HelpActions::HelpActions(Desk& desk, QMainWindow& window)
    : page(desk, window), fileAddContentsAction(makeCommand(window, "fileAddContentsAction",
                                                            tr("&Add Contents..."), Qt::CTRL | Qt::Key_O)),
      fileMachineAction(makeCommand(window, "fileMachineAction", tr("Documentation on This &Machine..."))),
      fileUndoRemoveAction(makeCommand(window, "fileUndoRemoveAction", tr("&Undo Remove"))),
      filePrintAction(makeCommand(window, "filePrintAction", tr("&Print..."), Qt::CTRL | Qt::Key_P)),
      filePreviewAction(makeCommand(window, "filePreviewAction", tr("Print Pre&view..."))),
      fileExportAction(makeCommand(window, "fileExportAction", tr("Export as P&DF..."))),
      fileExitAction(makeCommand(window, "fileExitAction", tr("E&xit"), Qt::CTRL | Qt::Key_Q)),
      editSearchAllAction(
          makeCommand(window, "editSearchAllAction", tr("&Search All..."), Qt::CTRL | Qt::SHIFT | Qt::Key_F)),
      viewGroupAction(makeCommand(window, "viewGroupAction", tr("&Group by Help Set"))),
      viewFollowAction(makeCommand(window, "viewFollowAction", tr("Follow &Page"))),
      viewOutlineAction(makeCommand(window, "viewOutlineAction", tr("O&n This Page"))),
      viewContentsAction(makeCommand(window, "viewContentsAction", tr("&Contents"))),
      viewGoToolbarAction(makeCommand(window, "viewGoToolbarAction", tr("Go &Toolbar"))),
      viewFullScreenAction(makeCommand(window, "viewFullScreenAction", tr("F&ull Screen"), Qt::Key_F11)),
      viewSettingsAction(makeCommand(window, "viewSettingsAction", tr("&Settings..."))),
      goUpAction(makeCommand(window, "goUpAction", tr("&Up"))),
      goSyncAction(makeCommand(window, "goSyncAction", tr("&Synchronize"))),
      goLibraryAction(makeCommand(window, "goLibraryAction", tr("&Library"), Qt::CTRL | Qt::Key_L)),
      goJumpAction(makeCommand(window, "goJumpAction", tr("&Jump..."), Qt::CTRL | Qt::Key_K)),
      helpManualAction(makeCommand(window, "helpManualAction", tr("Quenda &Manual"), Qt::Key_F1)),
      helpAboutAction(makeCommand(window, "helpAboutAction", tr("&About Quenda")))
{
    fileUndoRemoveAction->setEnabled(false);
    viewGroupAction->setCheckable(true);
    viewGroupAction->setChecked(true);
    viewFollowAction->setCheckable(true);
    viewFollowAction->setChecked(true);
    viewOutlineAction->setCheckable(true);
    viewContentsAction->setCheckable(true);
    viewGoToolbarAction->setCheckable(true);
    viewFullScreenAction->setCheckable(true);
    page.goBackAction->setIcon(goIcon(GoIcon::Back));
    page.goForwardAction->setIcon(goIcon(GoIcon::Forward));
    goUpAction->setIcon(goIcon(GoIcon::Up));
    page.goHomeAction->setIcon(goIcon(GoIcon::Home));
    goLibraryAction->setIcon(bookIcon(BookIcon::Close));
    goSyncAction->setIcon(goIcon(GoIcon::Sync));
    for (auto* action : {filePrintAction, filePreviewAction, fileExportAction}) {
        page.need(Desk::Condition::Page, action);
    }
    page.need(Desk::Condition::Up, goUpAction);
    page.need(Desk::Condition::Row, goSyncAction);
}

QList<QAction*> HelpActions::goActions() const
{
    return {page.goBackAction, page.goForwardAction, goUpAction, page.goHomeAction, goSyncAction};
}
