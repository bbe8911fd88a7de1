// SPDX-License-Identifier: MIT
#pragma once

#include "formats/result.h"

#include <QByteArray>
#include <QString>

/// Why a file could not be read.
enum class FileError {
    NotFound,
    ForeignName, ///< the name has bytes that are no text here, and the toolkit knows no other names
    Directory,
    NotRegular,
    Unreadable,
    TooLarge
};

/// A sentence part for people, such as "no such file".
[[nodiscard]] QString describe(FileError error);

/// The bytes of a regular file (links are followed) of at most 1 GiB. Directories, pipes, sockets and devices
/// are refused without being opened.
[[nodiscard]] Result<QByteArray, FileError> readRegularFile(const QString& path);

/// Whether `path` leads to a regular file.
[[nodiscard]] bool isRegularFile(const QString& path);
