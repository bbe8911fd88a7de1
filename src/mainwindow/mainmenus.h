// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

class HelpSetMenu;
class OutlineMenu;
class QMenu;
class QMenuBar;
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
