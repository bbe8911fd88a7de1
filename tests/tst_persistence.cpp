// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"
#include "browser/helpsettings.h"
#include "library/helplibrary.h"
#include "mainwindow/helpmainwindow.h"
#include "testfiles.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QLabel>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QToolBar>

namespace {

QString storeFile()
{
    return QSettings().fileName();
}

void writeStore(const QByteArray& lines)
{
    QFile file(storeFile());
    QDir().mkpath(QFileInfo(storeFile()).path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[HelpMainWindow]\n" + lines);
}

QByteArrayList readStore()
{
    QFile file(storeFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
}

/// One run of the viewer, from start to end.
struct Run {
    Run() : window(library)
    {
        window.loadDefault();
        waitUntilLoaded();
        window.show();
    }
    void load(const QString& fileName)
    {
        window.insertContents(fileName);
        waitUntilLoaded();
    }
    void waitUntilLoaded()
    {
        if (!QTest::qWaitFor([this] { return !library.isBusy(); })) {
            qFatal("loading does not end");
        }
    }
    [[nodiscard]] HelpBrowser& browser() { return *window.findChild<HelpBrowser*>(); }

    HelpLibrary library;
    HelpMainWindow window;
};

QByteArray longPage()
{
    QByteArray page = "<h1>Long</h1>";
    for (int i = 0; i < 200; ++i) {
        page += "<p>paragraph " + QByteArray::number(i) + "</p>";
    }
    return page;
}

} // namespace

class TestPersistence : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keysAndTypes();
    void firstStart();
    void everythingComesBack();
    void anotherDesktop();
    void colourOfAnotherDesktop();
    void garbage_data();
    void garbage();
    void damagedGeometry_data();
    void damagedGeometry();
    void largerThanTheScreen();
    void maximisedComesBack();
    void panesComeBack();
    void lastPageComesBack();
    void nothingOpen();
    void openFilesThatCannotBeOpened();
    void noBoxForWhatFailedBefore();
};

void TestPersistence::init()
{
    QFile::remove(storeFile());
}

void TestPersistence::keysAndTypes()
{
    const TemporaryFiles files("== a.cnt\nA=a.html\n== b.cnt\nB=b.html\n== a.html\nx\n== b.html\nx\n");
    {
        Run run;
        run.load(files.path(QStringLiteral("b.cnt")));
        run.load(files.path(QStringLiteral("a.cnt")));
        run.browser().setFontFamily(QStringLiteral("Some Font"));
        run.browser().setFontSize(17);
        run.browser().setFontFixedFamily(QStringLiteral("Fixed Font"));
        run.browser().setLinkUnderline(false);
        run.browser().setLinkColor(QColor(0, 0, 255));
        run.window.findChild<QAction*>(QStringLiteral("viewReadingAction"))->trigger();
        run.window.resize(700, 500);
    }
    const auto lines = readStore();
    for (const auto* line : {"[HelpMainWindow]", "fontName=Some Font", "fontSize=17",
                             "fontFixedName=Fixed Font", "linkUnderline=false", "readingView=false",
                             "linkColor=-16776961", R"(geometry\w=700)", R"(geometry\h=500)"}) {
        QVERIFY2(lines.contains(line), line);
    }
    QVERIFY(lines.contains("contents=" + files.path(QStringLiteral("b.cnt")).toUtf8() + ", " +
                           files.path(QStringLiteral("a.cnt")).toUtf8()));
    const QByteArray block = QSettings().value(QStringLiteral("HelpMainWindow/dockGeometry")).toByteArray();
    QVERIFY(block.startsWith("\x01\xd9\xd0\xcb"));
    Run again;
    QVERIFY(!again.browser().isReadingView());
    QVERIFY(!again.window.findChild<QAction*>(QStringLiteral("viewReadingAction"))->isChecked());
}

void TestPersistence::firstStart()
{
    Run run;
    const QSize screen = run.window.screen()->availableGeometry().size();
    QCOMPARE(run.window.size(), (screen * 2 / 3).expandedTo({590, 400}).boundedTo({1280, 900}));
    QVERIFY(run.browser().isReadingView());
    QCOMPARE(run.browser().getFontFamily(), QApplication::font().family());
}

void TestPersistence::everythingComesBack()
{
    {
        Run run;
        run.browser().setFontFamily(QStringLiteral("A, \"B\""));
        run.browser().zoomIn();
        run.browser().setFontFixedFamily(QStringLiteral("C\\D"));
        run.browser().setLinkColor(QColor(1, 2, 3));
        run.window.resize(640, 480);
    }
    Run run;
    QCOMPARE(run.browser().getFontFamily(), QStringLiteral("A, \"B\""));
    QCOMPARE(run.browser().getFontSize(), QApplication::font().pointSize() + 1);
    QCOMPARE(run.browser().getFontFixedFamily(), QStringLiteral("C\\D"));
    QCOMPARE(run.browser().getLinkColor(), QColor(1, 2, 3));
    QCOMPARE(run.window.size(), QSize(640, 480));
    run.browser().resetZoom();
    QCOMPARE(run.browser().getFontSize(), QApplication::font().pointSize());
}

/// Only what a person chose outlasts a change of the desktop.
void TestPersistence::anotherDesktop()
{
    const QFont before = QApplication::font();
    const QPalette colours = QApplication::palette();
    QFont larger = before;
    larger.setPointSize(before.pointSize() + 5);
    larger.setFamily(QStringLiteral("Other Family"));
    QPalette other = colours;
    other.setColor(QPalette::Link, QColor(9, 8, 7));
    // Windows hear of it from the event loop, which does not run here.
    const auto desktop = [](Run& run, const QFont& font, const QPalette& palette) {
        QApplication::setFont(font);
        QApplication::setPalette(palette);
        for (const auto type : {QEvent::ApplicationFontChange, QEvent::ApplicationPaletteChange}) {
            QEvent event(type);
            QApplication::sendEvent(&run.window, &event);
        }
    };
    {
        Run run;
        run.browser().zoomIn();
        run.browser().resetZoom();
        // The settings are looked at and left as they are.
        run.window.findChild<QAction*>(QStringLiteral("viewSettingsAction"))->trigger();
        auto* dialog = run.window.findChild<HelpSettings*>();
        QVERIFY(dialog != nullptr);
        desktop(run, larger, other);
        QCOMPARE(run.browser().getFontSize(), larger.pointSize());
    }
    {
        Run run;
        QCOMPARE(run.browser().getFontFamily(), larger.family());
        QCOMPARE(run.browser().getFontSize(), larger.pointSize());
        QCOMPARE(run.browser().getLinkColor(), QColor(9, 8, 7));
        run.window.findChild<QAction*>(QStringLiteral("viewSettingsAction"))->trigger();
        run.window.findChild<HelpSettings*>()->accept();
        run.browser().zoomOut();
        desktop(run, before, colours);
        QCOMPARE(run.browser().getFontFamily(), before.family());
        QCOMPARE(run.browser().getFontSize(), larger.pointSize() - 1);
        QCOMPARE(run.browser().getLinkColor(), colours.color(QPalette::Active, QPalette::Link));
    }
    Run run;
    QCOMPARE(run.browser().getFontFamily(), before.family());
    QCOMPARE(run.browser().getFontSize(), larger.pointSize() - 1);
}

void TestPersistence::colourOfAnotherDesktop()
{
    const QColor desktop = QApplication::palette().color(QPalette::Active, QPalette::Link);
    writeStore("linkColor=-65536\nlinkColorChosen=false\n");
    QCOMPARE(Run().browser().getLinkColor(), desktop);
    writeStore("linkColor=-65536\n");
    QCOMPARE(Run().browser().getLinkColor(), QColor(Qt::red));
}

void TestPersistence::garbage_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::newRow("words for numbers")
        << QByteArray("fontSize=big\nlinkColor=blue\ngeometry\\w=wide\ngeometry\\h=x\n");
    QTest::newRow("absurd numbers") << QByteArray(
        "fontSize=99999999\ngeometry\\x=2147483647\ngeometry\\w=-5\ngeometry\\h=0\n");
    QTest::newRow("lists for texts") << QByteArray(
        "fontName=a, b\nfontFixedName=@Invalid()\ncontents=@Invalid()\n");
    const std::vector<std::pair<const char*, QByteArray>> values{
        {"nothing", "@Invalid()"},
        {"a cut variant", R"(@Variant(\0\0\0\x7f\xff)"},
        {"wrong bytes", R"(@ByteArray(\xff\0\x1))"},
        {"a large number", "99999999999999999999"},
        {"control characters", R"(\x1b[31m\0\n<b>)"},
        {"a list", R"(1, /dev/zero, @Rect(1 2, , \)"},
        {"a long text", QByteArray(1 << 20, 'x')},
        {"no UTF-8", "\xff\xfe\x80"},
    };
    for (const auto& [name, value] : values) {
        QByteArray lines;
        for (const auto* key :
             {"fontName", "fontSize", "fontFixedName", "readingView", "linkUnderline", "linkColor",
              "linkColorChosen", "geometry\\x", "geometry\\y", "geometry\\w", "geometry\\h", "dockGeometry",
              "panes", "panesWidth", "contents", "contentsInstalled", "session\\page", "session\\scroll"}) {
            lines += QByteArray(key) + '=' + value + '\n';
        }
        QTest::addRow("%s in every key", name) << lines;
    }
    QTest::newRow("no such files") << QByteArray(
        "contents=/nowhere/a.cnt, /dev/zero\nsession\\page=/nowhere\n");
}

