// SPDX-License-Identifier: MIT
#pragma once

#include "formats/result.h"

#include <QByteArray>
#include <QString>

#include <limits>
#include <optional>
#include <span>

/// Why a file could not be read.
enum class FileError {
    NotFound,
    ForeignName, ///< the name has bytes that are no text here, and the toolkit knows no other names
    Directory,
    NotRegular,
    Unreadable,
    TooLarge,
    NoPages,    ///< a folder in which there is nothing to read
    UnknownKind ///< no documentation that can be opened
};

/// A sentence part for people, such as "no such file".
[[nodiscard]] QString describe(FileError error);

/// A regular file (links are followed) of at most 1 GiB, read once from its start. Directories, pipes,
/// sockets and devices are refused without being opened.
class RegularFile {
public:
    explicit RegularFile(const QString& path);
    ~RegularFile();
    Q_DISABLE_COPY_MOVE(RegularFile)

    /// Why it cannot be read; none while all goes well.
    [[nodiscard]] std::optional<FileError> error() const { return m_error; }
    /// In bytes, when it was opened.
    [[nodiscard]] qint64 size() const { return m_size; }
    /// Fills the beginning of the buffer with the next bytes; returns their number, 0 at the end and on
    /// errors.
    [[nodiscard]] qint64 read(std::span<char> buffer);

private:
    [[nodiscard]] std::optional<FileError> open(const QString& path);

    int m_descriptor = -1;
    qint64 m_size = 0;
    qint64 m_position = 0;
    std::optional<FileError> m_error; ///< last, as opening sets the others
};

/// All bytes of a regular file, or the first `most` of them.
[[nodiscard]] Result<QByteArray, FileError> readRegularFile(const QString& path,
                                                            qint64 most = std::numeric_limits<qint64>::max());

/// Whether `path` leads to a regular file.
[[nodiscard]] bool isRegularFile(const QString& path);

/// Whether it is certain that no regular file is there. Without the right to examine its folder, or when a
/// disk or a network fails, nobody can tell.
[[nodiscard]] bool isGone(FileError error);
