// SPDX-License-Identifier: MIT
#include "sources/folderfiles.h"

#include "formats/regularfile.h"
#include "markup/htmlhead.h"
#include "markup/pagedecoding.h"
#include "sources/pagefiles.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <dirent.h>
#include <memory>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace {

/// What tells which generator made a folder, or holds its lists; empty for other files. Versions stand in the
/// names of some.
QString listKind(const QString& fileName)
{
    static const QSet<QString> names{QStringLiteral("objects.inv"), QStringLiteral("navtreedata.js"),
                                     QStringLiteral("type-search-index.js"),
                                     QStringLiteral("package-search-index.js"),
                                     QStringLiteral("search_index.json")};
    if (fileName.startsWith(u"search-index") && fileName.endsWith(u".js")) {
        return QStringLiteral("search-index.js");
    }
    return names.contains(fileName) ? fileName : QString();
}

/// A title or heading ends before this.
QString beginning(const QString& text, QLatin1StringView end)
{
    const qsizetype position = text.indexOf(end, 0, Qt::CaseInsensitive);
    return position < 0 ? text : text.first(position);
}

/// What is in a folder of the file system, sorted by names.
struct Folder {
    dev_t device = 0;
    ino_t inode = 0;
    QStringList files;
    QStringList folders;
    bool isLimited = false; ///< there are more files or folders than were wanted
};

/// Many files are looked through, so the system is asked about those only of which it does not say at once
/// what they are.
Folder readFolder(const QString& path, qsizetype mostFiles, qsizetype mostFolders)
{
    Folder folder;
    const std::unique_ptr<DIR, int (*)(DIR*)> dir(::opendir(QFile::encodeName(path).constData()), ::closedir);
    struct stat state = {};
    if (dir == nullptr || ::fstat(::dirfd(dir.get()), &state) != 0) {
        return folder;
    }
    folder.device = state.st_dev;
    folder.inode = state.st_ino;
    while (const auto* entry = ::readdir(dir.get())) { // NOLINT(concurrency-mt-unsafe): a stream of its own
        const bool isKnown = entry->d_type == DT_REG || entry->d_type == DT_DIR;
        if (entry->d_name[0] == '.' ||
            (!isKnown && ::fstatat(::dirfd(dir.get()), entry->d_name, &state, 0) != 0)) {
            continue;
        }
        const QString name = QFile::decodeName(entry->d_name);
        if (entry->d_type == DT_DIR || (!isKnown && S_ISDIR(state.st_mode))) {
            folder.isLimited = folder.isLimited || folder.folders.size() >= mostFolders;
            if (!folder.isLimited) {
                folder.folders.append(name);
            }
        } else if (entry->d_type == DT_REG || S_ISREG(state.st_mode)) {
            folder.isLimited = folder.isLimited || folder.files.size() >= mostFiles;
            if (!folder.isLimited) {
                folder.files.append(name);
            }
        }
    }
    folder.files.sort();
    folder.folders.sort();
    return folder;
}

} // namespace

FolderFiles::FolderFiles(const QString& root, const std::stop_token& stop) : m_root(root)
{
    walk(stop);
    m_known = {m_pages.begin(), m_pages.end()};
}

void FolderFiles::walk(const std::stop_token& stop)
{
    struct Waiting {
        QString name; ///< empty, or ends with "/"
        int depth;
    };
    std::vector<Waiting> waiting{{{}, 0}};
    std::set<std::pair<dev_t, ino_t>> visited;
    int seen = 0;
    for (size_t i = 0; i < waiting.size() && !stop.stop_requested(); ++i) {
        const auto current = waiting[i];
        auto folder =
            readFolder(m_root + current.name, MaximumFiles - seen, MaximumFiles - qsizetype(waiting.size()));
        if (!visited.emplace(folder.device, folder.inode).second) {
            continue;
        }
        seen += int(folder.files.size());
        if (folder.isLimited) {
            m_isLimited = true;
            return;
        }
        for (const auto& file : std::as_const(folder.files)) {
            addFile(current.name, file);
        }
        for (const auto& name : std::as_const(folder.folders)) {
            if (current.depth < DeepestFolder) {
                waiting.push_back({current.name + name + u'/', current.depth + 1});
            }
        }
    }
}

void FolderFiles::addFile(const QString& folder, const QString& fileName)
{
    if (isHtmlName(fileName)) {
        m_pages.append(folder + fileName);
    } else if (const QString kind = listKind(fileName); !kind.isEmpty()) {
        m_lists[kind].append(folder + fileName);
    }
}

std::optional<QString> FolderFiles::resolve(const QString& page, QStringView link) const
{
    link = link.trimmed();
    const qsizetype hash = link.indexOf(u'#');
    const QString anchor = hash < 0 ? QString() : link.sliced(hash).toString();
    QString path = link.first(hash < 0 ? link.size() : hash).toString();
    if (path.isEmpty()) {
        return anchor.size() > 1 ? std::optional(page + anchor) : std::nullopt;
    }
    const QString folder = page.first(page.lastIndexOf(u'/') + 1);
    for (const auto& written : {QUrl::fromPercentEncoding(path.toUtf8()), path}) {
        QString name = QDir::cleanPath(folder + written);
        if (written.endsWith(u'/') || name == u".") {
            name = (name == u"." ? QString() : name + u'/') + QStringLiteral("index.html");
        }
        if (isPage(name)) {
            return name + anchor;
        }
        if (const QString index = name + QStringLiteral("/index.html"); isPage(index)) {
            return index + anchor;
        }
    }
    return std::nullopt;
}

QByteArray FolderFiles::bytes(const QString& name, qint64 most) const
{
    const auto read = readRegularFile(m_root + name, most);
    return read.ok() ? read.value() : QByteArray();
}

QString FolderFiles::title(const QString& page) const
{
    const QString own = htmlTitle(m_root + page);
    return own.isEmpty() ? page.sliced(page.lastIndexOf(u'/') + 1) : own;
}

QString htmlTitle(const QString& path)
{
    constexpr qint64 headSize = 8192; // bytes
    const auto read = readRegularFile(path, headSize);
    const QString head = read.ok() ? decodePage(read.value()) : QString();
    return readHtmlHead(HtmlTree(beginning(head, QLatin1StringView("</title")))).title;
}
