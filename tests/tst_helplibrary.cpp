// SPDX-License-Identifier: MIT
#include "formats/paths.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "library/missingpages.h"

#include "testfiles.h"

using namespace Qt::StringLiterals;

namespace {

/// The texts of the top-level rows, each of which has to know its position.
QString topRows(const HelpLibrary& library)
{
    QStringList texts;
    for (const auto* row : library.topRows()) {
        texts += texts.size() == row->position ? row->text.toString() : u"misplaced"_s;
    }
    return texts.join(u' ');
}

/// The row of this text, at any depth.
const HelpContentsListViewItem* findRow(std::span<HelpContentsListViewItem* const> rows, const QString& text)
{
    for (const auto* row : rows) {
        const auto* found = row->text == text ? row : findRow(row->children, text);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

HelpContentsRoot* load(HelpLibrary& library, const QString& fileName, const QString& current = {})
{
    return library.loadContents(fileName, findRow(library.topRows(), current)).root;
}

const char* const ThreeSets =
    "== a.cnt\na1\n a2\n  a3\na4\n== b.cnt\nb1\nb2\n b3\n== c.cnt\nc1\nc2\n== e.cnt\n";

/// Writes the signals of a library into `log` as they come.
void record(const HelpLibrary& library, QStringList& log)
{
    QObject::connect(&library, &HelpLibrary::topRowsAboutToBeInserted, [&](int first, int last) {
        log += u"insert %1-%2 into %3"_s.arg(first).arg(last).arg(library.topRows().size());
    });
    QObject::connect(&library, &HelpLibrary::topRowsInserted,
                     [&] { log += u"inserted %1"_s.arg(library.topRows().size()); });
    QObject::connect(&library, &HelpLibrary::helpSetAboutToBeRemoved,
                     [&](const HelpContentsRoot* root) { log += u"remove "_s + root->fileName; });
    QObject::connect(&library, &HelpLibrary::topRowsAboutToBeRemoved, [&](int first, int last) {
        log += u"remove %1-%2 of %3"_s.arg(first).arg(last).arg(library.topRows().size());
    });
    QObject::connect(&library, &HelpLibrary::topRowsRemoved,
                     [&] { log += u"left %1"_s.arg(library.topRows().size()); });
    QObject::connect(&library.keywordIndex(), &KeywordIndex::rebuilt, [&] { log += u"rebuilt"_s; });
    QObject::connect(&library, &HelpLibrary::helpSetRemoved, [&] { log += u"removed"_s; });
}

} // namespace

class HelpLibraryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void records()
    {
        const TemporaryFiles files("x = b.cnt\ny\n:title = A\n z = z.html\n== b.cnt\n:title = B\nx = x.html");
        HelpLibrary library;
        const auto loaded = library.loadContents(files.first(), nullptr);
        QVERIFY(loaded.readable && loaded.malformedFiles.isEmpty());
        const auto& root = *loaded.root;
        QCOMPARE(files.shortened(root.fileName + u' ' + root.title() + u' ' + root.page()),
                 u"D/a.cnt B D/x.html"_s);
        QCOMPARE(files.shortened(loaded.firstPage->source->fileName), u"D/b.cnt"_s);
        const auto* z = findRow(library.topRows(), u"z"_s);
        QCOMPARE(z->parent, library.topRows()[1]);
        QVERIFY(z->contentsItem->listViewItem == z && z->contentsItem->root() == &root);
        QVERIFY(z->contentsItem->title() == u"A" && z->parent->contentsItem->title().isNull());
        QCOMPARE(z->contentsItem->namedInLine, 4);

        const auto missing = library.loadContents(files.path(u"missing.cnt"_s), nullptr);
        QVERIFY(!missing.readable && missing.firstPage == nullptr && missing.root->title().isNull());
    }

    void placement_data()
    {
        addTexts("current", "expected");
        addRow("no current row", "", "c1 c2 a1 a4 b1 b2");
        addRow("behind the current row's set", "a1", "a1 a4 c1 c2 b1 b2");
        addRow("its last row", "a4", "a1 a4 c1 c2 b1 b2");
        addRow("a row far below", "a3", "a1 a4 c1 c2 b1 b2");
        addRow("behind all", "b3", "a1 a4 b1 b2 c1 c2");
    }

    void placement()
    {
        QFETCH(const QString, current);
        QFETCH(const QString, expected);
        const TemporaryFiles files(ThreeSets);
        HelpLibrary library;
        auto* a = load(library, files.path(u"a.cnt"_s));
        load(library, files.path(u"b.cnt"_s), u"a1"_s);
        load(library, files.path(u"c.cnt"_s), current);
        QCOMPARE(topRows(library), expected);
        library.removeContents(a);
        QCOMPARE(topRows(library), QString(expected).remove(u"a1 a4"_s).simplified());
    }

    void signalOrder()
    {
        const TemporaryFiles files(ThreeSets);
        HelpLibrary library;
        QStringList log;
        record(library, log);
        auto* a = load(library, files.path(u"a.cnt"_s));
        load(library, files.path(u"b.cnt"_s), u"a2"_s);
        auto* empty = load(library, files.path(u"e.cnt"_s), u"a2"_s);
        QCOMPARE(log.join(u'\n'), u"insert 0-1 into 0\ninserted 2\ninsert 2-3 into 2\ninserted 4"_s);
        log.clear();
        library.removeContents(a);
        QCOMPARE(files.shortened(log.join(u'\n')),
                 u"remove D/a.cnt\nremove 0-1 of 4\nleft 2\nrebuilt\nremoved"_s);
        log.clear();
        library.removeContents(empty);
        QCOMPARE(files.shortened(log.join(u'\n')), u"remove D/e.cnt\nrebuilt\nremoved"_s);
        log.clear();
        HelpContentsRoot stranger;
        library.removeContents(&stranger);
        QVERIFY(log.isEmpty());
    }

    void getPage_data()
    {
        addTexts("name", "row");
        QTest::addColumn<bool>("isEntry");
        addRow("topic", "one.html", "one", true);
        addRow("topic with anchor", "one.html#x", "one x", true);
        addRow("other anchor: the row of the page", "one.html#y", "one", false);
        addRow("anchor of a page that only rows with anchors show", "two.html#y", "(none)", false);
        addRow("page that only rows with anchors show", "two.html", "(none)", false);
        addRow("the row below its book", "book.html", "below", true);
        addRow("not cleaned", "./sub/..//one.html", "one", true);
        addRow("letter case counts", "One.html", "(none)", false);
        addRow("number sign in a file name", "c#.html", "c sharp", true);
        addRow("anchor behind a number sign", "c#.html#x", "c sharp", false);
        addRow("an including row shows no page", "missing.cnt", "(none)", false);
        addRow("a book without page shows no page", "", "(none)", false);
    }

    void getPage()
    {
        QFETCH(const QString, name);
        QFETCH(const bool, isEntry);
        const TemporaryFiles files(
            ":title = A\none = one.html\none x = one.html#x\ntwo x = two.html#x\nbook = book.html\n"
            " below = book.html\n below too = book.html\nc sharp = c#.html\ni = missing.cnt\ne");
        HelpLibrary library;
        auto* root = load(library, files.first());
        auto* record = library.getPage(files.path(name));
        const auto* row = record->listViewItem;
        QTEST(row == nullptr ? u"(none)"_s : row->text.toString(), "row");
        QCOMPARE(row != nullptr && row->contentsItem == record, isEntry);
        QCOMPARE(library.findPage(files.path(name)), isEntry ? record : nullptr);
        QCOMPARE(record->title(), row == nullptr ? QString() : u"A"_s);
        QCOMPARE(record->root(), row == nullptr ? nullptr : root);
        QVERIFY(isEntry || record->page() == files.path(name));
    }

    void pageRecords()
    {
        const TemporaryFiles files(":title = A\n:index = a.idx\n== a.idx\nk\nl");
        HelpLibrary library;
        QVERIFY(library.isEmpty());
        auto* page = library.getPage(u"/nowhere/x.html"_s);
        QVERIFY(library.getPage(u"/nowhere/x.html"_s) != page);
        QVERIFY(!library.isEmpty());

        auto* root = load(library, files.first());
        library.buildIndex();
        const auto& rows = library.keywordIndex().rows();
        auto* record = library.getPage(*rows[0].indexItem);
        QVERIFY(record->keyword == rows[0].indexItem && record->title() == u"A");
        QCOMPARE(library.getPage(*rows[0].indexItem), record);
        QVERIFY(library.getPage(*rows[1].indexItem) != record);
        library.removeContents(root);
        QVERIFY(library.isEmpty());
    }

    void sameFileTwice()
    {
        const TemporaryFiles files(":index = a.idx\na = a.html\n b = b.html\n== a.idx\nk = b.html\n l");
        HelpLibrary library;
        auto* first = load(library, files.first());
        auto* second = load(library, files.first());
        library.buildIndex();
        QCOMPARE(topRows(library), u"a a"_s);
        // The first one in load order, respectively in tree order.
        QCOMPARE(library.getContentsByFileName(files.first())->root(), first);
        QVERIFY(library.getContentsByFileName(files.path(u"./a.cnt"_s)) == nullptr);
        QCOMPARE(library.findPage(files.path(u"b.html"_s))->root(), second);
        library.removeContents(second);
        QCOMPARE(topRows(library), u"a"_s);
        QCOMPARE(library.roots(), std::vector{first});
        QCOMPARE(library.getPage(files.path(u"b.html"_s))->root(), first);
        const auto& rows = library.keywordIndex().rows();
        QCOMPARE(rows.size(), 2U);
        QCOMPARE(rows[0].indexItem->source->contentsItem, first);
        QCOMPARE(rows[1].indexItem->parent(), rows[0].indexItem);
    }

    void pageTitle_data()
    {
        addTexts("link", "expected");
        addRow("of a row", "s/a.html", "Alpha");
        addRow("of a row without text", "b.html", "b.html");
        addRow("of no row", "s/c.html", "c.html");
        addRow("of the row of the whole page", "s/a.html#x/y", "Alpha (#x/y)");
        addRow("of no row, with anchor", "s/c.html#x/y", "c.html#x/y");
        addRow("below a number sign", "c#/d.html#x/y", "d.html#x/y");
    }

    void pageTitle()
    {
        QFETCH(const QString, link);
        const TemporaryFiles files("Alpha = s/a.html\n = b.html\n== c#/x\n");
        HelpLibrary library;
        load(library, files.first());
        QTEST(library.pageTitle(files.path(link)), "expected");
    }

    void missingPages()
    {
        const TemporaryFiles files(
            ":index = a.idx\na = a.html#x\nb = b.html\nbook\nc = b#.html\nd = i.cnt\ne = c#/\nf = c#\n"
            "== a.idx\nk = a.html\nl\nm = n.html#x\nn = c#/d.html#x\no = c#/e.html#x\n"
            "== a.html\n\n== b#.html\n\n== c#/d.html\n\n== c#/index.html\n");
        HelpLibrary library;
        load(library, files.first());
        QStringList found;
        for (const auto& problem : findMissingPages(library)) {
            found += u"%1:%2"_s.arg(problem.file).arg(problem.line);
        }
        QCOMPARE(files.shortened(found.join(u' ')), u"D/a.cnt:3 D/a.idx:3 D/a.idx:5"_s);
    }

    void getTitle_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        addTexts("expected");
        addRow("plain", "a\n:title = T"_ba, "T");
        addRow("empty", ":title =\n:title = T"_ba, "D/a.cnt");
        addRow("without equals sign", ":title T\n:title = U"_ba, "U");
        addRow("indented, further letters", "\t :titled = T = U"_ba, "T = U");
        addRow("none", ":Title = T"_ba, "D/a.cnt");
        addRow("not of included files", "x = a.cnt"_ba, "D/a.cnt");
        addRow("Latin-1", ":title = \xC4"_ba, "\u00C4");
    }

