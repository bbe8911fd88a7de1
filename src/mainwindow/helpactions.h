// SPDX-License-Identifier: MIT
#pragma once

class QAction;
class QMainWindow;

/// The commands of the main window, which owns them.
struct HelpActions {
    explicit HelpActions(QMainWindow& window);

    QAction* fileAddContentsAction;
    QAction* filePrintAction;
    QAction* fileExitAction;
    QAction* editCopyAction;
    QAction* editFindAction;
    QAction* viewZoomInAction;
    QAction* viewZoomOutAction;
    QAction* viewContentsAction;
    QAction* viewGoToolbarAction;
    QAction* viewSettingsAction;
    QAction* goBackAction;
    QAction* goForwardAction;
    QAction* goUpAction;
    QAction* goHomeAction;
    QAction* goSyncAction;
    QAction* helpManualAction;
    QAction* helpAboutAction;
};
