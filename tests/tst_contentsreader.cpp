// SPDX-License-Identifier: MIT
#include "formats/contentsreader.h"

#include "testfiles.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

/// One line per row: a dot per level, the title, the page, the help set's title; -1 as the row for all rows.
QString rendered(const ContentsOutline& outline, const TemporaryFiles& files)
{
    QStringList lines;
    QString dots;
    int row = outline.firstTop;
    while (row >= 0) {
        const auto& entry = outline.entries[size_t(row)];
        const QString set = entry.helpSet < 0 ? QString() : outline.titles[size_t(entry.helpSet)];
        lines += dots + entry.title + u" = " + entry.page + (set.isNull() ? set : u" [" + set + u']');
        if (entry.firstChild >= 0) {
            dots += u". ";
            row = entry.firstChild;
            continue;
        }
        while (row >= 0 && outline.entries[size_t(row)].nextSibling < 0) {
            row = outline.entries[size_t(row)].parent;
            dots.chop(2);
        }
        row = row < 0 ? row : outline.entries[size_t(row)].nextSibling;
    }
    return files.shortened(lines.join(u'\n'));
}

/// One line per problem: file, line and severity.
QString problems(const ContentsOutline& outline, const TemporaryFiles& files)
{
    QStringList lines;
    for (const auto& problem : outline.problems) {
        const bool isError = problem.severity == Problem::Severity::Error;
        lines += u"%1:%2 %3"_s.arg(problem.file).arg(problem.line).arg(isError ? u"error"_s : u"warning"_s);
    }
    return files.shortened(lines.join(u'\n'));
}

void addOutlineColumns()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("expectedProblems");
}

void addOutline(const char* name, const char* input, const char* expected, const char* expectedProblems = "")
{
    QTest::newRow(name) << QByteArray(input) << QString::fromUtf8(expected)
                        << QString::fromUtf8(expectedProblems);
}

} // namespace

class ContentsReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void example();
    void nesting_data();
    void nesting() { checkOutline(); }
    void splitting_data();
    void splitting() { checkOutline(); }
    void directives_data();
    void directives() { checkOutline(); }
    void includes_data();
    void includes() { checkOutline(); }
    void merging_data();
    void merging() { checkOutline(); }
    void brokenIncludes_data();
    void brokenIncludes() { checkOutline(); }
    void setTitle_data();
    void setTitle();
    void indexFiles_data();
    void indexFiles();
    void firstPage_data();
    void firstPage();
    void encodings_data();
    void encodings();
    void lineEnds_data();
    void lineEnds();
    void includeThroughLink();
    void includeByAbsoluteName();
    void malformedFiles();
    void unreadableFiles();
    void includeLimit();
    void deepOutline();

private:
    static void checkOutline();
};

void ContentsReaderTest::checkOutline()
{
    QFETCH(const QByteArray, input);
    QFETCH(const QString, expected);
    QFETCH(const QString, expectedProblems);
    const TemporaryFiles files(input);
    const auto outline = ContentsReader().read(files.first());
    QVERIFY(outline.readable);
    QCOMPARE(rendered(outline, files), expected);
    QCOMPARE(problems(outline, files), expectedProblems);
}

