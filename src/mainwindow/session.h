// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/wish.h"

class ContentsFiles;
class Desk;
class HelpLibrary;
class QMainWindow;
class SidePanes;
struct HelpActions;

/// What was open and what was read, from one run to the next.
namespace Session {

/// The page that was shown last; no page when it belongs to no loaded help set.
[[nodiscard]] Wish lastPage(const HelpLibrary& library);

void save(const ContentsFiles& files, const Desk& desk);

/// Looks and place of the window and its parts, and the choices of its View menu.
void loadWindow(QMainWindow& window, const HelpActions& actions, SidePanes& panes, Desk& desk);
void saveWindow(const QMainWindow& window, const HelpActions& actions, const SidePanes& panes,
                const Desk& desk);

} // namespace Session
