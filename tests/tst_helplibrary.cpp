// SPDX-License-Identifier: MIT
#include "formats/contentsreader.h"
#include "formats/paths.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "library/missingpages.h"

#include "testfiles.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString topRows(const HelpLibrary& library)
{
    QStringList texts;
    for (const auto* row : library.topRows()) {
        texts += row->text;
    }
    return texts.join(u' ');
}

/// The row of this text, at any depth.
const HelpContentsListViewItem* findRow(const std::vector<HelpContentsListViewItem*>& rows,
                                        const QString& text)
{
    for (const auto* row : rows) {
        const auto* found = row->text == text ? row : findRow(row->children, text);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

HelpContentsItem* load(HelpLibrary& library, const QString& fileName, const QString& current = {})
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
                     [&](const HelpContentsItem* root) { log += u"remove "_s + root->fileName; });
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
    void records();
    void placement_data();
    void placement();
    void signalOrder();
    void getPage_data();
    void getPage();
    void pageRecordsAreNew();
    void getPageOfKeyword();
    void firstInTreeOrder();
    void sameFileTwice();
    void getContentsByFileName();
    void pageTitle_data();
    void pageTitle();
    void missingPages();
    void getTitle_data();
    void getTitle();
    void paths_data();
    void paths();
    void oneFile();
    void onlyOneTop_data();
    void onlyOneTop();
};

void HelpLibraryTest::records()
{
    const TemporaryFiles files(
        "== a.cnt\nx = b.cnt\ny\n:title = A\n z = z.html\n== b.cnt\n:title = B\nx = x.html");
    HelpLibrary library;
    const auto loaded = library.loadContents(files.first(), nullptr);
    QVERIFY(loaded.readable && loaded.malformedFiles.isEmpty());
    QCOMPARE(loaded.root->fileName, files.first());
    QCOMPARE(loaded.root->title, u"B"_s);
    QCOMPARE(loaded.root->page, loaded.firstPage->page);
    QCOMPARE(files.shortened(loaded.firstPage->page), u"D/x.html"_s);
    QVERIFY(loaded.root->root == nullptr && loaded.root->listViewItem == nullptr);
    const auto* z = findRow(library.topRows(), u"z"_s);
    QCOMPARE(z->parent, library.topRows()[1]);
    QCOMPARE(z->contentsItem->listViewItem, z);
    QCOMPARE(z->contentsItem->root, loaded.root);
    QCOMPARE(z->contentsItem->title, u"A"_s);
    QVERIFY(z->parent->contentsItem->title.isNull());
    QCOMPARE(z->contentsItem->namedInLine, 4);
    QCOMPARE(files.shortened(*loaded.firstPage->namedIn), u"D/b.cnt"_s);

    const auto missing = library.loadContents(files.path(u"missing.cnt"_s), nullptr);
    QVERIFY(!missing.readable && missing.firstPage == nullptr);
    QVERIFY(missing.root->title.isNull());
}

void HelpLibraryTest::placement_data()
{
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no current row") << u""_s << u"c1 c2 a1 a4 b1 b2"_s;
    QTest::newRow("behind the current row's set") << u"a1"_s << u"a1 a4 c1 c2 b1 b2"_s;
    QTest::newRow("its last row") << u"a4"_s << u"a1 a4 c1 c2 b1 b2"_s;
    QTest::newRow("a row far below") << u"a3"_s << u"a1 a4 c1 c2 b1 b2"_s;
    QTest::newRow("behind all") << u"b3"_s << u"a1 a4 b1 b2 c1 c2"_s;
}

