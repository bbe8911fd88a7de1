// SPDX-License-Identifier: MIT
#include "mainwindow/session.h"

#include "browser/helpbrowser.h"
#include "contents/helpcontents.h"
#include "desk/desk.h"
#include "library/helplibrary.h"
#include "library/openedsets.h"
#include "mainwindow/contentsfiles.h"
#include "mainwindow/helpactions.h"
#include "mainwindow/sidepanes.h"
#include "mainwindow/windowsettings.h"

#include <QAction>
#include <QMainWindow>

#include <algorithm>

Wish Session::lastPage(const HelpLibrary& library)
{
    const auto last = WindowSettings::loadSession();
    if (last.page.isEmpty() || library.findRow(last.page) == nullptr) {
        return {};
    }
    return {.page = last.page, .place = last.scroll};
}

void Session::save(const ContentsFiles& files, const Desk& desk)
{
    const QStringList open = files.filesToStore();
    QStringList before = WindowSettings::loadContents();
    before.removeAll(QString());
    // What was open the last time and is not open now can be opened again as a whole.
    const bool isLost = std::any_of(before.begin(), before.end(),
                                    [&open](const QString& fileName) { return !open.contains(fileName); });
    if (isLost) {
        OpenedSets::saveEarlierSession(before);
    }
    OpenedSets::remember(files.openedFiles());
    WindowSettings::saveContents(open);
    const auto* record = desk.current();
    if (record == nullptr && !files.pendingFiles().isEmpty()) {
        return;
    }
    WindowSettings::saveSession(record == nullptr ? WindowSettings::Session()
                                                  : WindowSettings::Session{record->page(), desk.place()});
}

void Session::loadWindow(QMainWindow& window, const HelpActions& actions, SidePanes& panes, Desk& desk)
{
    WindowSettings::loadDisplay(desk.view());
    actions.page.viewReadingAction->setChecked(desk.view().isReadingView());
    const auto choices = WindowSettings::loadViewChoices();
    actions.viewGroupAction->setChecked(choices.isGrouped);
    actions.viewFollowAction->setChecked(choices.follows);
    panes.contents()->setGrouped(choices.isGrouped);
    panes.setOutlinePart(choices.outlinePart > 0 ? choices.outlinePart : panes.outlinePart());
    WindowSettings::loadGeometry(window);
    panes.setTakesPart(WindowSettings::loadPanes(window, panes, panes.widthFor(window.width())));
    panes.setOutlineShown(choices.hasOutline);
}

void Session::saveWindow(const QMainWindow& window, const HelpActions& actions, const SidePanes& panes,
                         const Desk& desk)
{
    WindowSettings::saveDisplay(desk.view());
    WindowSettings::saveViewChoices({actions.viewGroupAction->isChecked(),
                                     actions.viewFollowAction->isChecked(), panes.isOutlineShown(),
                                     panes.outlinePart()});
    WindowSettings::saveGeometry(window);
    WindowSettings::savePanes(window, panes);
}
