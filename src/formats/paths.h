// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Whether a name in a contents file stands by itself: it begins with "/" or "~/", or its second character is
/// ":".
[[nodiscard]] bool isAbsoluteName(const QString& name);

/// The name to give to the file system: a leading ":" means a file of the current directory, not a resource.
[[nodiscard]] QString fileSystemName(const QString& name);

/// The absolute path without dot steps and doubled separators; empty for an empty name.
[[nodiscard]] QString absoluteFilePath(const QString& name);

/// `dir` with "/" appended unless it ends with "/" or a backslash; the empty text stays empty.
[[nodiscard]] QString getRightDir(const QString& dir);

/// The absolute directory that holds the file, ending with "/".
[[nodiscard]] QString extractRightDir(const QString& path);

/// The path as the file-information facility gives it back.
[[nodiscard]] QString extractFileName(const QString& path);

/// Where the anchor begins in the name of a page that need not exist: the first "#" that is not part of an
/// existing directory's name; -1 when there is none.
[[nodiscard]] qsizetype anchorPosition(const QString& page);

/// Whether both names have the same absolute path, compared as text.
[[nodiscard]] bool isOneFile(const QString& a, const QString& b);
