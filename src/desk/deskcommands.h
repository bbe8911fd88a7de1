// SPDX-License-Identifier: MIT
#pragma once

#include "desk/desk.h"

#include <QMultiMap>

class QAction;

/// The commands that act on the page in front. They do so by themselves, and are enabled while what they need
/// is there; the window only places them. This is also where other commands say what they need of the page.
class DeskCommands : public QObject {
    Q_OBJECT

public:
    /// The actions are children of `window`, where their shortcuts work; the desk must outlive them.
    DeskCommands(Desk& desk, QWidget& window);

    /// Enables an action exactly when this holds; at first it does not.
    void need(Desk::Condition condition, QAction* action);

    QAction* editCopyAction;
    QAction* editFindAction;
    QAction* editFindLineAction;
    QAction* editFindNextAction;
    QAction* editFindPreviousAction;
    QAction* viewZoomInAction;
    QAction* viewZoomOutAction;
    QAction* viewZoomResetAction;
    QAction* viewReadingAction;
    QAction* viewReloadAction;
    QAction* goBackAction;
    QAction* goForwardAction;
    QAction* goHomeAction;

private:
    void connectCommands(Desk& desk);
    void setCondition(Desk::Condition condition, bool holds) const;

    QMultiMap<Desk::Condition, QAction*> m_needs;
};

/// A command with a name by which scripts and tests find it.
[[nodiscard]] QAction* makeCommand(QWidget& window, const char* name, const QString& text,
                                   const QKeySequence& shortcut = {});
