// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"
#include "index/helpindexlistbox.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "mainwindow/helpmainwindow.h"
#include "testfiles.h"

#include <QAction>
#include <QMenu>
#include <QProgressBar>
#include <QSettings>
#include <QStatusBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int ManyKeywords = 30'000; // are sorted in the background

/// A help set of this name with a page, and an index of `keywords` lines.
QByteArray set(char name, int keywords)
{
    QByteArray text = QByteArray("== ") + name + ".cnt\n:title=" + name + "\n:index=" + name + ".idx\nRow " +
                      name + "=" + name + ".html\n== " + name + ".html\n<p>page " + name +
                      "</p>\n== " + name + ".idx";
    for (int i = 0; i < keywords; ++i) {
        text += "\n" + QByteArray(i % 3 == 2 ? " " : "") + (i % 2 == 0 ? "Key " : "key ") +
                QByteArray::number(i * 7919 % (keywords / 2)) + '=' + name + ".html";
    }
    return text;
}

/// A contents file that takes longer to read than a window waits.
QByteArray hugeSet()
{
    QByteArray text("== huge.cnt\n:title=Huge\nFirst=a.html\n");
    for (int i = 0; i < 600'000; ++i) {
        text += "\tRow " + QByteArray::number(i) + "=p/page" + QByteArray::number(i) + ".html\n";
    }
    return text;
}

QString rows(const HelpLibrary& library)
{
    QStringList lines;
    for (const auto& row : library.keywordIndex().rows()) {
        lines += row.text() + u' ' + QString::number(library.keywordIndex().topics(row.indexItem).size());
    }
    return lines.join(u'\n');
}

struct Fixture {
    explicit Fixture(const QByteArray& text) : files(text)
    {
        window.setPersistent(false);
        window.show();
    }
    void load(const char* name) { window.insertContents(files.path(QLatin1StringView(name))); }
    [[nodiscard]] HelpBrowser& browser() { return *window.findChild<HelpBrowser*>(); }
    [[nodiscard]] QString page() { return browser().toPlainText().trimmed(); }
    [[nodiscard]] bool showsProgress() const
    {
        return window.statusBar()->findChild<QProgressBar*>() != nullptr;
    }

    TemporaryFiles files;
    HelpLibrary library;
    HelpMainWindow window{library};
};

} // namespace

