// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

class HelpSetMenu;
class OutlineMenu;
class QMainWindow;
class QMenu;
class QMenuBar;
class QToolBar;
struct HelpActions;

/// The menus of the main window, in the order of the menu bar, which owns them.
struct MainMenus {
    Q_DECLARE_TR_FUNCTIONS(MainMenus)

public:
    MainMenus(QMenuBar& bar, const HelpActions& actions);

    HelpSetMenu* removeMenu;
    HelpSetMenu* installedMenu;
    HelpSetMenu* recentMenu;
    QMenu* fileMenu;
    OutlineMenu* outlineMenu;
};

/// The window's tool bar, which the window owns.
[[nodiscard]] QToolBar* makeGoToolBar(QMainWindow& window, const HelpActions& actions);
