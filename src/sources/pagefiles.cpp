// SPDX-License-Identifier: MIT
#include "sources/pagefiles.h"

#include "formats/paths.h"
#include "sources/sources.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <sys/stat.h>

namespace {

constexpr qint64 Second = 1'000'000'000; // nanoseconds

enum class Entry { Nothing, Regular, Other, BelowFile };

/// What there is; `state` is only of use for a regular file.
Entry look(const QString& path, struct stat& state)
{
    const QByteArray name = QFile::encodeName(fileSystemName(path));
    if (name.isEmpty() || name.contains('\0')) {
        return Entry::Nothing;
    }
    if (::stat(name.constData(), &state) != 0) {
        return errno == ENOTDIR ? Entry::BelowFile : Entry::Nothing;
    }
    return S_ISREG(state.st_mode) ? Entry::Regular : Entry::Other;
}

/// A file in a package.
struct Packed {
    std::shared_ptr<Package> package; ///< null when there is none
    QString name;
    qint64 time = 0; ///< of the package
};

/// Packages stay open for as long as a thread reads one after the other from them.
std::shared_ptr<Package> packageAt(const QString& path, const struct stat& state)
{
    struct Open {
        QString path;
        struct stat state;
        std::shared_ptr<Package> package;
    };
    thread_local Open last{};
    const bool isSame = last.path == path && last.state.st_ino == state.st_ino &&
                        last.state.st_size == state.st_size &&
                        last.state.st_mtim.tv_sec == state.st_mtim.tv_sec &&
                        last.state.st_mtim.tv_nsec == state.st_mtim.tv_nsec;
    if (!isSame) {
        last = {path, state, openPackage(path)};
    }
    return last.package;
}

Packed findPacked(const QString& path)
{
    struct stat state = {};
    qsizetype end = path.size();
    Entry entry = look(path, state);
    while (entry == Entry::BelowFile && end > 0) {
        end = path.lastIndexOf(u'/', end - 1);
        entry = end > 0 ? look(path.first(end), state) : Entry::Nothing;
    }
    if (entry != Entry::Regular || end == path.size()) {
        return {};
    }
    return {packageAt(path.first(end), state), path.sliced(end + 1),
            state.st_mtim.tv_sec * Second + state.st_mtim.tv_nsec};
}

} // namespace

bool isHtmlName(QStringView fileName)
{
    static constexpr std::array<QStringView, 4> suffixes{u".html", u".htm", u".xhtml", u".shtml"};
    return std::any_of(suffixes.begin(), suffixes.end(),
                       [&](QStringView suffix) { return fileName.endsWith(suffix, Qt::CaseInsensitive); });
}

bool isPageFile(const QString& path)
{
    return isRegularFile(path) || pageFileState(path).has_value();
}

std::optional<PageFileState> pageFileState(const QString& path)
{
    struct stat state = {};
    const Entry entry = look(path, state);
    if (entry == Entry::Regular) {
        return PageFileState{state.st_size, state.st_mtim.tv_sec * Second + state.st_mtim.tv_nsec};
    }
    const auto packed = entry == Entry::BelowFile ? findPacked(path) : Packed();
    const auto size = packed.package == nullptr ? std::nullopt : packed.package->packedSize(packed.name);
    return size ? std::optional(PageFileState{*size, packed.time}) : std::nullopt;
}

Result<QByteArray, FileError> readPageFile(const QString& path, qint64 most)
{
    auto read = readRegularFile(path, most);
    if (read.ok() || read.error() != FileError::NotFound) {
        return read;
    }
    const auto packed = findPacked(path);
    return packed.package == nullptr ? read : packed.package->read(packed.name, most);
}

QString pageFileElsewhere(const QString& path)
{
    const auto packed = findPacked(path);
    return packed.package == nullptr || packed.package->packedSize(packed.name)
               ? QString()
               : packed.package->elsewhere(packed.name);
}

QString packageOf(const QString& path)
{
    struct stat state = {};
    qsizetype end = path.size();
    while (end > 0 && look(path.first(end), state) == Entry::BelowFile) {
        end = path.lastIndexOf(u'/', end - 1);
    }
    return end <= 0 || end == path.size() ? QString() : path.first(end);
}

QString packedName(const QString& target)
{
    if (target.startsWith(u"qthelp://")) {
        return target.section(u'/', 3);
    }
    const QString package = target.startsWith(u'/') ? packageOf(target) : QString();
    return package.isNull() ? QString() : target.sliced(package.size() + 1);
}

QString readablePageName(const QString& path)
{
    const QString package = path.startsWith(u'/') ? packageOf(path) : QString();
    return package.isNull() ? path
                            : package.sliced(package.lastIndexOf(u'/') + 1) + QStringLiteral(" \u203A ") +
                                  path.sliced(path.lastIndexOf(u'/') + 1);
}