void ContentsReaderTest::example()
{
    const TemporaryFiles files(R"(== guide.cnt
:title = Sample Guide
:index = guide.idx

Introduction = intro.html
Getting Started
 Installing = start/install.html
 First Steps = start/first.html
  Menus = start/menus.html
 Settings = start/settings.html
Reference = reference.cnt
== reference.cnt
:title = Sample Reference
Reference = ref/index.html
 Commands = ref/commands.html
 Options = ref/options.html
)");
    const auto outline = ContentsReader().read(files.first());
    QCOMPARE(rendered(outline, files), expectedText(R"(
Introduction = D/intro.html [Sample Guide]
Getting Started = D/ [Sample Guide]
. Installing = D/start/install.html [Sample Guide]
. First Steps = D/start/first.html [Sample Guide]
. . Menus = D/start/menus.html [Sample Guide]
. Settings = D/start/settings.html [Sample Guide]
Reference = D/ref/index.html [Sample Reference]
. Commands = D/ref/commands.html [Sample Reference]
. Options = D/ref/options.html [Sample Reference]
)"));
    QCOMPARE(outline.title, u"Sample Guide"_s);
    QCOMPARE(outline.indexFiles.size(), 1U);
    QCOMPARE(files.shortened(outline.indexFiles[0].fileName), u"D/guide.idx"_s);
    QCOMPARE(outline.indexFiles[0].title, u"Sample Guide"_s);
    QCOMPARE(outline.entries[size_t(outline.firstPage)].title, u"Introduction"_s);
    QCOMPARE(outline.entries[0].target, EntryTarget::Page);
    QCOMPARE(outline.entries[1].target, EntryTarget::Nothing);
    QCOMPARE(outline.entries[6].target, EntryTarget::Page);
    QCOMPARE(outline.entries[6].line, 2);
    QCOMPARE(files.shortened(outline.files[size_t(outline.entries[6].file)]), u"D/reference.cnt"_s);
    QVERIFY(outline.problems.empty());
}

void ContentsReaderTest::nesting_data()
{
    addOutlineColumns();
    addOutline("back by several levels", "== a.cnt\na\n b\n  c\n   d\n  e\n f\n  g\nh",
               "a = D/\n. b = D/\n. . c = D/\n. . . d = D/\n. . e = D/\n. f = D/\n. . g = D/\nh = D/");
    addOutline("a tab is one level as a blank is", "== a.cnt\na\n\tb\n \tc\n\t d\n\t\t\te",
               "a = D/\n. b = D/\n. . c = D/\n. . d = D/\n. . . e = D/");
    addOutline("no other white space indents",
               "== a.cnt\na\n\xC2\xA0"
               "b\n\x0C"
               "c",
               "a = D/\nb = D/\nc = D/");
    addOutline("blank lines and directives change nothing",
               "== a.cnt\n\n   \na\n\t\n b\n:unknown\n     :title no value\n\n c",
               "a = D/\n. b = D/\n:unknown = D/\n. c = D/");
    addOutline("too deep: the rest is not read", "== a.cnt\na\n b\n\n   c\nd", "a = D/\n. b = D/",
               "D/a.cnt:4 error");
    addOutline("first entry indented by one", "== a.cnt\n a\nb\n c", "a = D/\nb = D/\n. c = D/",
               "D/a.cnt:1 warning");
    addOutline("an entry as much indented as an indented first one is its child", "== a.cnt\n\ta\n b",
               "a = D/\n. b = D/", "D/a.cnt:1 warning");
    addOutline("first entry indented by two", "== a.cnt\n  a\nb", "", "D/a.cnt:1 error");
    addOutline("nothing", "== a.cnt", "");
}

void ContentsReaderTest::splitting_data()
{
    addOutlineColumns();
    addOutline("white space around both parts", "== a.cnt\na \t =\t b.html  ", "a = D/b.html");
    addOutline("at the first equals sign", "== a.cnt\na=b=c.html = d", "a = D/b=c.html = d");
    addOutline("without a title", "== a.cnt\n=b.html", " = D/b.html");
    addOutline("without a page", "== a.cnt\na =", "a = D/");
    addOutline("neither", "== a.cnt\n=", " = D/");
    addOutline("pages that only look like contents files",
               "== a.cnt\na = x.CNT\nb = x.Cnt\nc = x.cnt.html\nd = x.cnt#top",
               "a = D/x.CNT\nb = D/x.Cnt\nc = D/x.cnt.html\nd = D/x.cnt#top");
    addOutline("the directory stands before every page", "== a.cnt\na = /etc/b.html\nb = ../c.html\nc = ~/d",
               "a = D//etc/b.html\nb = D/../c.html\nc = D/~/d");
    addOutline("a colon that begins no directive", "== a.cnt\n: title = a\n:Title = b\n:indx = c",
               ": title = D/a\n:Title = D/b\n:indx = D/c");
}

void ContentsReaderTest::directives_data()
{
    addOutlineColumns();
    addOutline("entries before the title have none", "== a.cnt\na\n:title = T\nb", "a = D/\nb = D/ [T]");
    addOutline("indented, without blanks", "== a.cnt\n   :title=T\na", "a = D/ [T]");
    addOutline("further letters before the equals sign", "== a.cnt\n:titles of this = T = U\na",
               "a = D/ [T = U]");
    addOutline("without equals sign ignored, the next one counts",
               "== a.cnt\n:title U\n:title = T\n:title = V\na", "a = D/ [T]");
    addOutline("an empty title is a title", "== a.cnt\n:title =\n:title = T\na", "a = D/ []");
    addOutline("an included file has a title of its own",
               "== a.cnt\n:title = A\na = b.cnt\nc\n== b.cnt\nx\n:title = B\ny",
               "a = b.cnt [A]\n. x = D/\n. y = D/ [B]\nc = D/ [A]");
}

void ContentsReaderTest::includes_data()
{
    addOutlineColumns();
    addOutline("children of the including row", "== a.cnt\na\n b = b.cnt\n c\n== b.cnt\nx\n y\nz",
               "a = D/\n. b = b.cnt\n. . x = D/\n. . . y = D/\n. . z = D/\n. c = D/");
    addOutline("deeper lines go before the included rows", "== a.cnt\na = b.cnt\n c\n d\ne\n== b.cnt\nx\ny",
               "a = b.cnt\n. c = D/\n. d = D/\n. x = D/\n. y = D/\ne = D/");
    addOutline("relative to the including file",
               "== a.cnt\na = sub/b.cnt\n== sub/b.cnt\nb = c.cnt\nd = d.html\n== sub/c.cnt\nx = x.html\ny",
               "a = sub/b.cnt\n. b = c.cnt\n. . x = D/sub/x.html\n. . y = D/sub/\n. d = D/sub/d.html");
    addOutline("dot steps", "== sub/a.cnt\na = ../other/../b.cnt\n== b.cnt\nx = x.html\n== other/c.cnt\n",
               "a = ../other/../b.cnt\n. x = D/x.html");
    addOutline("the same file twice", "== a.cnt\na = b.cnt\nb = b.cnt\n== b.cnt\nx",
               "a = b.cnt\n. x = D/\nb = b.cnt\n. x = D/");
    addOutline("without entries", "== a.cnt\na = b.cnt\n b\n== b.cnt\n:title = B", "a = b.cnt\n. b = D/");
    addOutline("a name as short as it gets", "== a.cnt\na = .cnt\n== .cnt\nx", "a = .cnt\n. x = D/");
    addOutline("too deep in an included file: the including one goes on",
               "== a.cnt\na = b.cnt\nc\n== b.cnt\nx\n  y\nz", "a = b.cnt\n. x = D/\nc = D/",
               "D/b.cnt:2 error");
    addOutline("first entry of an included file indented", "== a.cnt\na = b.cnt\nc\n== b.cnt\n\n x\ny",
               "a = b.cnt\nc = D/", "D/b.cnt:2 error");
}

void ContentsReaderTest::merging_data()
{
    addOutlineColumns();
    addOutline("another title", "== a.cnt\na = b.cnt\n== b.cnt\nA\n x", "a = b.cnt\n. A = D/\n. . x = D/");
    addOutline("two top entries", "== a.cnt\na = b.cnt\n== b.cnt\na\n x\nb",
               "a = b.cnt\n. a = D/\n. . x = D/\n. b = D/");
    addOutline("only the first entry is asked", "== a.cnt\na = b.cnt\n== b.cnt\nb\n a",
               "a = b.cnt\n. b = D/\n. . a = D/");
    addOutline("directives are no entries", "== a.cnt\na = b.cnt\n== b.cnt\n:title = B\n:index\na = b.html",
               "a = D/b.html [B]");
    addOutline("an unindented entry after a fault counts", "== a.cnt\na = b.cnt\n== b.cnt\na\n   x\nb",
               "a = b.cnt\n. a = D/", "D/b.cnt:2 error");
    addOutline("deeper lines go before the merged rows",
               "== a.cnt\na = b.cnt\n c\nd\n== b.cnt\na = b.html\n x\n y",
               "a = D/b.html\n. c = D/\n. x = D/\n. y = D/\nd = D/");
    addOutline(
        "through two files",
        "== a.cnt\n:title = A\na = b.cnt\n== b.cnt\n:title = B\na = c.cnt\n b\n== c.cnt\na = c.html\n c",
        "a = D/c.html\n. b = D/ [B]\n. c = D/");
    addOutline("with an including line that fails", "== a.cnt\na = b.cnt\n== b.cnt\na = sub/missing.cnt",
               "a = sub/missing.cnt", "D/b.cnt:1 warning");
    addOutline("empty titles are equal", "== a.cnt\n= b.cnt\n== b.cnt\n= b.html", " = D/b.html");
}

void ContentsReaderTest::brokenIncludes_data()
{
    addOutlineColumns();
    addOutline("missing", "== a.cnt\na\n\nb = c.cnt\n d", "a = D/\nb = c.cnt\n. d = D/", "D/a.cnt:3 warning");
    addOutline("a directory", "== a.cnt\na = d.cnt\n== d.cnt/x\n", "a = d.cnt", "D/a.cnt:1 warning");
    addOutline("a name without directory expansion", "== a.cnt\na = ~/a.cnt", "a = ~/a.cnt",
               "D/a.cnt:1 warning");
    addOutline("itself", "== a.cnt\na = a.cnt\nb", "a = a.cnt\nb = D/", "D/a.cnt:1 warning");
    addOutline("itself by another name", "== sub/a.cnt\na = ../sub/./a.cnt", "a = ../sub/./a.cnt",
               "D/sub/a.cnt:1 warning");
    addOutline("each other", "== a.cnt\na = b.cnt\n== b.cnt\nb = c.cnt\n== c.cnt\nc = a.cnt\nd = b.cnt\ne",
               "a = b.cnt\n. b = c.cnt\n. . c = a.cnt\n. . d = b.cnt\n. . e = D/",
               "D/c.cnt:1 warning\nD/c.cnt:2 warning");
    addOutline("each other, merged", "== a.cnt\na = b.cnt\n== b.cnt\na = a.cnt\n b", "a = a.cnt\n. b = D/",
               "D/b.cnt:1 warning");
}

void ContentsReaderTest::setTitle_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QByteArray("== a.cnt\na") << QString();
    QTest::newRow("empty") << QByteArray("== a.cnt\n:title =\na = b.cnt\n== b.cnt\n:title = B") << u""_s;
    QTest::newRow("directives only") << QByteArray("== a.cnt\n:title = A") << u"A"_s;
    QTest::newRow("of an included file") << QByteArray("== a.cnt\na = b.cnt\n== b.cnt\n:title = B") << u"B"_s;
    QTest::newRow("the included file comes first")
        << QByteArray("== a.cnt\na = b.cnt\n:title = A\n== b.cnt\n:title = B") << u"B"_s;
}