void HelpLibraryTest::placement()
{
    QFETCH(const QString, current);
    QFETCH(const QString, expected);
    const TemporaryFiles files(ThreeSets);
    HelpLibrary library;
    load(library, files.path(u"a.cnt"_s));
    load(library, files.path(u"b.cnt"_s), u"a1"_s);
    load(library, files.path(u"c.cnt"_s), current);
    QCOMPARE(topRows(library), expected);
    for (size_t i = 0; i < library.topRows().size(); ++i) {
        QCOMPARE(library.topRows()[i]->position, int(i));
    }
    library.removeContents(library.roots()[0]);
    QCOMPARE(topRows(library), QString(expected).remove(u"a1 a4"_s).simplified());
    for (size_t i = 0; i < library.topRows().size(); ++i) {
        QCOMPARE(library.topRows()[i]->position, int(i));
    }
}

void HelpLibraryTest::signalOrder()
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
    HelpContentsItem stranger;
    library.removeContents(&stranger);
    QVERIFY(log.isEmpty());
}

void HelpLibraryTest::getPage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("row");
    QTest::addColumn<bool>("isEntry");
    QTest::newRow("topic") << u"one.html"_s << u"one"_s << true;
    QTest::newRow("topic with anchor") << u"one.html#x"_s << u"one x"_s << true;
    QTest::newRow("other anchor: the row of the page") << u"one.html#y"_s << u"one"_s << false;
    QTest::newRow("anchor of a page that only rows with anchors show")
        << u"two.html#y"_s << u"(none)"_s << false;
    QTest::newRow("page that only rows with anchors show") << u"two.html"_s << u"(none)"_s << false;
    QTest::newRow("the row below its book") << u"book.html"_s << u"below"_s << true;
    QTest::newRow("not cleaned") << u"./sub/..//one.html"_s << u"one"_s << true;
    QTest::newRow("letter case counts") << u"One.html"_s << u"(none)"_s << false;
    QTest::newRow("number sign in a file name") << u"c#.html"_s << u"c sharp"_s << true;
    QTest::newRow("anchor behind a number sign") << u"c#.html#x"_s << u"c sharp"_s << false;
    QTest::newRow("an including row shows no page") << u"missing.cnt"_s << u"(none)"_s << false;
    QTest::newRow("a book without page shows no page") << u""_s << u"(none)"_s << false;
}

void HelpLibraryTest::getPage()
{
    QFETCH(const QString, name);
    QFETCH(const QString, row);
    QFETCH(const bool, isEntry);
    const TemporaryFiles files(
        "== a.cnt\n:title = A\none = one.html\none x = one.html#x\ntwo x = two.html#x\n"
        "book = book.html\n below = book.html\n below too = book.html\n"
        "c sharp = c#.html\ninclude = missing.cnt\nempty");
    HelpLibrary library;
    auto* root = load(library, files.first());
    auto* record = library.getPage(files.path(name));
    QCOMPARE(record->listViewItem == nullptr ? u"(none)"_s : record->listViewItem->text, row);
    QCOMPARE(record->listViewItem != nullptr && record->listViewItem->contentsItem == record, isEntry);
    QCOMPARE(library.findPage(files.path(name)), isEntry ? record : nullptr);
    const bool hasRow = record->listViewItem != nullptr;
    QCOMPARE(record->title, hasRow ? u"A"_s : QString());
    QCOMPARE(record->root, hasRow ? root : nullptr);
    QVERIFY(isEntry || record->page == files.path(name));
}

void HelpLibraryTest::pageRecordsAreNew()
{
    const TemporaryFiles files(ThreeSets);
    HelpLibrary library;
    QVERIFY(library.isEmpty());
    auto* first = library.getPage(u"/nowhere/x.html"_s);
    QVERIFY(library.getPage(u"/nowhere/x.html"_s) != first);
    QVERIFY(!library.isEmpty());
    library.removeContents(load(library, files.first()));
    QVERIFY(library.isEmpty());
}

