// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QTest>
#include <QtEndian>

#include <vector>

#include <sqlite3.h>

/// Makers of Qt help files and of the pages in them.

inline QByteArray titledPage(const QByteArray& title, const QByteArray& body = "text")
{
    return "<html><head><title>" + title + "</title></head><body>" + body + "</body></html>";
}

inline QByteArray linkTo(const QByteArray& page, const QByteArray& title)
{
    return "<a href=\"" + page + "\">" + title + "</a>";
}

/// What zlib makes of it.
inline QByteArray packed(const QByteArray& bytes)
{
    return qCompress(bytes).sliced(4);
}

/// What gzip makes of it.
inline QByteArray gzipped(const QByteArray& bytes)
{
    // A gzip file is around the deflated bytes, which stand between two bytes of zlib's and four of its
    // check.
    QByteArray gzip = QByteArray::fromHex("1f8b0800000000000003") + packed(bytes).sliced(2).chopped(4);
    quint32 crc = 0xFFFFFFFF;
    for (const char c : bytes) {
        crc ^= quint8(c);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    crc = qToLittleEndian(~crc);
    const quint32 size = qToLittleEndian(quint32(bytes.size()));
    return gzip.append(reinterpret_cast<const char*>(&crc), 4)
        .append(reinterpret_cast<const char*>(&size), 4);
}

inline void appendBigEndian(QByteArray& bytes, quint32 number)
{
    const quint32 value = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

inline void appendRow(QByteArray& bytes, quint32 depth, const QString& page, const QString& title)
{
    appendBigEndian(bytes, depth);
    for (const auto& text : {page, title}) {
        appendBigEndian(bytes, quint32(text.size() * 2));
        for (const QChar c : text) {
            bytes.append(char(c.unicode() >> 8U)).append(char(c.unicode() & 0xFFU));
        }
    }
}

struct QchPage {
    QByteArray name;
    QByteArray bytes;
};

inline void makeQch(const QString& file, const QByteArray& folder, const std::vector<QchPage>& pages,
                    const QByteArray& contents, const QByteArray& more = {})
{
    sqlite3* database = nullptr;
    QCOMPARE(::sqlite3_open(file.toUtf8(), &database), SQLITE_OK);
    const auto run = [&](const QByteArray& sql) {
        QVERIFY2(::sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
    };
    run("CREATE TABLE NamespaceTable(Id INTEGER PRIMARY KEY, Name TEXT);"
        "CREATE TABLE FolderTable(Id INTEGER PRIMARY KEY, Name TEXT, NamespaceID INTEGER);"
        "CREATE TABLE FileNameTable(FolderId INTEGER, Name TEXT, FileId INTEGER, Title TEXT);"
        "CREATE TABLE FileDataTable(Id INTEGER PRIMARY KEY, Data BLOB);"
        "CREATE TABLE IndexTable(Id INTEGER PRIMARY KEY, Name TEXT, Identifier TEXT, NamespaceId INTEGER, "
        "FileId INTEGER, Anchor TEXT);"
        "CREATE TABLE ContentsTable(Id INTEGER PRIMARY KEY, NamespaceId INTEGER, Data BLOB);"
        "CREATE TABLE MetaDataTable(Name TEXT, Value BLOB);"
        "INSERT INTO MetaDataTable VALUES('version', '1.2');");
    run("INSERT INTO NamespaceTable VALUES(1, 'org.example." + folder + ".12');");
    run("INSERT INTO FolderTable VALUES(1, '" + folder + "', 1);");
    for (size_t i = 0; i < pages.size(); ++i) {
        const QByteArray id = QByteArray::number(int(i) + 1);
        run("INSERT INTO FileNameTable VALUES(1, '" + pages[i].name + "', " + id + ", '');");
        run("INSERT INTO FileDataTable VALUES(" + id + ", x'" + pages[i].bytes.toHex() + "');");
        run("INSERT INTO IndexTable VALUES(" + id + ", 'word" + id + "', '', 1, " + id + ", 'here');");
    }
    run("INSERT INTO ContentsTable VALUES(1, 1, x'" + contents.toHex() + "');");
    run(more);
    ::sqlite3_close(database);
}

inline void makeQch(const QString& file, const QByteArray& folder, const QByteArray& other = {})
{
    QByteArray contents;
    appendRow(contents, 0, QStringLiteral("index.html"), QStringLiteral("Guide"));
    appendRow(contents, 1, QStringLiteral("sub/a.html#x"), QStringLiteral("Ä"));
    makeQch(file, folder,
            {{"index.html", qCompress(titledPage("Start", linkTo(other, "there")))},
             {"sub/a.html", qCompress(titledPage("A"))}},
            contents);
}