void ContentsReaderTest::setTitle()
{
    QFETCH(const QByteArray, input);
    QFETCH(const QString, expected);
    const TemporaryFiles files(input);
    const auto outline = ContentsReader().read(files.first());
    QCOMPARE(outline.title, expected);
    QCOMPARE(outline.title.isNull(), expected.isNull());
}

void ContentsReaderTest::indexFiles_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("before the title")
        << QByteArray("== a.cnt\n:index = a.idx\n:title = A") << u"D/a.idx (none)"_s;
    QTest::newRow("first one with equals sign")
        << QByteArray("== a.cnt\n:title = A\n:index a\n :indexes=b.idx = c\n:index = d.idx")
        << u"D/b.idx = c A"_s;
    QTest::newRow("empty, later ones ignored")
        << QByteArray("== a.cnt\n:index =\n:index = a.idx\na") << u"D/ (none)"_s;
    QTest::newRow("absolute") << QByteArray("== a.cnt\n:index = /x/a.idx") << u"/x/a.idx (none)"_s;
    QTest::newRow("drive letter") << QByteArray("== a.cnt\n:index = c:a.idx") << u"c:a.idx (none)"_s;
    QTest::newRow("in reading order")
        << QByteArray("== a.cnt\n:title = A\na = s/b.cnt\n:index = a.idx\n== s/b.cnt\n:index = b.idx")
        << u"D/s/b.idx (none)\nD/a.idx A"_s;
    QTest::newRow("not behind a fault") << QByteArray("== a.cnt\na\n  b\n:index = a.idx") << u""_s;
}

