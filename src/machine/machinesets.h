// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <stop_token>
#include <vector>

/// A help set that is on the machine, whether it is open or not.
struct MachineSet {
    QString title;
    QString kind; ///< for people
    QString name; ///< file or folder to open
    QString section;
    int pages = 0; ///< about
};

/// Where to look.
struct MachinePlaces {
    QStringList dataFolders; ///< such as /usr/share
    QStringList userFolders; ///< whatever is directly in them, and they themselves
    QString cacheFile = {};  ///< see MachineCache
};

/// Of this machine and the user.
[[nodiscard]] MachinePlaces machinePlaces(const QStringList& userFolders);

/// Registered documents, Devhelp books, Qt help files and folders of HTML that packages have installed, each
/// once, sorted by their titles. Looks at the disk, so it belongs into a thread; once a stop has been asked
/// for, sets are missing.
[[nodiscard]] std::vector<MachineSet> findMachineSets(const MachinePlaces& places,
                                                      const std::stop_token& stop);