void HelpLibraryTest::getPageOfKeyword()
{
    const TemporaryFiles files("== a.cnt\n:title = A\n:index = a.idx\n== a.idx\nk\nl");
    HelpLibrary library;
    load(library, files.first());
    library.buildIndex();
    const auto& rows = library.keywordIndex().rows();
    auto* record = library.getPage(*rows[0].indexItem);
    QCOMPARE(record->keyword, rows[0].indexItem);
    QCOMPARE(record->title, u"A"_s);
    QCOMPARE(library.getPage(*rows[0].indexItem), record);
    QVERIFY(library.getPage(*rows[1].indexItem) != record);
}

void HelpLibraryTest::firstInTreeOrder()
{
    const TemporaryFiles files("== a.cnt\na = x.html\n== b.cnt\nb = x.html\n== c.cnt\nc = x.html");
    HelpLibrary library;
    load(library, files.path(u"a.cnt"_s));
    load(library, files.path(u"b.cnt"_s));
    load(library, files.path(u"c.cnt"_s), u"b"_s);
    QCOMPARE(topRows(library), u"b c a"_s);
    QCOMPARE(library.findPage(files.path(u"x.html"_s))->listViewItem->text, u"b"_s);
    library.removeContents(library.roots()[1]);
    QCOMPARE(library.findPage(files.path(u"x.html"_s))->listViewItem->text, u"c"_s);
}

void HelpLibraryTest::sameFileTwice()
{
    const TemporaryFiles files("== a.cnt\n:index = a.idx\na = a.html\n b = b.html\n== a.idx\nk = b.html\n l");
    HelpLibrary library;
    auto* first = load(library, files.first());
    auto* second = load(library, files.first(), u"a"_s);
    library.buildIndex();
    QVERIFY(first != second);
    QCOMPARE(topRows(library), u"a a"_s);
    QCOMPARE(library.getContentsByFileName(files.first())->root, first);
    library.removeContents(first);
    QCOMPARE(topRows(library), u"a"_s);
    QCOMPARE(library.roots(), std::vector{second});
    QCOMPARE(library.getPage(files.path(u"b.html"_s))->root, second);
    QCOMPARE(library.getContentsByFileName(files.first())->root, second);
    const auto& rows = library.keywordIndex().rows();
    QCOMPARE(rows.size(), 2U);
    QCOMPARE(rows[0].indexItem->contentsItem, second);
    QCOMPARE(rows[1].indexItem->parent, rows[0].indexItem);
}

void HelpLibraryTest::getContentsByFileName()
{
    const TemporaryFiles files(ThreeSets);
    HelpLibrary library;
    load(library, files.path(u"e.cnt"_s));
    load(library, files.path(u"b.cnt"_s));
    QCOMPARE(library.getContentsByFileName(files.path(u"b.cnt"_s))->listViewItem->text, u"b1"_s);
    QVERIFY(library.getContentsByFileName(files.path(u"./b.cnt"_s)) == nullptr);
    QVERIFY(library.getContentsByFileName(files.path(u"e.cnt"_s)) == nullptr);
}

void HelpLibraryTest::pageTitle_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("expected");
    QTest::newRow("of a row") << u"s/a.html"_s << u"Alpha"_s;
    QTest::newRow("of a row without text") << u"b.html"_s << u"b.html"_s;
    QTest::newRow("of no row") << u"s/c.html"_s << u"c.html"_s;
    QTest::newRow("with anchor") << u"s/a.html#x/y"_s << u"a.html#x/y"_s;
    QTest::newRow("below a number sign") << u"c#/d.html#x/y"_s << u"d.html#x/y"_s;
}

void HelpLibraryTest::pageTitle()
{
    QFETCH(const QString, link);
    QFETCH(const QString, expected);
    const TemporaryFiles files("== a.cnt\nAlpha = s/a.html\n = b.html");
    HelpLibrary library;
    load(library, files.first());
    QCOMPARE(library.pageTitle(files.path(link)), expected);
}

