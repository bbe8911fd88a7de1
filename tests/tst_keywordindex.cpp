// SPDX-License-Identifier: MIT
#include "formats/indexreader.h"
#include "library/helplibrary.h"
#include "library/helpset.h"

#include "testfiles.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Loads the contents files among `files` in the order in which they were described.
void load(HelpLibrary& library, const TemporaryFiles& files)
{
    for (const auto& name : files.names().filter(u".cnt"_s)) {
        library.loadContents(files.path(name), nullptr);
    }
    library.buildIndex();
}

/// One line per row: its text and the number of distinct topics when there are several.
QString rows(const KeywordIndex& index)
{
    QStringList lines;
    for (const auto& row : index.rows()) {
        const auto topics = index.topics(row.indexItem).size();
        lines += row.text() + (topics == 1 ? QString() : u" (%1)"_s.arg(topics));
    }
    return lines.join(u'\n');
}

void addRows(const char* name, const char* input, const char* expected)
{
    QTest::newRow(name) << QByteArray(input) << QString::fromUtf8(expected);
}

} // namespace

class KeywordIndexTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readingTable();
    void reading_data();
    void reading();
    void order_data();
    void order() { checkRows(); }
    void grouping_data();
    void grouping() { checkRows(); }
    void subKeywords_data();
    void subKeywords() { checkRows(); }
    void topics_data();
    void topics();
    void linksBetweenRowsAndEntries();
    void removal();
    void lookFor_data();
    void lookFor();

private:
    static void checkRows();
};

void KeywordIndexTest::readingTable()
{
    TemporaryFiles files;
    const auto lines = readIndex(files.write(u"demo.idx"_s, R"(Printing = print.html
	Page setup = print.html#setup

    Margins=margins.html
Fonts)"));
    QVERIFY(lines.ok());
    QStringList found;
    for (const auto& line : lines.value()) {
        found +=
            u"%1 | %2 | %3"_s.arg(line.keyword, line.link,
                                  line.parent < 0 ? u"none"_s : lines.value()[size_t(line.parent)].keyword);
    }
    QCOMPARE(files.shortened(found.join(u'\n')), expectedText(R"(
Printing | D/print.html | none
Page setup | D/print.html#setup | Printing
Margins | D/margins.html | Printing
Fonts | D/ | none
)"));
    QCOMPARE(lines.value()[2].line, 4);
    QVERIFY(lines.value()[0].hasPage && !lines.value()[3].hasPage);
}

void KeywordIndexTest::reading_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("further equals signs") << QByteArray("a = a=b.html") << u"a=D/a=b.html"_s;
    QTest::newRow("nothing before the equals sign") << QByteArray(" = b.html") << u"=D/b.html"_s;
    QTest::newRow("nothing behind it") << QByteArray("a =  ") << u"a=D/"_s;
    QTest::newRow("absolute page") << QByteArray("a = /b.html") << u"a=D//b.html"_s;
    QTest::newRow("directives are keywords") << QByteArray(":title = T") << u":title=D/T"_s;
    QTest::newRow("CRLF and CR") << QByteArray("a=1\r\n\r\n b=2\rc=3") << u"a=D/1;a/b=D/2;c=D/3"_s;
    QTest::newRow("Latin-1") << QByteArray("\xE4=\xDF") << u"\u00E4=D/\u00DF"_s;
    QTest::newRow("first line indented") << QByteArray("\ta=1\nb=2\n c=3") << u"a=D/1;b=D/2;b/c=D/3"_s;
    QTest::newRow("one level of nesting") << QByteArray("a=1\n b=2\n\t  c=3") << u"a=D/1;a/b=D/2;a/c=D/3"_s;
    QTest::newRow("no other white space indents") << QByteArray("a=1\n\x0C\x62=2") << u"a=D/1;b=D/2"_s;
}

void KeywordIndexTest::reading()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, expected);
    TemporaryFiles files;
    const auto lines = readIndex(files.write(u"a.idx"_s, bytes));
    QVERIFY(lines.ok());
    QStringList found;
    for (const auto& line : lines.value()) {
        const QString parent =
            line.parent < 0 ? QString() : lines.value()[size_t(line.parent)].keyword + u'/';
        found += parent + line.keyword + u'=' + line.link;
    }
    QCOMPARE(files.shortened(found.join(u';')), expected);
}

void KeywordIndexTest::checkRows()
{
    QFETCH(const QByteArray, input);
    QFETCH(const QString, expected);
    const TemporaryFiles files(input);
    HelpLibrary library;
    load(library, files);
    QCOMPARE(rows(library.keywordIndex()), expected);
}

