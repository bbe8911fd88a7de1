// SPDX-License-Identifier: MIT
#include "formats/contentsreader.h"
#include "formats/paths.h"

#include "testfiles.h"

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

/// Adds a line for the row and each one behind and below it: a blank per level, the title, the page unless it
/// is the bare "D/", and the help set.
void render(const ContentsOutline& outline, int row, const QString& indentation, QStringList& lines)
{
    for (; row >= 0; row = outline.entries[size_t(row)].nextSibling) {
        const auto& entry = outline.entries[size_t(row)];
        const bool isBook =
            entry.target == EntryTarget::Nothing && outline.page(entry) == extractRightDir(outline.files[0]);
        const QString set =
            entry.helpSet < 0 ? QString() : u" [" + outline.titles[size_t(entry.helpSet)] + u']';
        lines += indentation + entry.title + (isBook ? QString() : u" = " + outline.page(entry)) + set;
        render(outline, entry.firstChild, indentation + u' ', lines);
    }
}

QString rendered(const ContentsOutline& outline, const TemporaryFiles& files)
{
    QStringList lines;
    render(outline, outline.firstTop, {}, lines);
    return files.shortened(lines.join(u'\n'));
}

/// Where the problems are: file and line, and "!" behind errors.
QString problems(const ContentsOutline& outline, const TemporaryFiles& files)
{
    QStringList places;
    for (const auto& problem : outline.problems) {
        const bool isError = problem.severity == Problem::Severity::Error;
        places += u"%1:%2%3"_s.arg(problem.file).arg(problem.line).arg(isError ? u"!"_s : u""_s);
    }
    return files.shortened(places.join(u' '));
}

void addNesting()
{
    addRow("back by several levels", "a\n b\n  c\n   d\n  e\n f\n  g\nh", "a\n b\n  c\n   d\n  e\n f\n  g\nh",
           "");
    addRow("a tab is one level", "a\n\tb\n \tc\n\t d\n\t\t\te", "a\n b\n  c\n  d\n   e", "");
    addRow("other white space does not indent", "a\n\u00A0b\n\u000Cc", "a\nb\nc", "");
    addRow("blanks and directives between", "\n  \na\n\t\n b\n:x\n     :title x\n\n c", "a\n b\n:x\n c", "");
    addRow("too deep: the rest is not read", "a\n b\n\n   c\nd", "a\n b", "D/a.cnt:4!");
    addRow("first entry indented by one", " a\nb\n c", "a\nb\n c", "D/a.cnt:1");
    addRow("first two entries indented by one", "\ta\n b", "a\n b", "D/a.cnt:1");
    addRow("first entry indented by two", "  a\nb", "", "D/a.cnt:1!");
    addRow("CRLF", "a\r\n b\r\n\r\nc\r\n  d", "a\n b\nc", "D/a.cnt:5!");
    addRow("CR", "a\r b\r\rc\r  d\r", "a\n b\nc", "D/a.cnt:5!");
    addRow("mixed line ends", "a\r b\n\rc\n  d\r\n", "a\n b\nc", "D/a.cnt:5!");
}

void addSplitting()
{
    addRow("white space around both parts", "a \t =\t b.html  ", "a = D/b.html", "");
    addRow("first equals sign", "a=b=c.html = d", "a = D/b=c.html = d", "");
    addRow("empty parts", "=b.html\na =\n=", " = D/b.html\na\n", "");
    addRow("no contents files", "a = x.CNT\nb = x.cnt.html\nc = x.cnt#y",
           "a = D/x.CNT\nb = D/x.cnt.html\nc = D/x.cnt#y", "");
    addRow("the directory goes first", "a = /b.html\nb = ../c.html", "a = D//b.html\nb = D/../c.html", "");
    addRow("no directives", ": title = a\n:Title = b", ": title = D/a\n:Title = D/b", "");
    addRow("entries before the title", "a\n   :title=T\nb", "a\nb [T]", "");
    addRow("further letters", ":titles of this = T = U\na", "a [T = U]", "");
    addRow("first title with equals sign", ":title U\n:title = T\n:title = V\na", "a [T]", "");
    addRow("an empty title is a title", ":title =\n:title = T\na", "a []", "");
}

