// SPDX-License-Identifier: MIT
#include "sources/pagefiles.h"

#include "formats/paths.h"

#include <QFile>

#include <sys/stat.h>

bool isPageFile(const QString& path)
{
    return isRegularFile(path);
}

std::optional<PageFileState> pageFileState(const QString& path)
{
    const QByteArray name = QFile::encodeName(fileSystemName(path));
    struct stat state = {};
    if (name.isEmpty() || name.contains('\0') || ::stat(name.constData(), &state) != 0 ||
        !S_ISREG(state.st_mode)) {
        return std::nullopt;
    }
    constexpr qint64 second = 1'000'000'000; // nanoseconds
    return PageFileState{state.st_size, state.st_mtim.tv_sec * second + state.st_mtim.tv_nsec};
}

Result<QByteArray, FileError> readPageFile(const QString& path, qint64 most)
{
    return readRegularFile(path, most);
}
