// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class Desk;
class QMainWindow;
class QToolBar;
class SidePanes;
struct HelpActions;

/// What the View menu says about the window: which of its parts are there, and how the panes follow the page.
/// Its marks follow whatever else changes that.
class ViewCommands : public QObject {
    Q_OBJECT

public:
    /// What it is given must outlive it; the window owns it.
    ViewCommands(const HelpActions& actions, QMainWindow& window, Desk& desk, SidePanes& panes,
                 QToolBar& toolBar);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectParts(QToolBar& toolBar);
    void connectFollowing(Desk& desk);

    const HelpActions& m_actions;
    QMainWindow& m_window;
    SidePanes& m_panes;
};
