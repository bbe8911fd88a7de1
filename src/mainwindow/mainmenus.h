// SPDX-License-Identifier: MIT
#pragma once

class HelpSetMenu;
class OutlineMenu;
class QMenuBar;
struct HelpActions;

/// The menus of the main window, in the order of the menu bar, which owns them.
struct MainMenus {
    MainMenus(QMenuBar& bar, const HelpActions& actions);

    HelpSetMenu* removeMenu;
    HelpSetMenu* installedMenu;
    OutlineMenu* outlineMenu;
};