void ContentsReaderTest::indexFiles()
{
    QFETCH(const QByteArray, input);
    QFETCH(const QString, expected);
    const TemporaryFiles files(input);
    QStringList found;
    for (const auto& file : ContentsReader().read(files.first()).indexFiles) {
        found += file.fileName + u' ' + (file.title.isNull() ? u"(none)"_s : file.title);
    }
    QCOMPARE(files.shortened(found.join(u'\n')), expected);
}

void ContentsReaderTest::firstPage_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QByteArray("== a.cnt\na = missing.cnt") << u"(none)"_s;
    QTest::newRow("a book counts") << QByteArray("== a.cnt\na\nb = b.html") << u"a"_s;
    QTest::newRow("of an included file, not the first row below it")
        << QByteArray("== a.cnt\na = b.cnt\n c = c.html\n== b.cnt\nb = b.html\nd") << u"b"_s;
    QTest::newRow("behind a missing file") << QByteArray("== a.cnt\na = m.cnt\n b") << u"b"_s;
}

void ContentsReaderTest::firstPage()
{
    QFETCH(const QByteArray, input);
    QFETCH(const QString, expected);
    const TemporaryFiles files(input);
    const auto outline = ContentsReader().read(files.first());
    QCOMPARE(outline.firstPage < 0 ? u"(none)"_s : outline.entries[size_t(outline.firstPage)].title,
             expected);
}

