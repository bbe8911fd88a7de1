// SPDX-License-Identifier: MIT
#include "formats/indexreader.h"
#include "formats/textfile.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "library/keywordorder.h"
#include "library/sharedbeginning.h"

#include "testfiles.h"

#include <QRandomGenerator>
#include <QStringEncoder>

#include <algorithm>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

/// Loads the contents files among `files` in the order in which they were written.
void load(HelpLibrary& library, const TemporaryFiles& files)
{
    for (const auto& name : files.names().filter(u".cnt"_s)) {
        library.loadContents(files.path(name), nullptr);
    }
    library.buildIndex();
}

/// One line per row: its text and, when there are several, the number of distinct topics.
QString rows(const KeywordIndex& index)
{
    QStringList lines;
    for (const auto& row : index.rows()) {
        const auto topics = index.topics(row.indexItem).size();
        lines += row.text() + (topics == 1 ? QString() : u" (%1)"_s.arg(topics));
    }
    return lines.join(u'\n');
}

/// A help set "a" and, with `second`, another one: each a title directive and the lines of its index file.
QString sets(const char* title, const char* lines, const char* secondTitle = nullptr, const char* second = "")
{
    const auto set = [](char16_t name, const char* titleLine, const char* indexLines) {
        return u"== %1.cnt\n%2\n:index = %1.idx\n== %1.idx\n%3"_s.arg(QChar(name))
            .arg(QString::fromUtf8(titleLine), QString::fromUtf8(indexLines));
    };
    const QString first = set(u'a', title, lines);
    return secondTitle == nullptr ? first : first + u'\n' + set(u'b', secondTitle, second);
}

} // namespace

class KeywordIndexTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reading_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        addTexts("expected");
        addRow("example",
               "Printing = print.html\n\tPage setup = print.html#setup\n\n    Margins=margins.html\nFonts"_ba,
               "1 Printing=print.html;2 Printing/Page setup=print.html#setup;"
               "4 Printing/Margins=margins.html;5 Fonts= (none)");
        addRow("further equals signs", "a = a=b.html"_ba, "1 a=a=b.html");
        addRow("nothing before the equals sign", " = b.html"_ba, "1 =b.html");
        addRow("nothing behind it", "a =  "_ba, "1 a= (none)");
        addRow("absolute page", "a = /b.html"_ba, "1 a=/b.html");
        addRow("directives are keywords", ":title = T"_ba, "1 :title=T");
        addRow("CRLF and CR", "a=1\r\n\r\n b=2\rc=3"_ba, "1 a=1;3 a/b=2;4 c=3");
        addRow("Latin-1", "\xE4=\xDF"_ba, "1 ä=ß");
        addRow("first line indented", "\ta=1\nb=2\n c=3"_ba, "1 a=1;2 b=2;3 b/c=3");
        addRow("one level of nesting", "a=1\n b=2\n\t  c=3"_ba, "1 a=1;2 a/b=2;3 a/c=3");
        addRow("other white space does not indent", "a=1\n\x0C\x62=2"_ba, "1 a=1;2 b=2");
    }

    void reading()
    {
        QFETCH(const QByteArray, bytes);
        TemporaryFiles files;
        const auto text = readText(files.write(u"a.idx"_s, bytes));
        QVERIFY(text.ok());
        QStringList found;
        IndexReader reader(text.value());
        QStringList keywords;
        while (reader.next()) {
            const auto& line = reader.line();
            keywords += line.keyword.toString();
            const QString parent = line.parent < 0 ? QString() : keywords[line.parent] + u'/';
            found += QString::number(line.line) + u' ' + parent + line.keyword + u'=' + line.page +
                     (line.page.isEmpty() ? u" (none)"_s : u""_s);
        }
        QTEST(found.join(u';'), "expected");
    }

    void longTexts_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        const QString euros(100'000, u'€');
        const QByteArray utf8 = euros.toUtf8();
        const QByteArray cut = utf8.chopped(1);
        const QByteArray ascii(200'000, 'a');
        QTest::newRow("characters across blocks") << utf8 << euros;
        QTest::newRow("shifted by one") << "a" + utf8 << u'a' + euros;
        QTest::newRow("byte-order mark") << "\xef\xbb\xbf" + utf8 << euros;
        QTest::newRow("last character cut") << cut << QString::fromLatin1(cut);
        QTest::newRow("not UTF-8 at the end") << ascii + '\xe4' << QString::fromLatin1(ascii) + u'ä';
        QTest::newRow("UTF-16") << QByteArray(QStringEncoder(QStringEncoder::Utf16LE,
                                                             QStringEncoder::Flag::WriteBom)(euros))
                                << euros;
    }

    /// Texts are decoded block by block.
    void longTexts()
    {
        QFETCH(const QByteArray, bytes);
        TemporaryFiles files;
        const QString name = files.write(u"a.idx"_s, bytes);
        QCOMPARE(readRegularFile(name).value(), bytes);
        const auto text = readText(name);
        QVERIFY(text.ok());
        QTEST(text.value(), "expected");
    }

    void order_data()
    {
        addTexts("input", "expected");
        addRow("upper case first", sets("", "apple\nZoom\n_x\n1"), "1\nZoom\n_x\napple");
        addRow("by code units", sets("", "～\n😀\nä\nz"), "z\nä\n😀\n～");
        addRow("an empty keyword", sets("", "b\n= a.html\n c"), "\n    c\nb");
        addRow("all help sets", sets("", "b\nd", "", "c\na"), "a\nb\nc\nd");
        addRow("a missing index file", "== a.cnt\n:index = x.idx\n== b.cnt\n:index = b.idx\n== b.idx\na",
               "a");
        addRow("last sub-keyword first", sets("", "a\n y\n X\n z\nb"), "a\n    z\n    y\n    X\nb");
        addRow("under the merged row", sets("", "font=1\n a\nFont=2\n b\nfont=3\n c"),
               "Font (3)\n    c\n    b\n    a");
        addRow("under a like row, by load order", sets(":title=A", "k\n x=1", ":title=B", "k\n x=2\n x=3"),
               "k (2)\n    x (2)\n    x");
    }

    void order() { checkRows(); }
    void grouping_data()
    {
        addTexts("input", "expected");
        addRow("letter case, far apart", sets("", "print=1\nZoom=2\nPRINT=3\nPrint=4"), "PRINT (3)\nZoom");
        addRow("two help sets", sets(":title=A", "a=1", ":title=B", "A=1"), "A (2)");
        addRow("keyword and sub-keyword", sets("", "Font=1\nText=2\n Font=3"), "Font\nText\n    Font");
        addRow("an orphan is a keyword", sets("", " Font=1\nfont=2\n Size=3"), "Font (2)\n    Size");
        addRow("one parent", sets("", "Font\n Size=1\n size=2"), "Font\n    Size (2)");
        addRow("like parents", sets("", "Font=1\n Size=1\nFONT=2\n Size=2"), "FONT (2)\n    Size (2)");
        addRow("other parents", sets("", "a\n x=1\nb\n x=2\na\n x=3"), "a\n    x (2)\nb\n    x");
        addRow("other titles", sets(":title=A", "k\n x=1", ":title=B", "K\n x=2"), "K (2)\n    x\n    x");
        addRow("like titles", sets(":title=Tip", "k\n x=1", ":title=TIP", "k\n x=2"), "k\n    x (2)");
        addRow("no title is like an empty one", sets("", "k\n x=1", ":title=", "k\n x=2"), "k\n    x (2)");
    }

    void grouping() { checkRows(); }
    void topics_data()
    {
        addTexts("lines", "expected");
        addRow("one", "k=1", "1 A");
        addRow("load order, not sort order", "k=2\nK=1\nk=3", "2 A,1 A,3 A");
        addRow("same page", "k=1\nK=1\nk=2\nk=1", "1 A,2 A");
        addRow("other place of the page", "k=1#a\nk=1#A", "1#a A,1#A A");
    }

    void topics()
    {
        QFETCH(const QString, lines);
        // Titles that differ in letter case only are one title.
        TemporaryFiles files("== a.cnt\n:title = A\n:index = i.idx\n== A.cnt\n:title = a\n:index = i.idx");
        files.write(u"i.idx"_s, lines.toUtf8());
        HelpLibrary library;
        load(library, files);
        const auto& index = library.keywordIndex();
        QStringList found;
        for (const auto* topic : index.topics(index.rows()[0].indexItem)) {
            found += topic->link().section(u'/', -1) + u' ' + topic->title();
        }
        QTEST(found.join(u','), "expected");

        library.loadContents(files.write(u"c.cnt"_s, ":title = C\n:index = i.idx"), nullptr);
        library.buildIndex();
        QCOMPARE(index.getIndexByGroupCount(index.rows()[0].indexItem->group), 2 * found.size());
    }

    void linksBetweenRowsAndEntries()
    {
        HelpLibrary library;
        load(library, TemporaryFiles(sets("", "font=1\n a=2\nFont=3\n A=4\nzoom=5").toUtf8()));
        const auto& index = library.keywordIndex();
        QStringList found;
        for (const auto& item : library.helpSet(*library.roots()[0]).indexItems()) {
            found +=
                item.listBoxItem->text() + u':' + QString::number(item.listBoxItem - index.rows().data());
        }
        QCOMPARE(found.join(u','), u"Font:0,    A:1,Font:0,    A:1,zoom:2"_s);
        QCOMPARE(index.subKeywords(*index.rows()[0].indexItem).size(), 1U);
        QVERIFY(index.subKeywords(*index.rows()[1].indexItem).empty());
        QVERIFY(index.subKeywords(*index.rows()[2].indexItem).empty());
    }

    void removal()
    {
        HelpLibrary library;
        load(library, TemporaryFiles(sets(":title=A", "k=1\n x\nonly a", ":title=B", "K=2\n y").toUtf8()));
        QCOMPARE(rows(library.keywordIndex()), u"K (2)\n    y\n    x\nonly a"_s);
        library.removeContents(library.roots()[1]);
        QCOMPARE(rows(library.keywordIndex()), u"k\n    x\nonly a"_s);
        QCOMPARE(library.keywordIndex().rows()[0].indexItem->group, -1);
        library.removeContents(library.roots()[0]);
        QVERIFY(library.keywordIndex().rows().empty());
    }

    void orderOfAny()
    {
        // Few letters, so that texts begin alike for long; zeros, and units beyond the first plane's letters.
        constexpr std::array<char16_t, 5> letters{u'a', u'b', u'\0', 0xD83D, 0xFF5E};
        QRandomGenerator random(7);
        std::vector<QString> texts(3000);
        for (auto& text : texts) {
            text = QString(random.bounded(80), u'a') + QString(random.bounded(2), u'b');
            for (int i = random.bounded(12); i > 0; --i) {
                text += QChar(letters[size_t(random.bounded(int(letters.size())))]);
            }
        }
        std::vector<quint32> expected(texts.size());
        std::iota(expected.begin(), expected.end(), 0U);
        std::stable_sort(expected.begin(), expected.end(),
                         [&](quint32 a, quint32 b) { return texts[a] < texts[b]; });
        QCOMPARE(orderOf({texts.begin(), texts.end()}, {}), expected);
    }

    void lookFor_data()
    {
        addTexts("typed");
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("expected");
        addRow("the whole word first", "print", 3, 1);
        addRow("the current row is the whole word", "printer", 3, 3);

        addRow("the first row that matches", "print", 0, 1);
        addRow("letter case", "PRiNTe", -1, 3);
        addRow("upwards", "pa", 3, 0);
        addRow("a sub-keyword by its own letters", "mar", 0, 2);
        addRow("no row matches", "printery", 1, 1);
        addRow("no row matches, none current", "x", -1, -1);
        addRow("begins with a blank", " margins", 1, 1);
        addRow("empty", "", 2, 2);
        addRow("empty, none current", "", -1, -1);
        addRow("lower case on both sides", "i", 0, 6);
        addRow("beyond Latin-1", "ωμ", 0, 8);
        addRow("longer than a mark", "a long keyword 2", 0, 5);
        addRow("a zero is a letter", QString(u"print"_s + QChar(u'\0')), 0, 0);
        addRow("a current row that is gone", "pri", 99, 1);
    }

    void lookFor()
    {
        QFETCH(const QString, typed);
        QFETCH(const int, current);
        HelpLibrary library;
        load(library,
             TemporaryFiles(
                 sets("",
                      "Paper\nPrinter\nPrint\n margins\nİprint\nΩλ\nΩμ\na long keyword 1\na long keyword 2")
                     .toUtf8()));
        QTEST(library.keywordIndex().lookFor(typed, current), "expected");
    }

private:
    static void checkRows()
    {
        QFETCH(const QString, input);
        HelpLibrary library;
        load(library, TemporaryFiles(input.toUtf8()));
        QTEST(rows(library.keywordIndex()), "expected");
    }

    void sharedBeginnings_data()
    {
        addTexts("before", "text", "behind", "shown");
        addRow("as few words as possible", "One of a b", "One of a c", "", "…a c");
        addRow("a version", "What's New In Python 3.12", "What's New In Python 3.13", "Index", "…3.13");
        addRow("the one behind", "", "Opening a file", "Opening a window", "…file");
        addRow("the longer one", "Opening it", "Opening a new file", "Opening a new window", "…file");
        addRow("signs", "g_list_add", "g_list_append", "", "…append");
        addRow("nothing shared", "Alpha", "Beta", "Gamma", "Beta");
        addRow("within a word", "Kernel", "Kern", "Kernels", "Kern");
        addRow("several words", "a to b", "a to c", "", "…c");
        addRow("a short word", "In b", "In c", "", "In c");
        addRow("all of it", "The whole", "The whole", "", "The whole");
        addRow("blanks of a sub-keyword", "    open it", "    open them", "", "    …them");
        addRow("only its blanks", "    open", "    close", "", "    close");
        addRow("empty", "", "", "", "");
    }
    void sharedBeginnings()
    {
        QFETCH(QString, before);
        QFETCH(QString, text);
        QFETCH(QString, behind);
        const auto fits = [](const QString& cut) { return cut.size() <= 5; };
        QTEST(withoutSharedBeginning(text, before, behind, fits), "shown");
    }
};

QTEST_GUILESS_MAIN(KeywordIndexTest)
#include "tst_keywordindex.moc"