    void getTitle()
    {
        QFETCH(const QByteArray, bytes);
        TemporaryFiles files;
        QTEST(files.shortened(HelpLibrary::getTitle(files.write(u"a.cnt"_s, bytes))), "expected");
        QCOMPARE(HelpLibrary::getTitle(u"no/such file.cnt"_s), u"no/such file.cnt"_s);
    }

    void paths_data()
    {
        addTexts("path", "rightDir", "rightDirOfFile", "absolute");
        addRow("name", "docs", "docs/", "C/", "C/docs");
        addRow("directory", "docs/", "docs/", "C/docs/", "C/docs/");
        addRow("backslash", "docs\\", "docs\\", "C/", "C/docs\\");
        addRow("empty", "", "", "", "");
        addRow("file of the root", "/a.cnt", "/a.cnt/", "/", "/a.cnt");
        addRow("dot steps", "/a/./b//../c.cnt", "/a/./b//../c.cnt/", "/a/", "/a/c.cnt");
        addRow("colon in front", ":a/b.cnt", ":a/b.cnt/", "C/:a/", "C/:a/b.cnt");
        addRow("tilde", "~/b.cnt", "~/b.cnt/", "C/~/", "C/~/b.cnt");
    }

    void paths()
    {
        QFETCH(const QString, path);
        QFETCH(QString, rightDirOfFile);
        QFETCH(QString, absolute);
        const QString here = QDir::currentPath();
        QTEST(getRightDir(path), "rightDir");
        if (!path.isEmpty()) {
            QCOMPARE(extractRightDir(path), rightDirOfFile.replace(QChar(u'C'), here));
        }
        QCOMPARE(HelpLibrary::absoluteName(path), absolute.replace(QChar(u'C'), here));
        QCOMPARE(extractFileName(path), path);
        QVERIFY(HelpLibrary::isOneFile(path, HelpLibrary::absoluteName(path)));
        QVERIFY(!HelpLibrary::isOneFile(path, path.toUpper() + u"#x"_s));
    }
};

QTEST_GUILESS_MAIN(HelpLibraryTest)
#include "tst_helplibrary.moc"
