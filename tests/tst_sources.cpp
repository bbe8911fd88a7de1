// SPDX-License-Identifier: MIT
#include "sources/pagefiles.h"
#include "sources/sources.h"

#include "library/helplibrary.h"
#include "library/helpset.h"
#include "pages/links.h"
#include "pages/pagefile.h"
#include "qchfiles.h"
#include "testfiles.h"

#include <QDir>
#include <QTest>

#include <functional>

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

/// The file that a test's row has.
QString writeRow(TemporaryFiles& files)
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, bytes);
    return files.write(name, bytes);
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
    void endlessPackage();
    void folder_data();
    void folder();
    void endlessIndexPages();
    void titlesBehindTheTree();
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
    QTest::newRow("compressed") << u"a.devhelp2.gz"_s << gzipped(second);
}

void SourcesTest::devhelp()
{
    TemporaryFiles files;
    const QString file = writeRow(files);
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
    QCOMPARE(readPageFile(packedPage).value(), titledPage("A"));
    QCOMPARE(readPageFile(packedPage, 6).value(), QByteArray("<html>"));
    QCOMPARE(locatePage(packedPage + u"#x"_s).anchor, u"x"_s);
    QCOMPARE(readPage(packedPage).value().text, QString::fromUtf8(titledPage("A")));
    QCOMPARE(readablePageName(packedPage), u"one.qch › a.html"_s);
    QCOMPARE(readablePageName(file), file);
    // It is told when the package is another one.
    const auto before = pageFileState(packedPage);
    QVERIFY(QFile::remove(file));
    QVERIFY(!pageFileState(packedPage));
    makeQch(file, "one");
    QVERIFY(before && pageFileState(packedPage));
}

/// Few bytes of a package can stand for many texts.
void SourcesTest::endlessPackage()
{
    TemporaryFiles files;
    const QString file = files.path(u"one.qch"_s);
    makeQch(file, "one", {{QByteArray(1'000'000, 'p'), {}}}, {},
            "WITH RECURSIVE n(i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < 400) INSERT INTO "
            "IndexTable SELECT i, 'word' || i, '', 1, 1, '' FROM n;");
    const auto set = load(file);
    QVERIFY(set->indexItems().size() > 100 && set->indexItems().size() < 300);
    QVERIFY(set->problems().back().message.contains(u"far too much"));
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
    QVERIFY(QDir().mkpath(files.path(u"share/qt6/doc"_s)));
    makeQch(files.path(u"share/qt6/doc/far.qch"_s), "far");
    qputenv("XDG_DATA_DIRS", files.path(u"share"_s).toUtf8());
    const QString far = files.path(u"share/qt6/doc/far.qch/far/sub/a.html"_s);
    QCOMPARE(resolveLink(from, u"../far/sub/a.html"_s), far);
    QCOMPARE(resolveLink(files.write(u"p.html"_s, "x"), u"qthelp://x/far/sub/a.html#y"_s), far + u"#y"_s);
    QCOMPARE(resolveLink(from, u"../none/a.html"_s), files.path(u"one.qch/none/a.html"_s));
}

using Pages = QList<QPair<QString, QByteArray>>;

static void addPlainFolders()
{
    QTest::newRow("nothing but pages")
        << Pages{{u"b.html"_s, titledPage("B")},
                 {u"sub/c.html"_s, titledPage("C")},
                 {u"a.html"_s, "no title"}}
        << u"set=a.html\n.B=b.html\n.sub=\n..C=sub/c.html\n"_s << u"B=b.html\nC=sub/c.html"_s;
    QTest::newRow("lists of a contents page with headings, and a page in none")
        << Pages{{u"index.html"_s,
                  titledPage("Start",
                             "<h2>Part</h2><ul><li>" + linkTo("a.html", "A") + "<ul><li>" +
                                 linkTo("b.html", "B") + "</li></ul></li></ul><h2>Rest</h2><ol><li>" +
                                 linkTo("c%20c.html#x", "C") + "<li>" + linkTo("http://e.org/", "E") +
                                 "<li>" + linkTo("gone.html", "G") + "</ol>")},
                 {u"a.html"_s, titledPage("a")},
                 {u"b.html"_s, titledPage("b")},
                 {u"c c.html"_s, titledPage("c")},
                 {u"d.html"_s, titledPage("&lt;D&gt; &amp; E")}}
        << u"Start=index.html\n.Part=\n..A=a.html\n...B=b.html\n.Rest=\n..C=c c.html#x\n.Other pages=\n..<D> & E=d.html\n"_s
        << u"<D> & E=d.html\nA=a.html\nB=b.html\nC=c c.html#x"_s;
}