void ContentsReaderTest::encodings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("UTF-8") << QByteArray("gr\xC3\xBC\xC3\x9F\n x");
    QTest::newRow("UTF-8 with mark") << QByteArray("\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F\n x");
    QTest::newRow("UTF-8 with mark and a false byte")
        << QByteArray("\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F\n x\n \xFF");
    QTest::newRow("Latin-1") << QByteArray("gr\xFC\xDF\n x");
    QTest::newRow("Latin-1, cut off like UTF-8") << QByteArray("gr\xFC\xDF\n x\n \xC3");
    QTest::newRow("UTF-16, little end first") << QByteArray::fromHex("fffe67007200fc00df000a0020007800");
    QTest::newRow("UTF-16, big end first") << QByteArray::fromHex("feff0067007200fc00df000a00200078");
}

void ContentsReaderTest::encodings()
{
    QFETCH(const QByteArray, bytes);
    TemporaryFiles files;
    const auto outline = ContentsReader().read(files.write(u"a.cnt"_s, bytes));
    QVERIFY(outline.entries.size() >= 2);
    QCOMPARE(outline.entries[0].title, u"gr\u00FC\u00DF"_s);
    QCOMPARE(outline.entries[1].title, u"x"_s);
    QCOMPARE(outline.entries[1].parent, 0);
}

void ContentsReaderTest::lineEnds_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("LF") << QByteArray("a\n b\n\nc\n  d\n");
    QTest::newRow("CRLF") << QByteArray("a\r\n b\r\n\r\nc\r\n  d");
    QTest::newRow("CR") << QByteArray("a\r b\r\rc\r  d\r");
    QTest::newRow("mixed") << QByteArray("a\n b\r\n\rc\r  d");
    QTest::newRow("CR after LF") << QByteArray("a\r b\n\rc\n  d\r\n");
}

