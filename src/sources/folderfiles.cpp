// SPDX-License-Identifier: MIT
#include "sources/folderfiles.h"

#include "formats/regularfile.h"
#include "markup/htmltree.h"
#include "markup/pagedecoding.h"
#include "markup/tags.h"
#include "sources/pagefiles.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

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

QString textOf(const HtmlNode* element)
{
    std::string text;
    for (const auto* node = element; node != nullptr; node = nextNode(node, element)) {
        text += node->content;
    }
    return toQString(text).simplified();
}

} // namespace

FolderFiles::FolderFiles(const QString& root, const std::stop_token& stop) : m_root(root)
{
    walk(stop);
    m_known = {m_pages.begin(), m_pages.end()};
}

void FolderFiles::walk(const std::stop_token& stop)
{
    struct Folder {
        QString name; ///< empty, or ends with "/"
        int depth;
    };
    std::vector<Folder> waiting{{{}, 0}};
    QSet<QString> visited;
    int seen = 0;
    for (size_t i = 0; i < waiting.size() && !stop.stop_requested(); ++i) {
        const Folder folder = waiting[i];
        const QDir dir(m_root + folder.name);
        const QString canonical = dir.canonicalPath();
        if (visited.contains(canonical)) {
            continue;
        }
        visited.insert(canonical);
        for (const auto& entry : dir.entryList(QDir::Files, QDir::Name)) {
            if (++seen > MaximumFiles) {
                m_isLimited = true;
                return;
            }
            addFile(folder.name, entry);
        }
        const auto folders = folder.depth < DeepestFolder
                                 ? dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)
                                 : QStringList();
        for (const auto& entry : folders) {
            waiting.push_back({folder.name + entry + u'/', folder.depth + 1});
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

QString FolderFiles::text(const QString& page, qint64 most) const
{
    return decodePage(bytes(page, most));
}

QString FolderFiles::title(const QString& page) const
{
    constexpr qint64 headSize = 8192; // bytes
    const QString text = beginning(this->text(page, headSize), QLatin1StringView("</title"));
    const HtmlTree tree(text);
    const auto* title = tree.first("title");
    QString result = title == nullptr ? QString() : textOf(title);
    return result.isEmpty() ? page.sliced(page.lastIndexOf(u'/') + 1) : result;
}