void TestPersistence::garbage()
{
    QFETCH(QByteArray, lines);
    writeStore(lines);
    Run run;
    const QFont font = run.browser().font();
    QVERIFY(font.pointSize() > 0 && font.pointSize() < 100);
    QVERIFY(!run.browser().getFontFixedFamily().isEmpty());
    QVERIFY(run.window.width() >= run.window.minimumSizeHint().width());
}

void TestPersistence::damagedGeometry_data()
{
    QTest::addColumn<QByteArray>("block");
    QByteArray whole;
    {
        const QWidget window;
        whole = window.saveGeometry();
    }
    for (const int length : {8, 20, 40, 60}) {
        QTest::addRow("cut to %d", length) << whole.first(length);
    }
    QByteArray huge = whole;
    for (qsizetype i = 8; i < 40; i += 4) {
        huge.replace(i, 4, i % 16 < 8 ? QByteArray(4, '\0') : QByteArray("\0\1\0\0", 4));
    }
    QTest::newRow("65536 pixels") << huge;
    QTest::newRow("noise") << QByteArray(66, 'x');
}

void TestPersistence::damagedGeometry()
{
    QFETCH(QByteArray, block);
    QSettings().setValue(QStringLiteral("HelpMainWindow/dockGeometry"), block);
    Run run;
    const QRect screen = run.window.screen()->availableGeometry();
    QVERIFY(run.window.width() >= 100 && run.window.height() >= 100);
    QVERIFY(run.window.width() <= screen.width() && run.window.height() <= screen.height());
    QVERIFY(screen.intersects(run.window.geometry()));
}