static void addFoldersInFolders()
{
    const QByteArray list =
        "<ul><li>" + linkTo("x.html", "X") + "<li>" + linkTo("../a.html", "Back") + "</ul>";
    QTest::newRow("first pages of folders have their contents")
        << Pages{{u"index.html"_s, titledPage("All", "<ul><li>" + linkTo("one/index.html", "One") + "<li>" +
                                                         linkTo("a.html", "A") + "</ul>")},
                 {u"a.html"_s, titledPage("a")},
                 {u"one/index.html"_s, titledPage("one", list)},
                 {u"one/x.html"_s, titledPage("x")}}
        << u"All=index.html\n.One=one/index.html\n..X=one/x.html\n.A=a.html\n"_s
        << u"A=a.html\nOne=one/index.html\nX=one/x.html"_s;
}

static void addTexinfo()
{
    const QByteArray sections = "<ul class=\"section-toc\"><li>" + linkTo("Deep.html", "Deep") + "</ul>";
    QTest::newRow("texinfo: contents of chapters")
        << Pages{{u"index.html"_s, titledPage("Manual", "<div class='contents'><ul><li>" +
                                                            linkTo("Top.html", "Top") + "</ul></div>")},
                 {u"Top.html"_s, titledPage("top", sections)},
                 {u"Deep.html"_s, titledPage("deep")}}
        << u"Manual=index.html\n.Top=Top.html\n..Deep=Deep.html\n"_s << u"Deep=Deep.html\nTop=Top.html"_s;
}

static void addSphinx()
{
    const QByteArray inventory =
        "# Sphinx inventory version 2\n# Project: p\n# Version: 1\n# zlib\n" +
        packed("os.path py:module 0 a.html#$ -\nthe start std:label -1 a.html#s Start\n"
               "two words std:term 1 b.html#term-x -\nnone py:class 1 none.html#$ -\n");
    QTest::newRow("Sphinx: contents of pages of contents, inventory")
        << Pages{{u"index.html"_s,
                  titledPage("Doc", "<div class='related'><ul><li>" + linkTo("genindex.html", "index") +
                                        "</ul></div><div class='toctree-wrapper compound'><ul><li>" +
                                        linkTo("a.html", "A") + "</ul></div>")},
                 {u"a.html"_s, titledPage("a", "<div class=\"toctree-wrapper\"><ul><li>" +
                                                   linkTo("b.html", "B") + "</ul></div>")},
                 {u"b.html"_s, titledPage("b")},
                 {u"genindex.html"_s, titledPage("Index")},
                 {u"objects.inv"_s, inventory}}
        << u"Doc=index.html\n.A=a.html\n..B=b.html\n.Other pages=\n..Index=genindex.html\n"_s
        << u"os.path=a.html#os.path\ntwo words=b.html#term-x"_s;
}

