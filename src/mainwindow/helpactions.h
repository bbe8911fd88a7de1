// SPDX-License-Identifier: MIT
#pragma once

#include "desk/deskcommands.h"

#include <QCoreApplication>
#include <QList>

class QAction;
class QMainWindow;

/// All commands of the main window, which owns them: those of the desk, and those that the window carries out
/// itself.
struct HelpActions {
    Q_DECLARE_TR_FUNCTIONS(HelpActions)

public:
    HelpActions(Desk& desk, QMainWindow& window);

    /// Back, Forward, Up, Home, Synchronize.
    [[nodiscard]] QList<QAction*> goActions() const;

    DeskCommands page;
    QAction* fileAddContentsAction;
    QAction* fileMachineAction;
    QAction* fileUndoRemoveAction;
    QAction* filePrintAction;
    QAction* filePreviewAction;
    QAction* fileExportAction;
    QAction* fileExitAction;
    QAction* editSearchAllAction;
    QAction* viewGroupAction;
    QAction* viewFollowAction;
    QAction* viewOutlineAction;
    QAction* viewContentsAction;
    QAction* viewGoToolbarAction;
    QAction* viewFullScreenAction;
    QAction* viewSettingsAction;
    QAction* goUpAction;
    QAction* goSyncAction;
    QAction* goLibraryAction;
    QAction* goJumpAction;
    QAction* helpManualAction;
    QAction* helpAboutAction;
};