/// A window from a larger screen takes all of a smaller one.
void TestPersistence::largerThanTheScreen()
{
    writeStore("geometry\\w=5000\ngeometry\\h=300\n");
    const Run run;
    const QSize screen = run.window.screen()->availableGeometry().size();
    QVERIFY(run.window.width() <= screen.width() && run.window.width() > screen.width() - 20);
    QCOMPARE(run.window.height(), 300);
}

void TestPersistence::maximisedComesBack()
{
    {
        Run run;
        run.window.resize(640, 480);
        run.window.showMaximized();
        QTRY_VERIFY(run.window.width() > 640);
    }
    Run run;
    QVERIFY(run.window.isMaximized());
    run.window.showNormal();
    QCOMPARE(run.window.size(), QSize(640, 480));
}

void TestPersistence::panesComeBack()
{
    const auto dock = [](Run& run) { return run.window.findChild<QDockWidget*>(); };
    const auto toolBar = [](Run& run) { return run.window.findChild<QToolBar*>(); };
    {
        Run run;
        run.window.resize(800, 500);
        run.window.resizeDocks({dock(run)}, {333}, Qt::Horizontal);
        QTRY_COMPARE(dock(run)->width(), 333);
        run.window.findChild<QAction*>(QStringLiteral("viewGoToolbarAction"))->trigger();
    }
    {
        Run run;
        QTRY_COMPARE(dock(run)->width(), 333);
        QVERIFY(dock(run)->isVisible() && !toolBar(run)->isVisible());
        QVERIFY(!run.window.findChild<QAction*>(QStringLiteral("viewGoToolbarAction"))->isChecked());
        run.window.findChild<QAction*>(QStringLiteral("viewContentsAction"))->trigger();
    }
    Run run;
    QVERIFY(!dock(run)->isVisible() && !toolBar(run)->isVisible());
    run.window.findChild<QAction*>(QStringLiteral("goSyncAction"))->setEnabled(true);
    run.window.findChild<QAction*>(QStringLiteral("goSyncAction"))->trigger();
    QVERIFY(dock(run)->isVisible());
    QTRY_COMPARE(dock(run)->width(), 333);
}

