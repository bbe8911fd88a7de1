// SPDX-License-Identifier: MIT
#include "mainwindow/helpactions.h"

#include "icons/icons.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("HelpActions", source);
}

QAction* make(QMainWindow& window, const char* name, const char* source, const QKeySequence& shortcut = {})
{
    auto* action = new QAction(text(source), &window);
    action->setObjectName(QLatin1StringView(name));
    action->setShortcut(shortcut);
    return action;
}

QAction* makeGo(QMainWindow& window, const char* name, const char* source, GoIcon icon,
                const QKeySequence& shortcut = {})
{
    auto* action = make(window, name, source, shortcut);
    action->setIcon(goIcon(icon));
    return action;
}

QKeySequence key(const char* sequence)
{
    return {QLatin1StringView(sequence)};
}

} // namespace

HelpActions::HelpActions(QMainWindow& window)
    : fileAddContentsAction(
          make(window, "fileAddContentsAction", QT_TRANSLATE_NOOP("HelpActions", "&Add Contents..."))),
      filePrintAction(make(window, "filePrintAction", QT_TRANSLATE_NOOP("HelpActions", "&Print..."),
                           Qt::CTRL | Qt::Key_P)),
      filePreviewAction(
          make(window, "filePreviewAction", QT_TRANSLATE_NOOP("HelpActions", "Print Pre&view..."))),
      fileExportAction(
          make(window, "fileExportAction", QT_TRANSLATE_NOOP("HelpActions", "Export as P&DF..."))),
      fileExitAction(make(window, "fileExitAction", QT_TRANSLATE_NOOP("HelpActions", "E&xit"))),
      editCopyAction(
          make(window, "editCopyAction", QT_TRANSLATE_NOOP("HelpActions", "&Copy"), Qt::CTRL | Qt::Key_C)),
      editFindAction(
          make(window, "editFindAction", QT_TRANSLATE_NOOP("HelpActions", "&Find..."), Qt::CTRL | Qt::Key_F)),
      editFindNextAction(
          make(window, "editFindNextAction", QT_TRANSLATE_NOOP("HelpActions", "Find &Next"), Qt::Key_F3)),
      editFindPreviousAction(make(window, "editFindPreviousAction",
                                  QT_TRANSLATE_NOOP("HelpActions", "Find &Previous"),
                                  Qt::SHIFT | Qt::Key_F3)),
      editSearchAllAction(make(window, "editSearchAllAction",
                               QT_TRANSLATE_NOOP("HelpActions", "&Search All..."),
                               Qt::CTRL | Qt::SHIFT | Qt::Key_F)),
      viewZoomInAction(make(window, "viewZoomInAction", QT_TRANSLATE_NOOP("HelpActions", "Zoom &In"),
                            Qt::CTRL | Qt::Key_Plus)),
      viewZoomOutAction(make(window, "viewZoomOutAction", QT_TRANSLATE_NOOP("HelpActions", "Zoom &Out"),
                             Qt::CTRL | Qt::Key_Minus)),
      viewZoomResetAction(make(window, "viewZoomResetAction",
                               QT_TRANSLATE_NOOP("HelpActions", "Normal Si&ze"), Qt::CTRL | Qt::Key_0)),
      viewReadingAction(make(window, "viewReadingAction", QT_TRANSLATE_NOOP("HelpActions", "&Reading View"),
                             Qt::CTRL | Qt::SHIFT | Qt::Key_R)),
      viewContentsAction(make(window, "viewContentsAction", QT_TRANSLATE_NOOP("HelpActions", "&Contents"))),
      viewGoToolbarAction(
          make(window, "viewGoToolbarAction", QT_TRANSLATE_NOOP("HelpActions", "Go Toolbar"))),
      viewSettingsAction(make(window, "viewSettingsAction", QT_TRANSLATE_NOOP("HelpActions", "Settings..."))),
      goBackAction(makeGo(window, "goBackAction", QT_TRANSLATE_NOOP("HelpActions", "Back"), GoIcon::Back,
                          key("Alt+Left"))),
      goForwardAction(makeGo(window, "goForwardAction", QT_TRANSLATE_NOOP("HelpActions", "Forward"),
                             GoIcon::Forward, key("Alt+Right"))),
      goUpAction(makeGo(window, "goUpAction", QT_TRANSLATE_NOOP("HelpActions", "Up"), GoIcon::Up)),
      goHomeAction(makeGo(window, "goHomeAction", QT_TRANSLATE_NOOP("HelpActions", "Home"), GoIcon::Home,
                          key("Alt+Up"))),
      goSyncAction(
          makeGo(window, "goSyncAction", QT_TRANSLATE_NOOP("HelpActions", "Synchronize"), GoIcon::Sync)),
      helpManualAction(
          make(window, "helpManualAction", QT_TRANSLATE_NOOP("HelpActions", "Quenda &Manual"), Qt::Key_F1)),
      helpAboutAction(make(window, "helpAboutAction", QT_TRANSLATE_NOOP("HelpActions", "&About Quenda")))
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