static void addScriptLists()
{
    QTest::newRow("Doxygen: tree in files, search")
        << Pages{{u"index.html"_s, titledPage("Lib")},
                 {u"c.html"_s, titledPage("C")},
                 {u"navtreedata.js"_s,
                  "/* x */ var NAVTREE =\n[\n  [ \"Lib\", \"index.html\", [\n    [ \"Classes &lt;T&gt;\", "
                  "null, \"classes_dup\" ] ] ]\n];\nvar NAVTREEINDEX = [\n];"},
                 {u"classes_dup.js"_s,
                  "var classes_dup =\n[ [ \"C\", \"c.html\", [ [ \"size\", \"c.html#s\", null ] ] ] ];"},
                 {u"search/all_0.js"_s,
                  "var searchData=\n[\n  ['it\\'s_0',['it&#39;s',['../c.html#i',1,'C']]]\n];"}}
        << u"Lib=index.html\n.Classes <T>=\n..C=c.html\n"_s << u"C=c.html\nit's=c.html#i\nsize=c.html#s"_s;
    QTest::newRow("javadoc")
        << Pages{{u"index.html"_s, titledPage("API")},
                 {u"m/p/q/T.html"_s, titledPage("T")},
                 {u"m/p/q/package-summary.html"_s, titledPage("q")},
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
        << Pages{{u"index.html"_s,
                  titledPage("Book", "<div class='toc'><dl><dt>" + linkTo("a.html", "A") + "<dt>" +
                                         linkTo("bookindex.html", "Index") + "</dl></div>")},
                 {u"a.html"_s, titledPage("a")},
                 {u"bookindex.html"_s, titledPage("Index", "<dl>" + entries + "</dl>")}}
        << u"Book=index.html\n.A=a.html\n.Index=bookindex.html\n"_s << keywords.trimmed();
}

void SourcesTest::folder_data()
{
    QTest::addColumn<Pages>("pages");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("keywords");
    addPlainFolders();
    addFoldersInFolders();
    addTexinfo();
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

/// No text is looked at again for each of the elements that it stands in, nor for each of its characters.
void SourcesTest::endlessIndexPages()
{
    constexpr qsizetype many = 200'000;
    const QByteArray link = linkTo("index.html", "there");
    TemporaryFiles files;
    files.write(u"index.html"_s, titledPage("Book", link));
    files.write(u"a-index.html"_s, titledPage("a", QByteArray("<section><li>").repeated(many) + link));
    files.write(u"b-index.html"_s, titledPage("b", "<li>" + QByteArray(10 * many, ',') + link));
    files.write(u"toc.html"_s,
                titledPage("c", QByteArray("<div><h2>").repeated(many) + linkTo("a-index.html", "a") +
                                    linkTo("b-index.html", "b")));
    const auto set = load(files.path({}));
    QCOMPARE(set->records().size(), 5U);
}

/// Pages are called by their files until they have been read.
void SourcesTest::titlesBehindTheTree()
{
    TemporaryFiles files;
    files.write(u"set/a.html"_s, titledPage("First"));
    files.write(u"set/b.html"_s, titledPage("Second"));
    HelpLibrary library;
    const QString folder = files.path(u"set"_s);
    int retitled = 0;
    connect(&library, &HelpLibrary::rowsRetitled, this, [&] { ++retitled; });
    QStringList atFirst;
    library.readContents(
        folder, [] { return nullptr; },
        [&](const HelpLibrary::Loaded& loaded) {
            atFirst = rowsOf(library.helpSet(*loaded.root), folder).split(u'\n');
        });
    QTRY_VERIFY(!library.isBusy());
    QCOMPARE(atFirst.value(1), u".b.html=/b.html"_s);
    QCOMPARE(retitled, 1);
    QCOMPARE(rowsOf(library.helpSet(*library.roots().front()), folder).split(u'\n').value(1),
             u".Second=/b.html"_s);
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
    QTest::newRow("folder that passes on") << u"moved"_s << u"moved/html"_s << QString();
    QTest::newRow("page in it") << u"moved/html/index.html"_s << u"moved/html"_s
                                << u"moved/html/index.html"_s;
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
    files.write(u"moved/index.html"_s, R"(<META HTTP-EQUIV="REFRESH" CONTENT="0;url=html/index.html#x">)");
    files.write(u"moved/html/index.html"_s, "x");
    const auto found = placeOf(files.path(name));
    QCOMPARE(found.helpSet, files.path(helpSet));
    QCOMPARE(found.page, page.isNull() ? QString() : files.path(page));
}

void SourcesTest::registered()
{
    TemporaryFiles files;
    const QByteArray root = files.path({}).toUtf8();
    QVERIFY(QDir().mkpath(files.path(u"html"_s)));
    files.write(u"html/index.html"_s, titledPage("Start"));
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
    TemporaryFiles files;
    const QString file = writeRow(files);
    const auto set = load(file);
    QVERIFY(!set->problems().empty());
    QCOMPARE(set->problems().front().file, file);
    QVERIFY(!set->problems().front().message.isEmpty());
    QVERIFY(!isPageFile(file + u"/one/index.html"_s));
}

QTEST_GUILESS_MAIN(SourcesTest)
#include "tst_sources.moc"
