// SPDX-License-Identifier: MIT
#include "sources/htmlplace.h"

#include "formats/paths.h"
#include "sources/foldercontents.h"

#include <QDir>
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

/// Folders of all users and all packages are no help set, whatever lies in them.
bool isCommon(const QString& path)
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

/// The outermost folder around a page with which readers can begin, else its own.
QString rootOf(const QString& folder)
{
    QString root = folder;
    QString path = folder;
    for (int step = 0; step < MostSteps && !isCommon(path); ++step) {
        root = isBeginning(QDir(path)) ? path : root;
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
    return !QDir(folder)
                .entryList({QStringLiteral("*.html"), QStringLiteral("*.htm"), QStringLiteral("*.xhtml"),
                            QStringLiteral("*.devhelp2")},
                           QDir::Files)
                .isEmpty();
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

HelpSetPlace htmlPlaceOf(const QString& fileName)
{
    const QString path = absoluteFilePath(fileName);
    if (QFileInfo(path).isDir()) {
        const QString folder = folderWithPages(path);
        return {bookOf(folder.isEmpty() ? path : folder), {}};
    }
    return {bookOf(rootOf(QFileInfo(path).path())), path};
}

bool isHtmlFolder(const QString& folder)
{
    return !folderWithPages(absoluteFilePath(folder)).isEmpty();
}