void ContentsReaderTest::lineEnds()
{
    QFETCH(const QByteArray, bytes);
    TemporaryFiles files;
    const auto outline = ContentsReader().read(files.write(u"a.cnt"_s, bytes));
    QCOMPARE(rendered(outline, files), u"a = D/\n. b = D/\nc = D/"_s);
    QCOMPARE(problems(outline, files), u"D/a.cnt:5 error"_s);
}

void ContentsReaderTest::includeThroughLink()
{
    const TemporaryFiles files("== a.cnt\na = s/link.cnt\nb\n== s/x\n");
    QVERIFY(QFile::link(u"../a.cnt"_s, files.path(u"s/link.cnt"_s)));
    const auto outline = ContentsReader().read(files.first());
    QCOMPARE(rendered(outline, files), u"a = s/link.cnt\nb = D/"_s);
    QCOMPARE(problems(outline, files), u"D/a.cnt:1 warning"_s);
}

void ContentsReaderTest::includeByAbsoluteName()
{
    TemporaryFiles files("== s/b.cnt\n:index = b.idx\nx = x.html\ny = c.cnt\n== c.cnt\nz = z.html");
    const auto name = files.path(u"s/b.cnt"_s);
    const auto outline = ContentsReader().read(files.write(u"a.cnt"_s, "a = " + QFile::encodeName(name)));
    QCOMPARE(rendered(outline, files), u"a = D/s/b.cnt\n. x = D/x.html\n. y = c.cnt\n. . z = D/z.html"_s);
    QCOMPARE(files.shortened(outline.indexFiles[0].fileName), u"D/b.idx"_s);
}

void ContentsReaderTest::malformedFiles()
{
    const TemporaryFiles files("== a.cnt\na = b.cnt\nb = c.cnt\nc = d.cnt\n   e\n"
                               "== b.cnt\n x\n== c.cnt\nx\n== d.cnt\nx\n  y");
    const auto found = ContentsReader().read(files.first()).malformedFiles;
    QCOMPARE(files.shortened(found.join(u' ')), u"D/b.cnt D/d.cnt D/a.cnt"_s);
}

void ContentsReaderTest::unreadableFiles()
{
    const TemporaryFiles files("== d/x\n");
    QCOMPARE(::mkfifo(QFile::encodeName(files.path(u"pipe.cnt"_s)).constData(), 0600), 0);
    for (const auto& name : {u"d"_s, u"missing.cnt"_s, u"pipe.cnt"_s, u"d/x/y.cnt"_s}) {
        const auto outline = ContentsReader().read(files.path(name));
        QVERIFY2(!outline.readable, qUtf8Printable(name));
        QVERIFY(outline.entries.empty());
        QCOMPARE(problems(outline, files), u"D/%1:0 error"_s.arg(name));
    }
}

void ContentsReaderTest::includeLimit()
{
    TemporaryFiles files;
    for (int i = 0; i <= 65; ++i) {
        const QByteArray bytes = "row" + QByteArray::number(i) + " = " + QByteArray::number(i + 1) + ".cnt";
        files.write(u"%1.cnt"_s.arg(i), bytes);
    }
    const auto outline = ContentsReader().read(files.path(u"0.cnt"_s));
    QCOMPARE(outline.entries.size(), 65U);
    QCOMPARE(problems(outline, files), u"D/64.cnt:1 warning"_s);
}

void ContentsReaderTest::deepOutline()
{
    constexpr int levels = 10000;
    QByteArray bytes;
    for (int i = 0; i < levels; ++i) {
        bytes += QByteArray(i, ' ') + "a\n";
    }
    bytes += "last";
    TemporaryFiles files;
    const auto outline = ContentsReader().read(files.write(u"a.cnt"_s, bytes));
    QCOMPARE(outline.entries.size(), size_t(levels) + 1);
    QCOMPARE(outline.entries[levels - 1].parent, levels - 2);
    QCOMPARE(outline.entries[0].nextSibling, levels);
}

QTEST_GUILESS_MAIN(ContentsReaderTest)
#include "tst_contentsreader.moc"
