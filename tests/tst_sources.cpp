// SPDX-License-Identifier: MIT
#include "sources/pagefiles.h"
#include "sources/sources.h"

#include "library/helplibrary.h"
#include "library/helpset.h"
#include "pages/links.h"
#include "pages/pagefile.h"
#include "testfiles.h"

#include <QDir>
#include <QTest>
#include <QtEndian>

#include <functional>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

/// Rows, one a line, indented by their level: title, "=", page within the folder.
QString rowsOf(const HelpSet& set, const QString& folder)
{
    QString text;
    const std::function<void(std::span<HelpContentsListViewItem* const>, int)> add = [&](auto rows,
                                                                                         int level) {
        for (const auto* row : rows) {
            const auto& record = *row->contentsItem;
            const QString page = record.target == EntryTarget::Page ? record.page() : QString();
            text += QString(level, u'.') + row->text + u'=' + QString(page).remove(folder) + u'\n';
            add(row->children, level + 1);
        }
    };
    add(set.topRows(), 0);
    return text;
}

QString keywordsOf(const HelpSet& set, const QString& folder)
{
    QStringList lines;
    for (const auto& item : set.indexItems()) {
        lines += item.keyword + u'=' + item.link().remove(folder);
    }
    lines.sort();
    return lines.join(u'\n');
}

QByteArray page(const QByteArray& title, const QByteArray& body = "text")
{
    return "<html><head><title>" + title + "</title></head><body>" + body + "</body></html>";
}

QByteArray linkTo(const QByteArray& page, const QByteArray& title)
{
    return "<a href=\"" + page + "\">" + title + "</a>";
}

/// What zlib makes of it.
QByteArray packed(const QByteArray& bytes)
{
    return qCompress(bytes).sliced(4);
}

void appendBigEndian(QByteArray& bytes, quint32 number)
{
    const quint32 value = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void appendRow(QByteArray& bytes, quint32 depth, const QString& page, const QString& title)
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

void makeQch(const QString& file, const QByteArray& folder, const std::vector<QchPage>& pages,
             const QByteArray& contents)
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
    ::sqlite3_close(database);
}

void makeQch(const QString& file, const QByteArray& folder, const QByteArray& other = {})
{
    QByteArray contents;
    appendRow(contents, 0, u"index.html"_s, u"Guide"_s);
    appendRow(contents, 1, u"sub/a.html#x"_s, u"Ä"_s);
    makeQch(file, folder,
            {{"index.html", qCompress(page("Start", linkTo(other, "there")))},
             {"sub/a.html", qCompress(page("A"))}},
            contents);
}

std::unique_ptr<HelpSet> load(const QString& name)
{
    const QString file = placeOf(name).helpSet;
    auto set = std::make_unique<HelpSet>(file, openSource(file));
    set->adoptIndex(readIndexEntries(set->indexTask()));
    return set;
}

} // namespace

class SourcesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void devhelp_data();
    void devhelp();
    void qtHelp();
    void linksBetweenPackages();
    void folder_data();
    void folder();
    void place_data();
    void place();
    void registered();
    void damaged_data();
    void damaged();
};

void SourcesTest::devhelp_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray book =
        "<?xml version='1.0'?><book xmlns='http://www.devhelp.net/book' title='A &amp; B' "
        "link='index.html'><chapters><sub name='One' link='1.html'><sub name='Deep' "
        "link='1.html#d'/></sub><sub name='Gone' link='x/https://e.org'/></chapters><functions>";
    const QByteArray second =
        book + "<keyword type='function' name='f&#160;()' link='1.html#f'/></functions></book>";
    const QByteArray first = book + "<function name='f ()' link='1.html#f'/></functions></book>";
    QTest::newRow("version 2") << u"a.devhelp2"_s << second;
    QTest::newRow("version 1") << u"a.devhelp"_s << first;
    QTest::newRow("by what is in it") << u"a.book"_s << second;
    // A gzip file around the deflated bytes, which stand between two bytes of zlib's and four of its check.
    const QByteArray deflated = packed(second).sliced(2).chopped(4);
    QByteArray gzip = QByteArray::fromHex("1f8b0800000000000003") + deflated;
    quint32 crc = 0xFFFFFFFF;
    for (const char c : second) {
        crc ^= quint8(c);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    crc = qToLittleEndian(~crc);
    const quint32 size = qToLittleEndian(quint32(second.size()));
    gzip.append(reinterpret_cast<const char*>(&crc), 4).append(reinterpret_cast<const char*>(&size), 4);
    QTest::newRow("compressed") << u"a.devhelp2.gz"_s << gzip;
}

