// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QList>

class QAction;
class QMainWindow;

/// The commands of the main window, which owns them.
struct HelpActions {
    Q_DECLARE_TR_FUNCTIONS(HelpActions)

public:
    explicit HelpActions(QMainWindow& window);

    /// The commands that need a page to act on.
    [[nodiscard]] QList<QAction*> pageActions() const;
    /// Back, Forward, Up, Home, Synchronize.
    [[nodiscard]] QList<QAction*> goActions() const;

    QAction* fileAddContentsAction;
    QAction* filePrintAction;
    QAction* filePreviewAction;
    QAction* fileExportAction;
    QAction* fileExitAction;
    QAction* editCopyAction;
    QAction* editFindAction;
    QAction* editFindNextAction;
    QAction* editFindPreviousAction;
    QAction* editSearchAllAction;
    QAction* viewZoomInAction;
    QAction* viewZoomOutAction;
    QAction* viewZoomResetAction;
    QAction* viewReadingAction;
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
