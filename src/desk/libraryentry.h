// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A help set on the library page.
struct LibraryEntry {
    enum class Kind { Open, Installed, Before };

    Kind kind = Kind::Open;
    QString fileName; ///< of the contents file
    QString title;
    int topics = -1; ///< -1 while unknown
    QString state;   ///< a word, or what is wrong with it
    bool isInstalled = false;
    bool canBeOpened = true;
};
