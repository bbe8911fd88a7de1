// SPDX-License-Identifier: MIT
#include "desk/deskcommands.h"

#include "browser/helpbrowser.h"

#include <QAction>

#include <utility>

QAction* makeCommand(QWidget& window, const char* name, const QString& text, const QKeySequence& shortcut)
{
    auto* action = new QAction(text, &window);
    action->setObjectName(QLatin1StringView(name));
    action->setShortcut(shortcut);
    return action;
}

DeskCommands::DeskCommands(Desk& desk, QWidget& window)
    : editCopyAction(makeCommand(window, "editCopyAction", tr("&Copy"), Qt::CTRL | Qt::Key_C)),
      editFindAction(makeCommand(window, "editFindAction", tr("&Find..."), Qt::CTRL | Qt::Key_F)),
      editFindLineAction(makeCommand(window, "editFindLineAction", tr("Find in &Line"))),
      editFindNextAction(makeCommand(window, "editFindNextAction", tr("Find &Next"), Qt::Key_F3)),
      editFindPreviousAction(
          makeCommand(window, "editFindPreviousAction", tr("Find &Previous"), Qt::SHIFT | Qt::Key_F3)),
      viewZoomInAction(makeCommand(window, "viewZoomInAction", tr("Zoom &In"))),
      viewZoomOutAction(makeCommand(window, "viewZoomOutAction", tr("Zoom &Out"), Qt::CTRL | Qt::Key_Minus)),
      viewZoomResetAction(
          makeCommand(window, "viewZoomResetAction", tr("Normal Si&ze"), Qt::CTRL | Qt::Key_0)),
      viewReadingAction(
          makeCommand(window, "viewReadingAction", tr("&Reading View"), Qt::CTRL | Qt::SHIFT | Qt::Key_R)),
      viewReloadAction(makeCommand(window, "viewReloadAction", tr("Re&load"), Qt::Key_F5)),
      goBackAction(makeCommand(window, "goBackAction", tr("&Back"), Qt::ALT | Qt::Key_Left)),
      goForwardAction(makeCommand(window, "goForwardAction", tr("&Forward"), Qt::ALT | Qt::Key_Right)),
      goHomeAction(makeCommand(window, "goHomeAction", tr("&Home"), Qt::ALT | Qt::Key_Up))
{
    viewReadingAction->setCheckable(true);
    // On most keyboards the plus sign needs Shift, the equals sign beside it does not.
    viewZoomInAction->setShortcuts({Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal});
    for (auto* action :
         {editCopyAction, editFindAction, editFindLineAction, editFindNextAction, editFindPreviousAction,
          viewZoomInAction, viewZoomOutAction, viewZoomResetAction, viewReloadAction}) {
        need(Desk::Condition::Page, action);
    }
    // A page that comes makes it possible until the selection is seen to be empty.
    need(Desk::Condition::Selection, editCopyAction);
    need(Desk::Condition::Back, goBackAction);
    need(Desk::Condition::Forward, goForwardAction);
    need(Desk::Condition::Home, goHomeAction);
    connect(&desk, &Desk::conditionChanged, this, &DeskCommands::setCondition);
    connectCommands(desk);
}

void DeskCommands::connectCommands(Desk& desk)
{
    const auto run = [&desk](QAction* action, const auto& command) {
        connect(action, &QAction::triggered, &desk, command);
    };
    run(editCopyAction, [&desk] { desk.view().copy(); });
    run(editFindAction, &Desk::find);
    run(editFindLineAction, &Desk::openFindLine);
    run(editFindNextAction, [&desk] { desk.findAgain(true); });
    run(editFindPreviousAction, [&desk] { desk.findAgain(false); });
    run(viewZoomInAction, [&desk] { desk.view().zoomIn(); });
    run(viewZoomOutAction, [&desk] { desk.view().zoomOut(); });
    run(viewZoomResetAction, [&desk] { desk.view().resetZoom(); });
    run(viewReadingAction, [&desk](bool isOn) { desk.view().setReadingView(isOn); });
    run(viewReloadAction, [&desk] { desk.view().reloadPage(); });
    run(goBackAction, [&desk] { desk.view().backward(); });
    run(goForwardAction, [&desk] { desk.view().forward(); });
    run(goHomeAction, [&desk] { desk.view().home(); });
}

void DeskCommands::need(Desk::Condition condition, QAction* action)
{
    m_needs.insert(condition, action);
    action->setEnabled(false);
}

void DeskCommands::setCondition(Desk::Condition condition, bool holds) const
{
    for (auto* action : m_needs.values(condition)) {
        action->setEnabled(holds);
    }
}
