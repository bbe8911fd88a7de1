// SPDX-License-Identifier: MIT
#include "sources/htmlplace.h"

#include "formats/paths.h"
#include "markup/htmlhead.h"
#include "markup/pagedecoding.h"
#include "sources/folderfiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr int MostSteps = 8;

/// Whether readers can begin here.
bool isBeginning(const QDir& dir)
{
    return dir.exists(QStringLiteral("index.html")) || dir.exists(QStringLiteral("index.htm")) ||
           dir.exists(QStringLiteral("objects.inv")) || dir.exists(QStringLiteral("contents.html"));
}

/// The page that a folder's first page passes its readers on to at once; null for none.
QString passedOnTo(const QString& folder)
{
    constexpr qint64 longest = 4096; // bytes of a page that does nothing else
    for (const auto* name : {"/index.html", "/index.htm"}) {
        const QString page = folder + QLatin1StringView(name);
        const auto read = QFileInfo(page).size() < longest ? readRegularFile(page, longest)
                                                           : Result<QByteArray, FileError>(QByteArray());
        const QString link = read.ok() ? readHtmlHead(HtmlTree(decodePage(read.value()))).refresh : QString();
        QString target = QDir::cleanPath(folder + u'/' + withoutAnchor(link));
        if (!link.isEmpty() && QFileInfo(target).isFile()) {
            return target;
        }
    }
    return {};
}

/// Where another folder in this one holds what there is.
QString folderPassedOnTo(const QString& folder)
{
    const QString page = passedOnTo(folder);
    const QString other = page.isEmpty() ? QString() : QFileInfo(page).path();
    return other.startsWith(folder + u'/') ? other : QString();
}

/// The outermost folder around a page with which readers can begin, else its own.
QString rootOf(const QString& folder)
{
    QString root = folder;
    QString path = folder;
    for (int step = 0; step < MostSteps && !isCommonFolder(path); ++step) {
        root = isBeginning(QDir(path)) && folderPassedOnTo(path).isNull() ? path : root;
        path = QFileInfo(path).path();
    }
    return root;
}

/// The only book of a folder, which knows more than its pages; else the folder.
QString bookOf(const QString& folder)
{
    const auto books = QDir(folder).entryList({QStringLiteral("*.devhelp2")}, QDir::Files);
    return books.size() == 1 ? folder + u'/' + books.front() : folder;
}

bool hasPages(const QString& folder)
{
    return QDirIterator(folder,
                        {QStringLiteral("*.html"), QStringLiteral("*.htm"), QStringLiteral("*.xhtml"),
                         QStringLiteral("*.devhelp2")},
                        QDir::Files)
        .hasNext();
}

/// Where packages put their pages within the folder that they have.
QString folderWithPages(const QString& folder)
{
    for (const auto* below : {"", "/html", "/doc/html", "/doc", "/api"}) {
        if (QString path = folder + QLatin1StringView(below); hasPages(path)) {
            return path;
        }
    }
    return {};
}

} // namespace

bool isCommonFolder(const QString& path)
{
    static const QStringList common{QStringLiteral("/"),
                                    QStringLiteral("/usr"),
                                    QStringLiteral("/usr/share"),
                                    QStringLiteral("/usr/share/doc"),
                                    QStringLiteral("/home"),
                                    QStringLiteral("/tmp"),
                                    QStringLiteral("/usr/share/gtk-doc/html"),
                                    QDir::homePath()};
    return common.contains(path);
}

HelpSetPlace htmlPlaceOf(const QString& fileName)
{
    const QString path = absoluteFilePath(fileName);
    if (QFileInfo(path).isDir()) {
        QString folder = folderWithPages(path);
        folder = folder.isEmpty() ? path : folder;
        const QString other = folderPassedOnTo(folder);
        return {bookOf(other.isNull() ? folder : other), {}};
    }
    return {bookOf(rootOf(QFileInfo(path).path())), path};
}

bool isHtmlFolder(const QString& folder)
{
    return !folderWithPages(absoluteFilePath(folder)).isEmpty();
}