void KeywordIndexTest::order_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("expected");
    addRows("upper case first", "== a.cnt\n:index = a.idx\n== a.idx\napple\nZoom\n_x\n1",
            "1\nZoom\n_x\napple");
    addRows("by code units",
            "== a.cnt\n:index = a.idx\n== a.idx\n\xEF\xBD\x9E\n\xF0\x9F\x98\x80\n\xC3\xA4\nz",
            "z\n\xC3\xA4\n\xF0\x9F\x98\x80\n\xEF\xBD\x9E");
    addRows("an empty keyword", "== a.cnt\n:index = a.idx\n== a.idx\nb\n= a.html\n c", "\n    c\nb");
    addRows("one sequence of all help sets",
            "== a.cnt\n:index = a.idx\n== b.cnt\n:index = b.idx\n== a.idx\nb\nd\n== b.idx\nc\na",
            "a\nb\nc\nd");
    addRows("a missing index file", "== a.cnt\n:index = x.idx\n== b.cnt\n:index = b.idx\n== b.idx\na", "a");
    addRows("nothing", "== a.cnt\na", "");
}

void KeywordIndexTest::grouping_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("expected");
    addRows("letter case, far apart", "== a.cnt\n:index = a.idx\n== a.idx\nprint=1\nZoom=2\nPRINT=3\nPrint=4",
            "PRINT (3)\nZoom");
    addRows("two help sets", "== a.cnt\n:title = A\n:index = a.idx\n== a.idx\na=1\n== b.cnt\n:index = a.idx",
            "a (2)");
    addRows("a keyword and a sub-keyword stay apart",
            "== a.cnt\n:index = a.idx\n== a.idx\nFont=1\nText=2\n Font=3", "Font\nText\n    Font");
    addRows("an orphan is a keyword", "== a.cnt\n:index = a.idx\n== a.idx\n Font=1\nfont=2\n Size=3",
            "Font (2)\n    Size");
    addRows("sub-keywords of one parent", "== a.cnt\n:index = a.idx\n== a.idx\nFont\n Size=1\n size=2",
            "Font\n    Size (2)");
    addRows("sub-keywords of like parents",
            "== a.cnt\n:index = a.idx\n== a.idx\nFont=1\n Size=1\nFONT=2\n Size=2", "FONT (2)\n    Size (2)");
    addRows("like parents of other help sets",
            "== a.cnt\n:title = A\n:index = a.idx\n== a.idx\nFont\n Size=1\n"
            "== b.cnt\n:title = B\n:index = b.idx\n== b.idx\nfont\n Size=2",
            "Font (2)\n    Size\n    Size");
    addRows("like parents of help sets with like titles",
            "== a.cnt\n:title = Guide\n:index = a.idx\n== a.idx\nFont\n Size=1\n"
            "== b.cnt\n:title = GUIDE\n:index = b.idx\n== b.idx\nfont\n Size=2",
            "Font\n    Size (2)");
    addRows("no title is like an empty one",
            "== a.cnt\n:index = a.idx\n:title = A\n== a.idx\nFont\n Size=1\n"
            "== b.cnt\n:title =\n:index = b.idx\n== b.idx\nFont\n Size=2",
            "Font\n    Size (2)");
}

void KeywordIndexTest::subKeywords_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QString>("expected");
    addRows("last one first", "== a.cnt\n:index = a.idx\n== a.idx\na\n y\n X\n z\nb",
            "a\n    z\n    y\n    X\nb");
    addRows("under the merged row", "== a.cnt\n:index = a.idx\n== a.idx\nfont=1\n a\nFont=2\n b\nfont=3\n c",
            "Font (3)\n    c\n    b\n    a");
    addRows("equal ones of several parents", "== a.cnt\n:index = a.idx\n== a.idx\na\n x=1\nb\n x=2\na\n x=3",
            "a\n    x (2)\nb\n    x");
    addRows("of several help sets, the last loaded first",
            "== a.cnt\n:title = A\n:index = a.idx\n== a.idx\nk\n x=1\n"
            "== b.cnt\n:title = B\n:index = b.idx\n== b.idx\nk\n x=2\n x=3",
            "k (2)\n    x (2)\n    x");
}

void KeywordIndexTest::topics_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one") << QByteArray("k=1") << u"1 A"_s;
    QTest::newRow("load order, not sort order") << QByteArray("k=2\nK=1\nk=3") << u"2 A,1 A,3 A"_s;
    QTest::newRow("same page") << QByteArray("k=1\nK=1\nk=2\nk=1") << u"1 A,2 A"_s;
    QTest::newRow("other place of the page") << QByteArray("k=1#a\nk=1#A") << u"1#a A,1#A A"_s;
}