void HelpLibraryTest::missingPages()
{
    const TemporaryFiles files(
        "== a.cnt\n:index = a.idx\na = a.html#x\nb = b.html\nbook\nc = b#.html\nd = i.cnt\ne = c#/\nf = c#\n"
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

void HelpLibraryTest::getTitle_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << QByteArray("a\n:title = T") << u"T"_s;
    QTest::newRow("empty") << QByteArray(":title =\n:title = T") << u"D/a.cnt"_s;
    QTest::newRow("without equals sign") << QByteArray(":title T\n:title = U") << u"U"_s;
    QTest::newRow("indented, further letters") << QByteArray("\t :titled = T = U") << u"T = U"_s;
    QTest::newRow("none") << QByteArray(":Title = T") << u"D/a.cnt"_s;
    QTest::newRow("not of included files") << QByteArray("x = a.cnt") << u"D/a.cnt"_s;
    QTest::newRow("Latin-1") << QByteArray(":title = \xC4") << u"\u00C4"_s;
}

void HelpLibraryTest::getTitle()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, expected);
    TemporaryFiles files;
    QCOMPARE(files.shortened(HelpLibrary::getTitle(files.write(u"a.cnt"_s, bytes))), expected);
    QCOMPARE(HelpLibrary::getTitle(u"no/such file.cnt"_s), u"no/such file.cnt"_s);
}

void HelpLibraryTest::paths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("rightDir");
    QTest::addColumn<QString>("rightDirOfFile");
    QTest::addColumn<QString>("absolute");
    QTest::newRow("name") << u"docs"_s << u"docs/"_s << u"C/"_s << u"C/docs"_s;
    QTest::newRow("directory") << u"docs/"_s << u"docs/"_s << u"C/docs/"_s << u"C/docs/"_s;
    QTest::newRow("backslash") << u"docs\\"_s << u"docs\\"_s << u"C/"_s << u"C/docs\\"_s;
    QTest::newRow("empty") << u""_s << u""_s << u""_s << u""_s;
    QTest::newRow("file of the root") << u"/a.cnt"_s << u"/a.cnt/"_s << u"/"_s << u"/a.cnt"_s;
    QTest::newRow("dot steps") << u"/a/./b//../c.cnt"_s << u"/a/./b//../c.cnt/"_s << u"/a/"_s
                               << u"/a/c.cnt"_s;
    QTest::newRow("colon in front") << u":a/b.cnt"_s << u":a/b.cnt/"_s << u"C/:a/"_s << u"C/:a/b.cnt"_s;
    QTest::newRow("tilde") << u"~/b.cnt"_s << u"~/b.cnt/"_s << u"C/~/"_s << u"C/~/b.cnt"_s;
}

void HelpLibraryTest::paths()
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
}

void HelpLibraryTest::oneFile()
{
    const QString here = QDir::currentPath();
    QVERIFY(HelpLibrary::isOneFile(u"a.html"_s, here + u"/a.html"_s));
    QVERIFY(HelpLibrary::isOneFile(u"/x/../a.html"_s, u"//a.html"_s));
    QVERIFY(!HelpLibrary::isOneFile(u"/a.html"_s, u"/A.html"_s));
    QVERIFY(!HelpLibrary::isOneFile(u"/a.html"_s, u"/a.html#x"_s));
}

void HelpLibraryTest::onlyOneTop_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("expected");
    QTest::newRow("none") << QByteArray(":title = A\n\n b") << false;
    QTest::newRow("one") << QByteArray(" :index = a\n   \na\n  b\n\tc") << true;
    QTest::newRow("two") << QByteArray("a\n b\nc") << false;
    QTest::newRow("two, in CR lines") << QByteArray("a\rb") << false;
}

void HelpLibraryTest::onlyOneTop()
{
    QFETCH(const QByteArray, bytes);
    TemporaryFiles files;
    QTEST(onlyOneTopContent(files.write(u"a.cnt"_s, bytes)), "expected");
    QVERIFY(!onlyOneTopContent(files.path(u"missing.cnt"_s)));
}

QTEST_GUILESS_MAIN(HelpLibraryTest)
#include "tst_helplibrary.moc"
