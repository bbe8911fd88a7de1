// SPDX-License-Identifier: MIT
#include "otherkinds.h"

#include "library/helpset.h"
#include "sources/sources.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QtEndian>

#include <algorithm>

#include <sqlite3.h>

namespace {

void append(QByteArray& bytes, quint32 number)
{
    const quint32 value = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void append(QByteArray& bytes, const QString& text)
{
    append(bytes, quint32(text.size() * 2));
    for (const QChar c : text) {
        bytes.append(char(c.unicode() >> 8U)).append(char(c.unicode() & 0xFFU));
    }
}

int levelOf(const HelpContentsListViewItem& row)
{
    int level = 0;
    for (const auto* above = row.parent; above != nullptr; above = above->parent) {
        ++level;
    }
    return level;
}

/// Writes the database of a Qt help file.
class Package {
public:
    explicit Package(const QString& dir) : m_dir(dir)
    {
        const QString file = dir + QStringLiteral("/set.qch");
        QFile::remove(file);
        if (::sqlite3_open(QFile::encodeName(file).constData(), &m_database) != SQLITE_OK) {
            qFatal("cannot write %s", qUtf8Printable(file));
        }
        run("BEGIN; CREATE TABLE NamespaceTable(Id INTEGER PRIMARY KEY, Name TEXT);"
            "CREATE TABLE FolderTable(Id INTEGER PRIMARY KEY, Name TEXT, NamespaceID INTEGER);"
            "CREATE TABLE FileNameTable(FolderId INTEGER, Name TEXT, FileId INTEGER, Title TEXT);"
            "CREATE TABLE FileDataTable(Id INTEGER PRIMARY KEY, Data BLOB);"
            "CREATE TABLE IndexTable(Id INTEGER PRIMARY KEY, Name TEXT, Identifier TEXT, NamespaceId "
            "INTEGER, "
            "FileId INTEGER, Anchor TEXT);"
            "CREATE TABLE ContentsTable(Id INTEGER PRIMARY KEY, NamespaceId INTEGER, Data BLOB);"
            "INSERT INTO NamespaceTable VALUES(1, 'set'); INSERT INTO FolderTable VALUES(1, 'set', 1)");
    }
    ~Package() { ::sqlite3_close(m_database); }
    Q_DISABLE_COPY_MOVE(Package)

    void run(const QByteArray& sql) const
    {
        if (::sqlite3_exec(m_database, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            qFatal("%s", ::sqlite3_errmsg(m_database));
        }
    }

    /// Number of the page, which is added if need be.
    QByteArray add(const QString& page)
    {
        if (!m_files.contains(page)) {
            const QByteArray number = QByteArray::number(m_files.size() + 1);
            QFile file(m_dir + u'/' + page);
            const QByteArray bytes =
                file.open(QIODevice::ReadOnly) ? file.readAll() : otherKindsPage("A page");
            m_files.insert(page, number);
            run("INSERT INTO FileNameTable VALUES(1, '" + page.toUtf8() + "', " + number + ", '')");
            run("INSERT INTO FileDataTable VALUES(" + number + ", x'" + qCompress(bytes).toHex() + "')");
        }
        return m_files.value(page);
    }

private:
    QString m_dir;
    sqlite3* m_database = nullptr;
    QHash<QString, QByteArray> m_files;
};

void writePackage(const QString& dir, const HelpSet& native)
{
    Package package(dir);
    package.add(QStringLiteral("large.html"));
    QByteArray contents;
    for (const auto& record : native.records()) {
        append(contents, quint32(levelOf(*record.listViewItem)));
        append(contents, record.pageName.toString());
        append(contents, record.listViewItem->text.toString());
        package.add(record.pageName.toString());
    }
    for (const auto& item : native.indexItems()) {
        package.run("INSERT INTO IndexTable(Name, FileId, Anchor) VALUES('" + item.keyword.toUtf8() + "', " +
                    package.add(item.pageName.toString()) + ", 'a')");
    }
    package.run("INSERT INTO ContentsTable VALUES(1, 1, x'" + contents.toHex() + "'); COMMIT");
}

void writeBook(const QString& dir, const HelpSet& native)
{
    const QString start = native.firstPage()->pageName.toString();
    QString text = QStringLiteral("<book title='Set' link='%1'><chapters>\n").arg(start);
    int level = -1;
    for (const auto& record : native.records()) {
        const int own = levelOf(*record.listViewItem);
        text += QStringLiteral("</sub>").repeated(std::max(0, level - own + 1)) +
                QStringLiteral("<sub name='%1' link='%2'>\n")
                    .arg(record.listViewItem->text.toString().toHtmlEscaped(), record.pageName);
        level = own;
    }
    text += QStringLiteral("</sub>").repeated(level + 1) + QStringLiteral("</chapters><functions>\n");
    for (const auto& item : native.indexItems()) {
        text += QStringLiteral("<keyword type='function' name='%1' link='%2'/>\n")
                    .arg(item.keyword.toString().toHtmlEscaped(), item.pageName);
    }
    writeBytes(dir + QStringLiteral("/set.devhelp2"),
               (text + QStringLiteral("</functions></book>")).toUtf8());
}

} // namespace

QByteArray otherKindsPage(const QByteArray& title)
{
    constexpr int paragraphs = 250;
    const QByteArray paragraph =
        "<p>A paragraph of some words, about <a href=\"x.html\">things</a> and others.</p>\n";
    return "<html><head><title>" + title + "</title></head><body><h1>" + title + "</h1>" +
           paragraph.repeated(paragraphs) + "</body></html>";
}

void writeBytes(const QString& name, const QByteArray& bytes)
{
    QDir().mkpath(name.section(u'/', 0, -2));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qUtf8Printable(name));
    }
}

void writeOtherKinds(const QString& dir)
{
    const QString contents = dir + QStringLiteral("/bench.cnt");
    HelpSet native(contents, openSource(contents));
    native.adoptIndex(readIndexEntries(native.indexTask()));
    writeBytes(dir + QStringLiteral("/large.html"), otherKindsPage("A page"));
    writePackage(dir, native);
    writeBook(dir, native);
}