void SourcesTest::devhelp()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, bytes);
    TemporaryFiles files;
    const QString file = files.write(name, bytes);
    const auto set = load(file);
    QCOMPARE(rowsOf(*set, files.path({})), u"A & B=index.html\n.One=1.html\n..Deep=1.html#d\n"_s);
    QCOMPARE(keywordsOf(*set, files.path({})), u"f ()=1.html#f"_s);
    QCOMPARE(set->ownTitle(), u"A & B"_s);
    QCOMPARE(sourceTitle(file), u"A & B"_s);
    QVERIFY(set->problems().empty() && set->isReadable());
}

void SourcesTest::qtHelp()
{
    TemporaryFiles files;
    const QString file = files.path(u"one.qch"_s);
    makeQch(file, "one");
    const auto set = load(file);
    QCOMPARE(rowsOf(*set, file), u"Guide 1.2=/one/index.html\n.Ä=/one/sub/a.html#x\n"_s);
    QCOMPARE(keywordsOf(*set, file), u"word1=/one/index.html#here\nword2=/one/sub/a.html#here"_s);
    QCOMPARE(sourceTitle(file), u"Guide 1.2"_s);
    const QString packedPage = file + u"/one/sub/a.html"_s;
    QVERIFY(isPageFile(packedPage));
    QVERIFY(!isPageFile(file + u"/one/sub/b.html"_s));
    QVERIFY(!isPageFile(file + u"/one"_s));
    QCOMPARE(readPageFile(packedPage).value(), page("A"));
    QCOMPARE(readPageFile(packedPage, 6).value(), QByteArray("<html>"));
    QCOMPARE(locatePage(packedPage + u"#x"_s).anchor, u"x"_s);
    QCOMPARE(readPage(packedPage).value().text, QString::fromUtf8(page("A")));
    QCOMPARE(readablePageName(packedPage), u"one.qch › a.html"_s);
    QCOMPARE(readablePageName(file), file);
    // It is told when the package is another one.
    const auto before = pageFileState(packedPage);
    QVERIFY(QFile::remove(file));
    QVERIFY(!pageFileState(packedPage));
    makeQch(file, "one");
    QVERIFY(before && pageFileState(packedPage));
}

void SourcesTest::linksBetweenPackages()
{
    TemporaryFiles files;
    makeQch(files.path(u"one.qch"_s), "one");
    makeQch(files.path(u"other-name.qch"_s), "two");
    const QString from = files.path(u"one.qch/one/index.html"_s);
    const QString there = files.path(u"other-name.qch/two/sub/a.html"_s);
    QCOMPARE(resolveLink(from, u"sub/a.html#x"_s), files.path(u"one.qch/one/sub/a.html#x"_s));
    QCOMPARE(resolveLink(from, u"../two/sub/a.html#x"_s), there + u"#x"_s);
    QCOMPARE(resolveLink(from, u"qthelp://org.example.two.9/two/sub/a.html"_s), there);
    QCOMPARE(resolveLink(from, u"qthelp://org.example.one.12/one/sub/a.html#y"_s),
             files.path(u"one.qch/one/sub/a.html#y"_s));
    QCOMPARE(resolveLink(from, u"../none/a.html"_s), files.path(u"one.qch/none/a.html"_s));
}

using Pages = QList<QPair<QString, QByteArray>>;

static void addPlainFolders()
{
    QTest::newRow("nothing but pages")
        << Pages{{u"b.html"_s, page("B")}, {u"sub/c.html"_s, page("C")}, {u"a.html"_s, "no title"}}
        << u"set=a.html\n.B=b.html\n.sub=\n..C=sub/c.html\n"_s << QString();
    QTest::newRow("lists of a contents page with headings, and a page in none")
        << Pages{{u"index.html"_s,
                  page("Start", "<h2>Part</h2><ul><li>" + linkTo("a.html", "A") + "<ul><li>" +
                                    linkTo("b.html", "B") + "</li></ul></li></ul><h2>Rest</h2><ol><li>" +
                                    linkTo("c%20c.html#x", "C") + "<li>" + linkTo("http://e.org/", "E") +
                                    "<li>" + linkTo("gone.html", "G") + "</ol>")},
                 {u"a.html"_s, page("a")},
                 {u"b.html"_s, page("b")},
                 {u"c c.html"_s, page("c")},
                 {u"d.html"_s, page("&lt;D&gt; &amp; E")}}
        << u"Start=index.html\n.Part=\n..A=a.html\n...B=b.html\n.Rest=\n..C=c c.html#x\n.Other pages=\n..<D> & E=d.html\n"_s
        << QString();
}

