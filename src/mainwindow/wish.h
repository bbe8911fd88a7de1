// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// What somebody outside the window wants of it: the command line, the last session, files dropped on it.
/// Parts that are empty ask for nothing; the others are done in this order.
struct Wish {
    bool lastSession = false;  ///< open what was open last
    QStringList open = {};     ///< contents files to open
    QString show = {};         ///< a contents file to show, opened if need be; it begins a new history
    QString page = {};         ///< to show when all that is to be opened has been
    int place = 0;             ///< in that page
    bool keepsHistory = false; ///< when a contents file is shown
    bool isSearch = false;     ///< then search, in the help set shown if there is one
};