void TestPersistence::lastPageComesBack()
{
    TemporaryFiles files(
        "== a.cnt\n:title=A\nFirst=first.html\nLong=long.html\n== first.html\n<p>first</p>\n");
    files.write(QStringLiteral("long.html"), longPage());
    int place = 0;
    {
        Run run;
        run.load(files.first());
        run.browser().setSource(files.path(QStringLiteral("long.html")));
        run.browser().setPlace(900);
        place = run.browser().place();
        QVERIFY(place > 800);
    }
    {
        Run run;
        QVERIFY(run.browser().toPlainText().startsWith(QStringLiteral("Long")));
        QTRY_COMPARE(run.browser().place(), place);
        run.window.findChild<QAction*>(QStringLiteral("goSyncAction"))->trigger();
        QCOMPARE(run.browser().place(), place);
    }
    files.write(QStringLiteral("a.cnt"), ":title=A\nFirst=first.html\n");
    const Run run;
    QCOMPARE(run.window.findChild<HelpBrowser*>()->toPlainText().trimmed(), QStringLiteral("first"));
}

void TestPersistence::nothingOpen()
{
    {
        const Run run;
    }
    QVERIFY(readStore().contains("contents="));
}

/// Names of which none could be opened change nothing, and what is out of reach is tried again.
void TestPersistence::openFilesThatCannotBeOpened()
{
    const TemporaryFiles files("== a.cnt\nA=a.html\n== a.html\n<p>a</p>");
    const QString loop = files.path(QStringLiteral("loop.cnt"));
    QVERIFY(QFile::link(loop, loop));
    const QStringList open{files.first(), loop};
    QSettings().setValue(QStringLiteral("HelpMainWindow/contents"), open);
    const auto stored = [] {
        return QSettings().value(QStringLiteral("HelpMainWindow/contents")).toStringList();
    };
    {
        HelpLibrary library;
        HelpMainWindow window(library);
        const QString missing = files.path(QStringLiteral("no.cnt"));
        QCOMPARE(window.insertContents(missing),
                 u'\'' + missing + QStringLiteral("' cannot be opened: no such file."));
        window.show();
        QStringList told;
        for (const auto* label : window.findChildren<QLabel*>()) {
            told += label->isVisible() ? label->text() : QString();
        }
        QVERIFY(told.join(u' ').contains(missing));
    }
    QCOMPARE(stored(), open);
    {
        Run run;
        QCOMPARE(run.library.roots().size(), size_t(1));
    }
    QCOMPARE(stored(), open);
}

void TestPersistence::noBoxForWhatFailedBefore()
{
    const TemporaryFiles files("== bad.cnt\nFine=x.html\n   Too deep=x.html\n== x.html\n<p>x</p>\n");
    QSettings().setValue(QStringLiteral("HelpMainWindow/contents"), QStringList{files.first()});
    Run run;
    QVERIFY(!QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }, 100));
    QCOMPARE(run.library.roots().size(), size_t(1));
    // Asked for by name it is told.
    run.load(files.first());
    QTRY_VERIFY(QApplication::activeModalWidget() != nullptr);
    QApplication::activeModalWidget()->close();
}

QTEST_MAIN(TestPersistence)
#include "tst_persistence.moc"
