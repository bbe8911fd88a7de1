// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class PageView;
class QDockWidget;
class QMainWindow;
class QWidget;

/// What the viewer keeps in the settings store between runs, beside the installed contents list. Keys that
/// are absent or useless leave things as they are; write errors are not reported.
namespace WindowSettings {

void loadDisplay(PageView& view);
void saveDisplay(const PageView& view);

/// Position and size; a stored block that is damaged, or that would leave the window out of reach, is
/// corrected.
void loadGeometry(QWidget& window);
void saveGeometry(const QWidget& window);

/// Which panes and tool bars are shown and where; `dock` has the panes, and keeps its width, which is
/// `firstWidth` pixels at first; returns whether it is these.
[[nodiscard]] bool loadPanes(QMainWindow& window, QDockWidget& dock, int firstWidth);
void savePanes(const QMainWindow& window, const QDockWidget& dock);

/// Choices of the View menu.
struct ViewChoices {
    bool isGrouped = true; ///< a row for each help set
    bool follows = true;   ///< the tree follows the page
    bool hasOutline = false;
    int outlinePart = 0; ///< of the height, in percent; 0 for the usual one
};
[[nodiscard]] ViewChoices loadViewChoices();
void saveViewChoices(const ViewChoices& choices);

/// The contents files that were open last, in load order.
[[nodiscard]] QStringList loadContents();
void saveContents(const QStringList& fileNames);

/// The page that was shown last and the place in it.
struct Session {
    QString page; ///< empty for none
    int scroll = 0;
};
[[nodiscard]] Session loadSession();
void saveSession(const Session& session);

} // namespace WindowSettings
