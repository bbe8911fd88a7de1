// SPDX-License-Identifier: MIT
#include "mainwindow/helpactions.h"

#include "icons/icons.h"

#include <QAction>
#include <QMainWindow>

namespace {

QAction* make(QMainWindow& window, const char* name, const QString& text, const QKeySequence& shortcut = {})
{
    auto* action = new QAction(text, &window);
    action->setObjectName(QLatin1StringView(name));
    action->setShortcut(shortcut);
    return action;
}

QAction* makeGo(QMainWindow& window, const char* name, const QString& text, GoIcon icon,
                const QKeySequence& shortcut = {})
{
    auto* action = make(window, name, text, shortcut);
    action->setIcon(goIcon(icon));
    return action;
}

QKeySequence key(const char* sequence)
{
    return {QLatin1StringView(sequence)};
}

} // namespace

HelpActions::HelpActions(QMainWindow& window)
    : fileAddContentsAction(make(window, "fileAddContentsAction", tr("&Add Contents..."))),
      filePrintAction(make(window, "filePrintAction", tr("&Print..."), Qt::CTRL | Qt::Key_P)),
      filePreviewAction(make(window, "filePreviewAction", tr("Print Pre&view..."))),
      fileExportAction(make(window, "fileExportAction", tr("Export as P&DF..."))),
      fileExitAction(make(window, "fileExitAction", tr("E&xit"))),
      editCopyAction(make(window, "editCopyAction", tr("&Copy"), Qt::CTRL | Qt::Key_C)),
      editFindAction(make(window, "editFindAction", tr("&Find..."), Qt::CTRL | Qt::Key_F)),
      editFindNextAction(make(window, "editFindNextAction", tr("Find &Next"), Qt::Key_F3)),
      editFindPreviousAction(
          make(window, "editFindPreviousAction", tr("Find &Previous"), Qt::SHIFT | Qt::Key_F3)),
      editSearchAllAction(
          make(window, "editSearchAllAction", tr("&Search All..."), Qt::CTRL | Qt::SHIFT | Qt::Key_F)),
      viewZoomInAction(make(window, "viewZoomInAction", tr("Zoom &In"), Qt::CTRL | Qt::Key_Plus)),
      viewZoomOutAction(make(window, "viewZoomOutAction", tr("Zoom &Out"), Qt::CTRL | Qt::Key_Minus)),
      viewZoomResetAction(make(window, "viewZoomResetAction", tr("Normal Si&ze"), Qt::CTRL | Qt::Key_0)),
      viewReadingAction(
          make(window, "viewReadingAction", tr("&Reading View"), Qt::CTRL | Qt::SHIFT | Qt::Key_R)),
      viewContentsAction(make(window, "viewContentsAction", tr("&Contents"))),
      viewGoToolbarAction(make(window, "viewGoToolbarAction", tr("Go Toolbar"))),
      viewSettingsAction(make(window, "viewSettingsAction", tr("Settings..."))),
      goBackAction(makeGo(window, "goBackAction", tr("Back"), GoIcon::Back, key("Alt+Left"))),
      goForwardAction(makeGo(window, "goForwardAction", tr("Forward"), GoIcon::Forward, key("Alt+Right"))),
      goUpAction(makeGo(window, "goUpAction", tr("Up"), GoIcon::Up)),
      goHomeAction(makeGo(window, "goHomeAction", tr("Home"), GoIcon::Home, key("Alt+Up"))),
      goSyncAction(makeGo(window, "goSyncAction", tr("Synchronize"), GoIcon::Sync)),
      helpManualAction(make(window, "helpManualAction", tr("Quenda &Manual"), Qt::Key_F1)),
      helpAboutAction(make(window, "helpAboutAction", tr("&About Quenda")))
{
    viewReadingAction->setCheckable(true);
    viewContentsAction->setCheckable(true);
    viewGoToolbarAction->setCheckable(true);
    // On most keyboards the plus sign needs Shift, the equals sign beside it does not.
    viewZoomInAction->setShortcuts({Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal});
}

QList<QAction*> HelpActions::pageActions() const
{
    return {filePrintAction,   filePreviewAction,  fileExportAction,       editCopyAction,
            editFindAction,    editFindNextAction, editFindPreviousAction, viewZoomInAction,
            viewZoomOutAction, viewZoomResetAction};
}

QList<QAction*> HelpActions::goActions() const
{
    return {goBackAction, goForwardAction, goUpAction, goHomeAction, goSyncAction};
}
