// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// The installed contents list: absolute paths of contents files in the user's settings store. Needs no
/// application object. Changes run under an advisory lock, so that concurrent requests lose nothing.
namespace InstalledContents {

enum class Answer {
    Yes = 0,      ///< done, or is installed
    NotFound = 1, ///< no such file
    No = 2,       ///< was installed already (install), is not installed (uninstall, query)
};

struct Outcome {
    Answer answer = Answer::NotFound;
    bool stored = true; ///< false when the store could not be written
};

Outcome installContents(const QString& fileName);
/// The same for many names at once, of which those that cannot be installed are left out; false when the
/// store could not be written.
[[nodiscard]] bool installAll(const QStringList& fileNames);
Outcome uninstallContents(const QString& fileName);
/// Takes a name off the list, whether there is such a file or not.
void forget(const QString& fileName);
[[nodiscard]] Answer isinstallContents(const QString& fileName);

/// The list, sorted by help-set title.
[[nodiscard]] QStringList loadInstalledFromSettings();
/// False when the store could not be written.
bool saveInstalledToSettings(const QStringList& list);
/// Drops entries whose file does not exist from the stored list, but not those of which that cannot be told;
/// the rest, sorted by title.
[[nodiscard]] QStringList dropVanishedContents();

/// The same file names sorted by help-set title (compared by code units).
[[nodiscard]] QStringList sortingCntList(const QStringList& list);

} // namespace InstalledContents