void KeywordIndexTest::topics()
{
    QFETCH(const QByteArray, lines);
    QFETCH(const QString, expected);
    TemporaryFiles files(
        QByteArray("== a.cnt\n:title = A\n:index = i.idx\n== A.cnt\n:title = a\n:index = i.idx\n== i.idx\n") +
        lines);
    HelpLibrary library;
    load(library, files);
    const auto& index = library.keywordIndex();
    QStringList found;
    for (const auto* topic : index.topics(index.rows()[0].indexItem)) {
        found += topic->link.section(u'/', -1) + u' ' + topic->title;
    }
    QCOMPARE(found.join(u','), expected);

    // A help set of another title has topics of its own.
    files.write(u"c.cnt"_s, ":title = C\n:index = i.idx");
    library.loadContents(files.path(u"c.cnt"_s), nullptr);
    library.buildIndex();
    const auto* item = index.rows()[0].indexItem;
    QCOMPARE(index.getIndexByGroupCount(item->group), 2 * found.size());
}

void KeywordIndexTest::linksBetweenRowsAndEntries()
{
    const TemporaryFiles files("== a.cnt\n:index = a.idx\n== a.idx\nfont=1\n a=2\nFont=3\n A=4\nzoom=5");
    HelpLibrary library;
    load(library, files);
    const auto& index = library.keywordIndex();
    QStringList found;
    for (const auto& item : library.helpSet(*library.roots()[0]).indexItems()) {
        QVERIFY(item.listBoxItem != nullptr);
        found += item.listBoxItem->text() + u':' + QString::number(item.listBoxItem - index.rows().data());
    }
    QCOMPARE(found.join(u','), u"Font:0,    A:1,Font:0,    A:1,zoom:2"_s);
    const auto* font = index.rows()[0].indexItem;
    QCOMPARE(index.subKeywords(*font).size(), 1U);
    QVERIFY(index.subKeywords(*index.rows()[1].indexItem).empty());
    QVERIFY(index.subKeywords(*index.rows()[2].indexItem).empty());
}

void KeywordIndexTest::removal()
{
    const TemporaryFiles files("== a.cnt\n:title = A\n:index = a.idx\n== a.idx\nk=1\n x\nonly a\n"
                               "== b.cnt\n:title = B\n:index = b.idx\n== b.idx\nK=2\n y");
    HelpLibrary library;
    load(library, files);
    QCOMPARE(rows(library.keywordIndex()), u"K (2)\n    y\n    x\nonly a"_s);
    library.removeContents(library.roots()[1]);
    QCOMPARE(rows(library.keywordIndex()), u"k\n    x\nonly a"_s);
    QCOMPARE(library.keywordIndex().rows()[0].indexItem->group, -1);
    library.removeContents(library.roots()[0]);
    QVERIFY(library.keywordIndex().rows().empty());
}

void KeywordIndexTest::lookFor_data()
{
    // The rows: Paper, Print, its sub-keyword margins, Printer, and a word with a dotted capital I.
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("expected");
    QTest::newRow("the current row matches") << u"print"_s << 3 << 3;
    QTest::newRow("the first row that matches") << u"print"_s << 0 << 1;
    QTest::newRow("letter case") << u"PRiNTe"_s << -1 << 3;
    QTest::newRow("upwards") << u"pa"_s << 3 << 0;
    QTest::newRow("a sub-keyword by its own letters") << u"mar"_s << 0 << 2;
    QTest::newRow("no row matches") << u"printery"_s << 1 << 1;
    QTest::newRow("no row matches, none current") << u"x"_s << -1 << -1;
    QTest::newRow("begins with a blank") << u" margins"_s << 1 << 1;
    QTest::newRow("empty") << u""_s << 2 << 2;
    QTest::newRow("empty, none current") << u""_s << -1 << -1;
    QTest::newRow("lower case on both sides") << u"i"_s << 0 << 4;
    QTest::newRow("a current row that is gone") << u"pri"_s << 99 << 1;
}

void KeywordIndexTest::lookFor()
{
    QFETCH(const QString, typed);
    QFETCH(const int, current);
    QFETCH(const int, expected);
    const TemporaryFiles files(
        "== a.cnt\n:index = a.idx\n== a.idx\nPaper\nPrinter\nPrint\n margins\n\xC4\xB0print");
    HelpLibrary library;
    load(library, files);
    QCOMPARE(library.keywordIndex().rows().size(), 5U);
    QCOMPARE(library.keywordIndex().lookFor(typed, current), expected);
}

QTEST_GUILESS_MAIN(KeywordIndexTest)
#include "tst_keywordindex.moc"
