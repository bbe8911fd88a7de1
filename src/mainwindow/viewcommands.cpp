// SPDX-License-Identifier: MIT
#include "mainwindow/viewcommands.h"

#include "browser/helpbrowser.h"
#include "contents/helpcontents.h"
#include "desk/desk.h"
#include "library/helpcontentslistviewitem.h"
#include "mainwindow/displaydialog.h"
#include "mainwindow/helpactions.h"
#include "mainwindow/sidepanes.h"

#include <QAction>
#include <QEvent>
#include <QMainWindow>
#include <QToolBar>

ViewCommands::ViewCommands(const HelpActions& actions, QMainWindow& window, Desk& desk, SidePanes& panes,
                           QToolBar& toolBar)
    : QObject(&window), m_actions(actions), m_window(window), m_panes(panes)
{
    connectParts(toolBar);
    connectFollowing(desk);
    connect(actions.viewSettingsAction, &QAction::triggered, this,
            [&window, &desk] { openDisplayDialog(&window, desk.view()); });
    connect(actions.viewFullScreenAction, &QAction::triggered, this, [&window](bool isOn) {
        window.setWindowState(window.windowState().setFlag(Qt::WindowFullScreen, isOn));
    });
    window.installEventFilter(this);
}

void ViewCommands::connectParts(QToolBar& toolBar)
{
    connect(m_actions.viewContentsAction, &QAction::triggered, &m_panes, &SidePanes::setShown);
    connect(&m_panes, &SidePanes::shownChanged, m_actions.viewContentsAction, &QAction::setChecked);
    connect(m_actions.viewOutlineAction, &QAction::triggered, this, [this](bool isOn) {
        m_panes.setOutlineShown(isOn);
        if (isOn) {
            m_panes.showContents();
        }
    });
    connect(&m_panes, &SidePanes::outlineShownChanged, m_actions.viewOutlineAction, &QAction::setChecked);
    connect(m_actions.viewGoToolbarAction, &QAction::triggered, &toolBar, &QToolBar::setVisible);
    connect(&toolBar, &QToolBar::visibilityChanged, m_actions.viewGoToolbarAction, &QAction::setChecked);
}

void ViewCommands::connectFollowing(Desk& desk)
{
    connect(m_actions.viewGroupAction, &QAction::triggered, m_panes.contents(), &HelpContents::setGrouped);
    connect(m_actions.viewFollowAction, &QAction::triggered, this, [this](bool isOn) {
        if (isOn) {
            m_panes.selectCurrentRow();
        }
    });
    connect(&desk, &Desk::rowChanged, this, [this](const HelpContentsListViewItem* row) {
        if (m_actions.viewFollowAction->isChecked()) {
            m_panes.contents()->follow(row);
        }
    });
}

/// The window manager and the last session fill the screen, too.
bool ViewCommands::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowStateChange && watched == &m_window) {
        m_actions.viewFullScreenAction->setChecked(m_window.isFullScreen());
    }
    return QObject::eventFilter(watched, event);
}
