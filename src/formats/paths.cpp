// SPDX-License-Identifier: MIT
#include "formats/paths.h"

#include <QDir>
#include <QFileInfo>

namespace {

bool isCleanAbsolutePath(QStringView path)
{
    return path.startsWith(u'/') && !path.contains(u"//") && !path.contains(u"/./") &&
           !path.contains(u"/../") && !path.endsWith(u"/.") && !path.endsWith(u"/..");
}

} // namespace

bool isAbsoluteName(const QString& name)
{
    return name.startsWith(u'/') || name.startsWith(u"~/") || (name.size() > 1 && name.at(1) == u':');
}

QString fileSystemName(const QString& name)
{
    return name.startsWith(u':') ? QDir::currentPath() + u'/' + name : name;
}

QString absoluteFilePath(const QString& name)
{
    if (isCleanAbsolutePath(name)) {
        return name;
    }
    // The toolkit has no path for a name with a NUL in it, which is that of no file.
    return name.contains(QChar(u'\0')) ? QDir::cleanPath(QDir::current().filePath(name))
                                       : QFileInfo(fileSystemName(name)).absoluteFilePath();
}

QString getRightDir(const QString& dir)
{
    const bool complete = dir.isEmpty() || dir.endsWith(u'/') || dir.endsWith(u'\\');
    return complete ? dir : dir + u'/';
}

QString extractRightDir(const QString& path)
{
    const QString dir = QFileInfo(fileSystemName(path)).absolutePath();
    // The name of a directory may end with a backslash.
    return dir.isEmpty() || dir.endsWith(u'/') ? dir : dir + u'/';
}

QString extractFileName(const QString& path)
{
    return QFileInfo(path).filePath();
}

qsizetype anchorPosition(const QString& page)
{
    qsizetype hash = page.indexOf(u'#');
    while (hash >= 0) {
        const qsizetype slash = page.indexOf(u'/', hash);
        const qsizetype end = slash < 0 ? page.size() : slash;
        if (!QFileInfo(fileSystemName(page.first(end))).isDir()) {
            break;
        }
        hash = page.indexOf(u'#', end);
    }
    return hash;
}

bool isOneFile(const QString& a, const QString& b)
{
    return a == b || absoluteFilePath(a) == absoluteFilePath(b);
}