static void addSphinx()
{
    const QByteArray inventory =
        "# Sphinx inventory version 2\n# Project: p\n# Version: 1\n# zlib\n" +
        packed("os.path py:module 0 a.html#$ -\nthe start std:label -1 a.html#s Start\n"
               "two words std:term 1 b.html#term-x -\nnone py:class 1 none.html#$ -\n");
    QTest::newRow("Sphinx: contents of pages of contents, inventory")
        << Pages{{u"index.html"_s,
                  page("Doc", "<div class='related'><ul><li>" + linkTo("genindex.html", "index") +
                                  "</ul></div><div class='toctree-wrapper compound'><ul><li>" +
                                  linkTo("a.html", "A") + "</ul></div>")},
                 {u"a.html"_s, page("a", "<div class=\"toctree-wrapper\"><ul><li>" + linkTo("b.html", "B") +
                                             "</ul></div>")},
                 {u"b.html"_s, page("b")},
                 {u"genindex.html"_s, page("Index")},
                 {u"objects.inv"_s, inventory}}
        << u"Doc=index.html\n.A=a.html\n..B=b.html\n.Other pages=\n..Index=genindex.html\n"_s
        << u"os.path=a.html#os.path\ntwo words=b.html#term-x"_s;
}

static void addScriptLists()
{
    QTest::newRow("Doxygen: tree in files, search")
        << Pages{{u"index.html"_s, page("Lib")},
                 {u"c.html"_s, page("C")},
                 {u"navtreedata.js"_s,
                  "/* x */ var NAVTREE =\n[\n  [ \"Lib\", \"index.html\", [\n    [ \"Classes &lt;T&gt;\", "
                  "null, \"classes_dup\" ] ] ]\n];\nvar NAVTREEINDEX = [\n];"},
                 {u"classes_dup.js"_s,
                  "var classes_dup =\n[ [ \"C\", \"c.html\", [ [ \"size\", \"c.html#s\", null ] ] ] ];"},
                 {u"search/all_0.js"_s,
                  "var searchData=\n[\n  ['it\\'s_0',['it&#39;s',['../c.html#i',1,'C']]]\n];"}}
        << u"Lib=index.html\n.Classes <T>=\n..C=c.html\n"_s << u"C=c.html\nit's=c.html#i\nsize=c.html#s"_s;
    QTest::newRow("javadoc")
        << Pages{{u"index.html"_s, page("API")},
                 {u"m/p/q/T.html"_s, page("T")},
                 {u"m/p/q/package-summary.html"_s, page("q")},
                 {u"package-search-index.js"_s,
                  R"(packageSearchIndex = [{"m":"m","l":"p.q"}];updateSearchResults();)"},
                 {u"type-search-index.js"_s,
                  R"(typeSearchIndex = [{"p":"p.q","l":"T"},{"l":"All","u":"x"}];)"},
                 {u"member-search-index.js"_s,
                  R"_(memberSearchIndex = [{"p":"p.q","c":"T","l":"f(int)"}];)_"}}
        << u"API=index.html\n.p.q=m/p/q/package-summary.html\n..T=m/p/q/T.html\n"_s
        << u"T=m/p/q/T.html\nf(int) (T)=m/p/q/T.html#f(int)"_s;
}

static void addIndexPage()
{
    QByteArray entries;
    QString keywords;
    for (int i = 0; i < 12; ++i) {
        const QByteArray number = QByteArray::number(10 + i);
        entries += "<dt>word" + number + ", " + linkTo("a.html#" + number, "Section") + "</dt>";
        keywords += u"word%1=a.html#%1\n"_s.arg(10 + i);
    }
    QTest::newRow("an index page")
        << Pages{{u"index.html"_s, page("Book", "<div class='toc'><dl><dt>" + linkTo("a.html", "A") + "<dt>" +
                                                    linkTo("bookindex.html", "Index") + "</dl></div>")},
                 {u"a.html"_s, page("a")},
                 {u"bookindex.html"_s, page("Index", "<dl>" + entries + "</dl>")}}
        << u"Book=index.html\n.A=a.html\n.Index=bookindex.html\n"_s << keywords.trimmed();
}

void SourcesTest::folder_data()
{
    QTest::addColumn<Pages>("pages");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("keywords");
    addPlainFolders();
    addSphinx();
    addScriptLists();
    addIndexPage();
}

void SourcesTest::folder()
{
    QFETCH(const Pages, pages);
    QFETCH(const QString, rows);
    QFETCH(const QString, keywords);
    TemporaryFiles files;
    for (const auto& [name, bytes] : pages) {
        QVERIFY(QDir().mkpath(QFileInfo(files.path(u"set/"_s + name)).path()));
        files.write(u"set/"_s + name, bytes);
    }
    const auto set = load(files.path(u"set"_s));
    QCOMPARE(rowsOf(*set, files.path(u"set/"_s)), rows);
    QCOMPARE(keywordsOf(*set, files.path(u"set/"_s)), keywords);
    QVERIFY(set->problems().empty());
}