class TestLoading : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QSettings().clear(); }

    void sameAsWithoutThreads()
    {
        const TemporaryFiles files(set('a', ManyKeywords) + '\n' + set('b', 100) +
                                   "\n== c.cnt\n:index=none.idx\nc");
        HelpLibrary expected;
        HelpLibrary library;
        QStringList order;
        for (const auto* name : {"a.cnt", "b.cnt", "c.cnt"}) {
            const QString file = files.path(QLatin1StringView(name));
            expected.loadContents(file, nullptr);
            library.readAhead(file);
        }
        expected.buildIndex();
        for (const auto* name : {"a.cnt", "b.cnt", "c.cnt"}) {
            library.readContents(
                files.path(QLatin1StringView(name)), [] { return nullptr; },
                [&](const HelpLibrary::Loaded& loaded) {
                    order += QFileInfo(loaded.root->fileName).fileName();
                });
        }
        QVERIFY(library.isBusy());
        QTRY_VERIFY(!library.isBusy());
        QCOMPARE(order.join(u' '), u"a.cnt b.cnt c.cnt"_s);
        QCOMPARE(rows(library), rows(expected));
        QCOMPARE(library.problems().size(), 1U);
        QCOMPARE(library.problems()[0].message, expected.problems()[0].message);
        QCOMPARE(library.topRows()[0]->text, expected.topRows()[0]->text);
    }

    void heldIndex()
    {
        const TemporaryFiles files(set('a', ManyKeywords));
        HelpLibrary library;
        library.setIndexHeld(true);
        library.readContents(
            files.path(u"a.cnt"_s), [] { return nullptr; }, [](const auto& /*loaded*/) {});
        library.adoptWithin(std::chrono::minutes(5), [] { return false; });
        QCOMPARE(library.roots().size(), 1U);
        QVERIFY(library.isBusy() && library.helpSet(*library.roots()[0]).indexItems().empty());
        library.setIndexHeld(false);
        QTRY_VERIFY(!library.isBusy());
        QVERIFY(!library.keywordIndex().rows().empty());
    }

    void removalWhileBusy()
    {
        const TemporaryFiles files(set('a', ManyKeywords) + '\n' + set('b', ManyKeywords));
        HelpLibrary expected;
        expected.loadContents(files.path(u"b.cnt"_s), nullptr);
        expected.buildIndex();
        HelpLibrary library;
        const auto load = [&](const QString& name) {
            HelpContentsRoot* root = nullptr;
            library.readContents(
                files.path(name), [] { return nullptr; },
                [&](const HelpLibrary::Loaded& loaded) { root = loaded.root; });
            library.adoptWithin(std::chrono::seconds(30), [&] { return root != nullptr; });
            return root;
        };
        // Its index is being read, then its rows are being made.
        library.removeContents(load(u"a.cnt"_s));
        auto* again = load(u"a.cnt"_s);
        load(u"b.cnt"_s);
        QTRY_VERIFY(!library.isBusy());
        library.buildIndex();
        library.removeContents(again);
        QVERIFY(library.isBusy());
        for (const auto& item : library.helpSet(*library.roots()[0]).indexItems()) {
            QVERIFY(item.listBoxItem == nullptr && item.group < 0);
        }
        QTRY_VERIFY(!library.isBusy());
        QCOMPARE(rows(library), rows(expected));
    }

    void cancelling()
    {
        Fixture f(set('a', 10) + '\n' + hugeSet());
        f.load("a.cnt");
        f.load("huge.cnt");
        QVERIFY(f.library.isBusy());
        QTRY_VERIFY(f.showsProgress());
        QCOMPARE(f.page(), u"page a"_s);
        QTest::keyClick(&f.window, Qt::Key_Escape);
        QVERIFY(!f.library.isBusy());
        QVERIFY(!f.showsProgress());
        QCOMPARE(f.library.topRows().size(), size_t(1));
        QCOMPARE(f.window.findChild<QMenu*>(u"removeMenu"_s)->actions().size(), 1);
        QVERIFY(f.window.findChild<HelpIndexListBox*>()->model()->rowCount() > 0);
        f.load("a.cnt");
        QTRY_VERIFY(!f.library.isBusy());
        QCOMPARE(f.library.topRows().size(), size_t(2));
    }

    void thePageOfTheUserStays()
    {
        Fixture f(set('a', 10) + '\n' + set('b', 10) + '\n' + hugeSet());
        f.load("b.cnt");
        f.load("huge.cnt");
        f.window.gotoFirstPage();
        QVERIFY(f.library.isBusy());
        f.browser().setSource(f.files.path(u"a.html"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!f.library.isBusy(), 60'000);
        QCOMPARE(f.library.topRows().size(), size_t(2));
        QCOMPARE(f.page(), u"page a"_s);
        QVERIFY(f.library.findRow(f.files.path(u"p/page7.html"_s)) != nullptr);
    }

    /// An answer is due to what was asked for last, and to who has no page at all.
    void whatWasAskedForIsShown()
    {
        Fixture f(set('a', 10) + '\n' + set('b', 10) + '\n' + hugeSet());
        f.load("b.cnt");
        f.load("huge.cnt");
        f.browser().setSource(f.files.path(u"a.html"_s));
        QVERIFY(f.library.isBusy());
        f.window.showInstalled(f.files.path(u"b.cnt"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!f.library.isBusy(), 60'000);
        QCOMPARE(f.page(), u"page b"_s);
        f.load("huge.cnt");
        QVERIFY(f.library.isBusy());
        auto* removal = f.window.findChild<QMenu*>(u"removeMenu"_s);
        while (!removal->actions().isEmpty()) {
            removal->actions().at(0)->trigger();
        }
        QVERIFY(!f.browser().hasPage() && f.library.isBusy());
        QTRY_VERIFY_WITH_TIMEOUT(!f.library.isBusy(), 60'000);
        QCOMPARE(f.page(), u"page a"_s);
        QVERIFY(f.window.findChild<QAction*>(u"editFindAction"_s)->isEnabled());
    }

    void openFilesAreKeptWhenClosedTooEarly()
    {
        const TemporaryFiles files(hugeSet());
        {
            HelpLibrary library;
            HelpMainWindow window(library);
            window.insertContents(files.first());
            QVERIFY(library.isBusy());
        }
        QCOMPARE(QSettings().value(u"HelpMainWindow/contents"_s).toStringList(), QStringList{files.first()});
    }
};

QTEST_MAIN(TestLoading)
#include "tst_loading.moc"
