// SPDX-License-Identifier: MIT
#pragma once

#include "formats/regularfile.h"
#include "sources/package.h"
#include "sources/source.h"

#include <QStringList>

#include <memory>

/// All that knows which kinds of documentation there are.

/// What a name means that a user gives.
struct HelpSetPlace {
    QString helpSet; ///< file or folder that stands for the help set
    QString page;    ///< absolute path of the page to begin with; null for the first one
};

/// A page means the help set of its folder, and a registered document that of its pages; everything else
/// stands for itself.
[[nodiscard]] HelpSetPlace placeOf(const QString& fileName);

/// The source that a file or folder is, by its name, else by what is in it.
[[nodiscard]] std::unique_ptr<Source> openSource(const QString& fileName);
/// The title that a help set gives itself, else the file name.
[[nodiscard]] QString sourceTitle(const QString& fileName);
/// Whether a help set may be there, even one that cannot be read.
[[nodiscard]] bool mayBeHelpSet(const QString& fileName);
/// Why no help set can be opened there; none when it may be one.
[[nodiscard]] std::optional<FileError> sourceError(const QString& fileName);
/// How many pages a help set has, about. Looks at its list of files, so it belongs into a thread.
[[nodiscard]] int pageCount(const QString& fileName, const std::stop_token& stop);
/// The folder with the pages of a help set that has one of its own, without "/" at its end; else null.
[[nodiscard]] QString pagesFolder(const QString& fileName);
/// What a user knows the kind as, translated.
[[nodiscard]] QString sourceKindName(const QString& fileName);
/// One for each kind, for a file dialog, such as "Contents Files (*.cnt)".
[[nodiscard]] QStringList sourceFilters();

/// Where packages with documentation are put, within each of the machine's data folders.
[[nodiscard]] QStringList packageFolders(const QString& dataFolder);
/// The path of a page that a package of this machine has under the name that links call it by: folder, "/",
/// name in there; null when none has.
[[nodiscard]] QString packedPageOnMachine(const QString& name);
/// Null when the file holds no others.
[[nodiscard]] std::unique_ptr<Package> openPackage(const QString& fileName);