void SourcesTest::place_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("helpSet");
    QTest::addColumn<QString>("page");
    QTest::newRow("contents file") << u"a.cnt"_s << u"a.cnt"_s << QString();
    QTest::newRow("page below") << u"doc/x/y/p.html"_s << u"doc"_s << u"doc/x/y/p.html"_s;
    QTest::newRow("start page") << u"doc/index.html"_s << u"doc"_s << u"doc/index.html"_s;
    QTest::newRow("folder") << u"doc"_s << u"doc"_s << QString();
    QTest::newRow("folder of a package") << u"package"_s << u"package/html"_s << QString();
    QTest::newRow("page of a book") << u"book/p.html"_s << u"book/b.devhelp2"_s << u"book/p.html"_s;
    QTest::newRow("anything else") << u"none"_s << u"none"_s << QString();
}

void SourcesTest::place()
{
    QFETCH(const QString, name);
    QFETCH(const QString, helpSet);
    QFETCH(const QString, page);
    TemporaryFiles files;
    for (const auto* path : {"doc/index.html", "doc/x/y/p.html", "package/html/index.html", "book/p.html",
                             "book/b.devhelp2", "a.cnt"}) {
        const QString file = QString::fromLatin1(path);
        QVERIFY(QDir().mkpath(QFileInfo(files.path(file)).path()));
        files.write(file, "x");
    }
    const auto found = placeOf(files.path(name));
    QCOMPARE(found.helpSet, files.path(helpSet));
    QCOMPARE(found.page, page.isNull() ? QString() : files.path(page));
}

void SourcesTest::registered()
{
    TemporaryFiles files;
    const QByteArray root = files.path({}).toUtf8();
    QVERIFY(QDir().mkpath(files.path(u"html"_s)));
    files.write(u"html/index.html"_s, page("Start"));
    files.write(u"a.txt"_s, "text");
    const QByteArray head =
        "Document: d\nTitle: The Document\nAbstract: of\n something\nSection: Programming\n\n";
    const QString html =
        files.write(u"h"_s, head + "Format: HTML\nIndex: " + root + "html/index.html\nFiles: x\n");
    QCOMPARE(placeOf(html).helpSet, files.path(u"html"_s));
    QCOMPARE(sourceTitle(html), u"The Document"_s);
    const QString text = files.write(u"t"_s, head + "Format: Text\nFiles: " + root + "a*.txt\n");
    QCOMPARE(rowsOf(*load(text), files.path({})), u"The Document=a.txt\n"_s);
    const QString pdf = files.write(u"p"_s, head + "Format: PDF\nFiles: " + root + "a.pdf\n");
    QCOMPARE(load(pdf)->problems().size(), size_t(1));
}

void SourcesTest::damaged_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a picture") << u"a.png"_s << QByteArray("\x89PNG\r\n\x1a\n\0\0", 10);
    QTest::newRow("no database") << u"a.qch"_s << QByteArray("text");
    QTest::newRow("another database")
        << u"a.qch"_s << QByteArray("SQLite format 3").leftJustified(4096, '\0');
    QTest::newRow("no book") << u"a.devhelp2"_s << QByteArray("<html/>");
    QTest::newRow("cut book") << u"a.devhelp2"_s
                              << QByteArray("<book title='a'><chapters><sub name='a' link='b'>");
    QTest::newRow("entities") << u"a.devhelp2"_s
                              << QByteArray("<!DOCTYPE book [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;'>]><book "
                                            "title='&b;'><chapters/></book>");
    QTest::newRow("deep book") << u"a.devhelp2"_s
                               << "<book title='a'>" + QByteArray("<sub name='a'>").repeated(100'000);
    QTest::newRow("no gzip") << u"a.devhelp2.gz"_s << QByteArray("\x1f\x8b\x08 damaged");
}

/// Whatever is damaged says so, with the file's name.
void SourcesTest::damaged()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, bytes);
    TemporaryFiles files;
    const QString file = files.write(name, bytes);
    const auto set = load(file);
    QVERIFY(!set->problems().empty());
    QCOMPARE(set->problems().front().file, file);
    QVERIFY(!set->problems().front().message.isEmpty());
    QVERIFY(!isPageFile(file + u"/one/index.html"_s));
}

QTEST_GUILESS_MAIN(SourcesTest)
#include "tst_sources.moc"
