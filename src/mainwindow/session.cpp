// SPDX-License-Identifier: MIT
#include "mainwindow/session.h"

#include "desk/desk.h"
#include "library/helplibrary.h"
#include "mainwindow/contentsfiles.h"
#include "mainwindow/windowsettings.h"

Wish Session::lastPage(const HelpLibrary& library)
{
    const auto last = WindowSettings::loadSession();
    if (last.page.isEmpty() || library.findRow(last.page) == nullptr) {
        return {};
    }
    return {.page = last.page, .place = last.scroll};
}

void Session::save(const HelpLibrary& library, const ContentsFiles& files, const Desk& desk)
{
    QStringList open;
    for (const auto* root : library.roots()) {
        open.append(root->fileName);
    }
    WindowSettings::saveContents(open + files.pendingFiles() + files.absentFiles());
    const auto* record = desk.current();
    if (record == nullptr && !files.pendingFiles().isEmpty()) {
        return;
    }
    WindowSettings::saveSession(record == nullptr ? WindowSettings::Session()
                                                  : WindowSettings::Session{record->page(), desk.place()});
}
