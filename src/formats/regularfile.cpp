// SPDX-License-Identifier: MIT
#include "formats/regularfile.h"

#include "formats/paths.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 MaximumSize = qint64(1) << 30; // bytes
constexpr qint64 Growth = 1 << 16; // bytes, of a file that turns out longer than it was said to be

FileError fromErrno(int error)
{
    return error == ENOENT || error == ENOTDIR ? FileError::NotFound : FileError::Unreadable;
}

std::optional<FileError> refusal(const struct stat& status)
{
    if (S_ISDIR(status.st_mode)) {
        return FileError::Directory;
    }
    if (!S_ISREG(status.st_mode)) {
        return FileError::NotRegular;
    }
    if (status.st_size > MaximumSize) {
        return FileError::TooLarge;
    }
    return std::nullopt;
}

} // namespace

QString describe(FileError error)
{
    switch (error) {
    case FileError::NotFound:
        return QCoreApplication::translate("FileError", "no such file");
    case FileError::ForeignName:
        return QCoreApplication::translate("FileError",
                                           "its name is not valid text in this locale's encoding");
    case FileError::Directory:
        return QCoreApplication::translate("FileError", "it is a directory");
    case FileError::NotRegular:
        return QCoreApplication::translate("FileError", "it is not a regular file");
    case FileError::Unreadable:
        return QCoreApplication::translate("FileError", "it is not readable");
    case FileError::TooLarge:
        return QCoreApplication::translate("FileError", "it is larger than 1 GiB");
    case FileError::NoPages:
        return QCoreApplication::translate("FileError", "the folder has no pages");
    case FileError::UnknownKind:
        return QCoreApplication::translate("FileError", "it is no documentation of a known kind");
    }
    return {};
}

RegularFile::RegularFile(const QString& path) : m_error(open(path))
{
}

RegularFile::~RegularFile()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

std::optional<FileError> RegularFile::open(const QString& path)
{
    const QByteArray name = QFile::encodeName(fileSystemName(path));
    struct stat status = {};
    // Opening a device can have effects of its own, so look before opening.
    if (name.isEmpty() || name.contains('\0') || ::stat(name.constData(), &status) != 0) {
        if (path.contains(QChar::ReplacementCharacter)) {
            return FileError::ForeignName;
        }
        return name.isEmpty() ? FileError::NotFound : fromErrno(errno);
    }
    if (const auto refused = refusal(status)) {
        return refused;
    }
    m_descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (m_descriptor < 0 || ::fstat(m_descriptor, &status) != 0) {
        return fromErrno(errno);
    }
    const auto refused = refusal(status);
    m_size = refused ? 0 : status.st_size;
    return refused;
}

qint64 RegularFile::read(std::span<char> buffer)
{
    while (!m_error) {
        const auto count = ::read(m_descriptor, buffer.data(), buffer.size());
        if (count < 0 && errno != EINTR) {
            m_error = FileError::Unreadable;
        } else if (count >= 0) {
            m_position += count;
            m_error = m_position > MaximumSize ? std::optional(FileError::TooLarge) : std::nullopt;
            return m_error ? 0 : count;
        }
    }
    return 0;
}

Result<QByteArray, FileError> readRegularFile(const QString& path, qint64 most)
{
    RegularFile file(path);
    QByteArray bytes(std::min(file.size() + 1, most), Qt::Uninitialized);
    qint64 size = 0;
    while (const auto count =
               file.read(std::span(bytes.data(), size_t(bytes.size())).subspan(size_t(size)))) {
        size += count;
        // The file may have grown.
        if (size == most) {
            break;
        }
        if (size == bytes.size()) {
            bytes.resize(std::min(size + std::min(size, MaximumSize) + Growth, most));
        }
    }
    if (file.error()) {
        return *file.error();
    }
    bytes.truncate(size);
    return bytes;
}

bool isGone(FileError error)
{
    return error == FileError::NotFound || error == FileError::Directory || error == FileError::NotRegular ||
           error == FileError::NoPages;
}

bool isRegularFile(const QString& path)
{
    const QByteArray name = QFile::encodeName(fileSystemName(path));
    struct stat status = {};
    return !name.isEmpty() && !name.contains('\0') && ::stat(name.constData(), &status) == 0 &&
           S_ISREG(status.st_mode);
}