void addIncludes()
{
    addRow("children", "a\n b = b.cnt\n c\n== b.cnt\nx\n y\nz", "a\n b = b.cnt\n  x\n   y\n  z\n c", "");
    addRow("deeper lines first", "a = b.cnt\n c\n d\ne\n== b.cnt\nx\ny", "a = b.cnt\n c\n d\n x\n y\ne", "");
    addRow("relative", "a = s/b.cnt\n== s/b.cnt\nb = c.cnt\nd = d\n== s/c.cnt\nx = x\ny",
           "a = s/b.cnt\n b = c.cnt\n  x = D/s/x\n  y = D/s/\n d = D/s/d", "");
    addRow("dot steps", "a = s/.././b.cnt\n== b.cnt\nx = x\n== s/c\n", "a = s/.././b.cnt\n x = D/x", "");
    addRow("twice", "a = b.cnt\nb = b.cnt\n== b.cnt\nx", "a = b.cnt\n x\nb = b.cnt\n x", "");
    addRow("titles", ":title = A\na = b.cnt\nc\n== b.cnt\nx\n:title = B\ny",
           "a = b.cnt [A]\n x\n y [B]\nc [A]", "");
    addRow("too deep inside", "a = b.cnt\nc\n== b.cnt\nx\n  y\nz", "a = b.cnt\n x\nc", "D/b.cnt:2!");
    addRow("first one indented", "a = b.cnt\nc\n== b.cnt\n\n x\ny", "a = b.cnt\nc", "D/b.cnt:2!");
    addRow("missing", "a\n\nb = c.cnt\n d", "a\nb = c.cnt\n d", "D/a.cnt:3");
    addRow("directory", "a = d.cnt\n== d.cnt/x\n", "a = d.cnt", "D/a.cnt:1");
    addRow("no home directory", "a = ~/a.cnt", "a = ~/a.cnt", "D/a.cnt:1");
    addRow("itself", "a = ././a.cnt\nb", "a = ././a.cnt\nb", "D/a.cnt:1");
    addRow("each other", "a = b.cnt\n== b.cnt\nb = c.cnt\n== c.cnt\nc = a.cnt\nd = b.cnt\ne",
           "a = b.cnt\n b = c.cnt\n  c = a.cnt\n  d = b.cnt\n  e", "D/c.cnt:1 D/c.cnt:2");
}

void addMerging()
{
    addRow("other title", "a = b.cnt\n== b.cnt\nA\n a", "a = b.cnt\n A\n  a", "");
    addRow("two top entries", "a = b.cnt\n== b.cnt\na\n x\nb", "a = b.cnt\n a\n  x\n b", "");
    addRow("merged", "a = b.cnt\n== b.cnt\n:title = B\n:index\na = b.html", "a = D/b.html [B]", "");
    addRow("a top entry behind a fault counts", "a = b.cnt\n== b.cnt\na\n   x\nb", "a = b.cnt\n a",
           "D/b.cnt:2!");
    addRow("merged, deeper lines first", "a = b.cnt\n c\nd\n== b.cnt\na = b\n x\n y",
           "a = D/b\n c\n x\n y\nd", "");
    addRow("merged through two files", "a = b.cnt\n== b.cnt\n:title = B\na = c.cnt\n b\n== c.cnt\na = c\n c",
           "a = D/c\n b [B]\n c", "");
    addRow("merged with a missing one", "a = b.cnt\n== b.cnt\na = c.cnt", "a = c.cnt", "D/b.cnt:1");
    addRow("merged each other", "a = b.cnt\n== b.cnt\na = a.cnt\n b", "a = a.cnt\n b", "D/b.cnt:1");
}

} // namespace

class ContentsReaderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void example()
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
        QCOMPARE(rendered(outline, files), uR"(
Introduction = D/intro.html [Sample Guide]
Getting Started [Sample Guide]
 Installing = D/start/install.html [Sample Guide]
 First Steps = D/start/first.html [Sample Guide]
  Menus = D/start/menus.html [Sample Guide]
 Settings = D/start/settings.html [Sample Guide]
Reference = D/ref/index.html [Sample Reference]
 Commands = D/ref/commands.html [Sample Reference]
 Options = D/ref/options.html [Sample Reference])"_s.sliced(1));
        const auto& merged = outline.entries[6];
        QVERIFY(merged.target == EntryTarget::Page && merged.line == 2);
        QCOMPARE(files.shortened(outline.files[size_t(merged.file)]), u"D/reference.cnt"_s);
        QVERIFY(outline.readable && outline.problems.empty());
    }

    void outlines_data()
    {
        addTexts("input", "expected", "expectedProblems");
        addNesting();
        addSplitting();
        addIncludes();
        addMerging();
    }

    void outlines()
    {
        QFETCH(const QString, input);
        const TemporaryFiles files(input.toUtf8());
        const auto outline = ContentsReader().read(files.first());
        QTEST(rendered(outline, files), "expected");
        QTEST(problems(outline, files), "expectedProblems");
        QCOMPARE(outline.malformedFiles.size(), problems(outline, files).count(u'!'));
    }

    void setAsAWhole_data()
    {
        addTexts("input", "expected");
        addRow("nothing", "a = missing.cnt", "title -, first page -");
        addRow("a book is a first page", "a\nb = b.html", "title -, first page a");
        addRow("an empty title counts", ":title =\na = b.cnt\n== b.cnt\n:title = B", "title , first page -");
        addRow("first title in reading order", "a = b.cnt\n c\n:title = A\n== b.cnt\n:title = B\nb\nd",
               "title B, first page b");
        addRow("index before the title", ":index = a.idx\n:title = A",
               "title A, first page -, index D/a.idx -");
        addRow("first index with equals sign", ":title = A\n:index a\n :indexes=b.idx = c\n:index = d.idx",
               "title A, first page -, index D/b.idx = c A");
        addRow("an empty index counts", ":index =\n:index = a.idx", "title -, first page -, index D/ -");
        addRow("absolute index", ":index = /x/a.idx", "title -, first page -, index /x/a.idx -");
        addRow("drive letter", ":index = c:a.idx", "title -, first page -, index c:a.idx -");
        addRow("indexes in reading order",
               ":title = A\na = s/b.cnt\n:index = a.idx\n== s/b.cnt\n:index = b.idx\nb",
               "title A, first page b, index D/s/b.idx -, index D/a.idx A");
    }

    void setAsAWhole()
    {
        QFETCH(const QString, input);
        const TemporaryFiles files(input.toUtf8());
        const auto outline = ContentsReader().read(files.first());
        const auto shown = [](const QString& text) { return text.isNull() ? u"-"_s : text; };
        const QString first =
            outline.firstPage < 0 ? QString() : outline.entries[size_t(outline.firstPage)].title.toString();
        QString found = u"title %1, first page %2"_s.arg(shown(outline.title), shown(first));
        for (const auto& file : outline.indexFiles) {
            found += u", index %1 %2"_s.arg(file.fileName, shown(file.title));
        }
        QTEST(files.shortened(found), "expected");
    }

    void encodings_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        addRow("UTF-8", "gr\xC3\xBC\xC3\x9F\n x"_ba);
        addRow("UTF-8 with mark", "\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F\n x"_ba);
        addRow("UTF-8 with mark, cut off", "\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F\n x\n \xC3"_ba);
        addRow("Latin-1", "gr\xFC\xDF\n x"_ba);
        addRow("Latin-1, ending like UTF-8", "gr\xFC\xDF\n x\n \xC3"_ba);
        addRow("UTF-16, little end first", QByteArray::fromHex("fffe67007200fc00df000a0020007800"));
        addRow("UTF-16, big end first", QByteArray::fromHex("feff0067007200fc00df000a00200078"));
    }

    void encodings()
    {
        QFETCH(const QByteArray, bytes);
        TemporaryFiles files;
        const auto outline = ContentsReader().read(files.write(u"a.cnt"_s, bytes));
        QCOMPARE(rendered(outline, files).split(u'\n').first(2), (QStringList{u"gr\u00FC\u00DF"_s, u" x"_s}));
        QCOMPARE(outline.entries.size(), bytes.endsWith('\xC3') ? 3U : 2U);
    }

    void includeByOtherNames()
    {
        TemporaryFiles files(
            "a = s/link.cnt\n== s/b.cnt\n:index = b.idx\nx = x.html\ny = c.cnt\n== c.cnt\nz = z.html");
        QVERIFY(QFile::link(u"../a.cnt"_s, files.path(u"s/link.cnt"_s)));
        const auto linked = ContentsReader().read(files.first());
        QCOMPARE(rendered(linked, files), u"a = s/link.cnt"_s);
        QCOMPARE(problems(linked, files), u"D/a.cnt:1"_s);

        // An absolute name leaves the base directory as it is.
        const auto name = QFile::encodeName(files.path(u"s/b.cnt"_s));
        const auto absolute = ContentsReader().read(files.write(u"abs.cnt"_s, "a = " + name));
        QCOMPARE(rendered(absolute, files), u"a = D/s/b.cnt\n x = D/x.html\n y = c.cnt\n  z = D/z.html"_s);
        QCOMPARE(files.shortened(absolute.indexFiles[0].fileName), u"D/b.idx"_s);
    }

    void unreadableFiles()
    {
        const TemporaryFiles files("== d/x\n");
        QCOMPARE(::mkfifo(QFile::encodeName(files.path(u"pipe.cnt"_s)).constData(), 0600), 0);
        for (const auto& name : {u"d"_s, u"missing.cnt"_s, u"pipe.cnt"_s, u"d/x/y.cnt"_s}) {
            const auto outline = ContentsReader().read(files.path(name));
            QVERIFY2(!outline.readable && outline.entries.empty(), qUtf8Printable(name));
            QCOMPARE(problems(outline, files), u"D/%1:0!"_s.arg(name));
        }
    }

    void limits()
    {
        TemporaryFiles files;
        for (int i = 0; i <= 65; ++i) {
            files.write(u"%1.cnt"_s.arg(i), u"row %1 = %2.cnt"_s.arg(i).arg(i + 1).toUtf8());
        }
        const auto included = ContentsReader().read(files.path(u"0.cnt"_s));
        QCOMPARE(included.entries.size(), 65U);
        QCOMPARE(problems(included, files), u"D/64.cnt:1"_s);

        constexpr int levels = 10000;
        QByteArray bytes;
        for (int i = 0; i < levels; ++i) {
            bytes += QByteArray(i, ' ') + "a\n";
        }
        const auto deep = ContentsReader().read(files.write(u"deep.cnt"_s, bytes + "last"));
        QCOMPARE(deep.entries.size(), size_t(levels) + 1);
        QCOMPARE(deep.entries[levels - 1].parent, levels - 2);
        QCOMPARE(deep.entries[0].nextSibling, levels);
    }
};

QTEST_GUILESS_MAIN(ContentsReaderTest)
#include "tst_contentsreader.moc"
