// SPDX-License-Identifier: MIT
#include "formats/regularfile.h"

#include "formats/paths.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 MaximumSize = qint64(1) << 30; // bytes
constexpr qint64 Growth = 1 << 16; // bytes, of a file that turns out longer than it was said to be

class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : m_fd(fd) {}
    ~FileDescriptor()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }
    Q_DISABLE_COPY_MOVE(FileDescriptor)

    [[nodiscard]] int get() const { return m_fd; }

private:
    int m_fd;
};

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

Result<QByteArray, FileError> readAll(int fd, qint64 expected)
{
    QByteArray bytes(expected + 1, Qt::Uninitialized);
    qint64 size = 0;
    for (;;) {
        const auto count = ::read(fd, bytes.data() + size, size_t(bytes.size() - size));
        if (count == 0) {
            bytes.truncate(size);
            return bytes;
        }
        if (count < 0 && errno != EINTR) {
            return FileError::Unreadable;
        }
        size += std::max<qint64>(count, 0);
        if (size > MaximumSize) {
            return FileError::TooLarge;
        }
        if (size == bytes.size()) {
            bytes.resize(std::min(2 * size, MaximumSize) + Growth);
        }
    }
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
    }
    return {};
}

Result<QByteArray, FileError> readRegularFile(const QString& path)
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
        return *refused;
    }
    const FileDescriptor file(::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.get() < 0 || ::fstat(file.get(), &status) != 0) {
        return fromErrno(errno);
    }
    if (const auto refused = refusal(status)) {
        return *refused;
    }
    return readAll(file.get(), status.st_size);
}

bool isRegularFile(const QString& path)
{
    const QByteArray name = QFile::encodeName(fileSystemName(path));
    struct stat status = {};
    return !name.isEmpty() && !name.contains('\0') && ::stat(name.constData(), &status) == 0 &&
           S_ISREG(status.st_mode);
}
