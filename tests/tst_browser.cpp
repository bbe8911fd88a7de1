// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"
#include "browser/picturefile.h"
#include "browser/picturestore.h"
#include "library/helplibrary.h"
#include "qchfiles.h"
#include "testfiles.h"

#include <QBuffer>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QImage>
#include <QImageReader>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTimer>

namespace {

/// A library with one help set, a browser on it, and a log of all that the browser emits.
struct Fixture {
    explicit Fixture(const QByteArray& text) : files(text), browser(library, nullptr)
    {
        load(files.first());
        browser.resize(400, 300);
        browser.show();
        const auto flag = [this](const char* name) {
            return [this, name](bool value) {
                log.append(QLatin1StringView(name) + (value ? QStringLiteral("+") : QStringLiteral("-")));
            };
        };
        QObject::connect(&browser, &HelpBrowser::sourceEmpty, flag("empty"));
        QObject::connect(&browser, &HelpBrowser::backEnabled, flag("back"));
        QObject::connect(&browser, &HelpBrowser::forwardEnabled, flag("forward"));
        QObject::connect(&browser, &HelpBrowser::upEnabled, flag("up"));
        QObject::connect(&browser, &HelpBrowser::homeEnabled, flag("home"));
        QObject::connect(&browser, &HelpBrowser::syncEnabled, flag("sync"));
        QObject::connect(&browser, &HelpBrowser::captionChanged,
                         [this](const QString& title) { log.append(QStringLiteral("caption ") + title); });
        QObject::connect(&browser, &HelpBrowser::linkHovered,
                         [this](const QString& link) { hovered = link; });
    }

    void load(const QString& contents)
    {
        (void)library.loadContents(contents, nullptr);
        library.buildIndex();
    }
    [[nodiscard]] QString path(const char* name) const { return files.path(QLatin1StringView(name)); }
    void show(const char* name) { browser.setSource(path(name)); }
    [[nodiscard]] QString text() const { return browser.toPlainText(); }
    /// What has been emitted since the last call.
    QString emitted() { return std::exchange(log, {}).join(QLatin1Char(' ')); }
    [[nodiscard]] QString current() const
    {
        return browser.getCurrentLink() == nullptr ? QString()
                                                   : files.shortened(browser.getCurrentLink()->page());
    }
    [[nodiscard]] HelpContentsItem* record(size_t number) const
    {
        return library.topRows().at(number)->contentsItem;
    }

    TemporaryFiles files;
    HelpLibrary library;
    HelpBrowser browser;
    QStringList log;
    QString hovered;
};

constexpr auto ThreePages = R"(== set.cnt
:title=Set
:index=set.idx
One=one.html
 Sub=sub.html
Two=two.html
Book
 Child=one.html#place
 Empty
Gone=gone.html
== set.idx
nothing
subs
 first=one.html
 second=two.html
lost=lost.html
== one.html
<p>one</p><a name="place">here</a>
== sub.html
<p>sub</p>
== two.html
<p>two</p>
== other.html
<p>other</p>
== blank.html

== script.html
<html><head><script>document.write("x")</script></head><body></body></html>
== x.html
<?xml version="1.0"?><!-- made by hand --><html><body><p>page in XML</p><svg width="1"></svg></body></html>
== loose.html
<title>t</title><link rel="stylesheet" href="none.css"><p>loose</p>
)";

/// A directory of fake browser programs, first and alone in PATH, which log how they were called.
class FakeBrowsers {
public:
    explicit FakeBrowsers(const QStringList& programs) : m_path(qgetenv("PATH"))
    {
        for (const auto& program : programs) {
            const QString file =
                m_files.write(program, "#!/bin/sh\nprintf '%s\\n' \"${0##*/}\" \"$#\" \"$1\" >\"" +
                                           log().toUtf8() + "\"\n");
            QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        qputenv("PATH", m_files.path({}).toUtf8());
    }
    ~FakeBrowsers() { qputenv("PATH", m_path); }
    Q_DISABLE_COPY_MOVE(FakeBrowsers)

    /// Program, number of arguments and first argument of the call; waits for it.
    QStringList call()
    {
        QStringList lines;
        (void)QTest::qWaitFor([&] {
            QFile file(log());
            lines = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n')
                                                   : QStringList();
            return lines.size() == 4;
        });
        return lines.mid(0, 3);
    }

private:
    [[nodiscard]] QString log() const { return m_files.path(QStringLiteral("log")); }

    TemporaryFiles m_files;
    QByteArray m_path;
};

} // namespace

class TestBrowser : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void historyAndSignals();
    void homeForgetsTheWayForward();
    void clearLinks();
    void anchorTakesTheRowOfItsPage();
    void pageMenu();
    void escapedAnchors();
    void pageThatCannotBeShown_data();
    void pageThatCannotBeShown();
    void bookAndKeywordWithoutPage();
    void linksInPages_data();
    void linksInPages();
    void linkTargetsAreShown();
    void remoteNames_data();
    void remoteNames();
    void noBrowserStarts();
    void damagedPicture();
    void svgPictures();
    void brokenLink();
    void linksBetweenHelpSets();
    void beginningOfALargePage();
    void textsLikePictures_data();
    void textsLikePictures();
    void percentSignsInNames();
    void memoryOfPictures();
    void pictureWindow_data();
    void pictureWindow();
    void onlyRegularLocalFilesAreRead();
    void changedPageIsReadAgain();
    void backRemembersThePlace();
    void settingsKeepThePlace();
    void linkLooks();
    void groundsOfThePage();
};

void TestBrowser::historyAndSignals()
{
    Fixture f(ThreePages);
    f.browser.setSource(f.record(0));
    QCOMPARE(f.emitted(), QStringLiteral("caption Set forward- empty- up- home- sync+"));
    f.browser.setSource(f.record(0));
    f.show("one.html");
    QCOMPARE(f.emitted(), QString());
    f.show("sub.html");
    QCOMPARE(f.emitted(), QStringLiteral("caption Set back+ forward- empty- up+ home+ sync+"));
    f.show("other.html");
    QCOMPARE(f.emitted(), QStringLiteral("back+ forward- empty- up- home+ sync-"));
    f.browser.backward();
    QCOMPARE(f.emitted(), QStringLiteral("caption Set empty- up+ home+ sync+ back+ forward+"));
    QCOMPARE(f.text(), QStringLiteral("sub"));
    f.browser.backward();
    QCOMPARE(f.emitted(), QStringLiteral("caption Set empty- up- home- sync+ back- forward+"));
    f.browser.backward();
    QCOMPARE(f.emitted(), QString());
    f.browser.forward();
    f.browser.forward();
    f.emitted();
    f.browser.forward();
    QCOMPARE(f.emitted(), QString());
    QCOMPARE(f.current(), QStringLiteral("D/other.html"));
    f.browser.setSource(QString());
    QCOMPARE(f.emitted(), QStringLiteral("empty+"));
    QCOMPARE(f.current(), QStringLiteral("D/other.html"));
    QVERIFY(f.text().isEmpty());
}

void TestBrowser::homeForgetsTheWayForward()
{
    Fixture f(ThreePages);
    f.browser.home();
    QCOMPARE(f.emitted(), QString());
    f.show("one.html");
    f.show("sub.html");
    f.show("two.html");
    f.emitted();
    f.browser.home();
    QCOMPARE(f.emitted(), QStringLiteral("forward- caption Set forward- empty- up- home- sync+"));
    f.browser.backward();
    QCOMPARE(f.text(), QStringLiteral("sub"));
}

void TestBrowser::clearLinks()
{
    Fixture f(ThreePages);
    f.show("one.html");
    f.show("two.html");
    f.emitted();
    f.browser.clearLinks();
    QCOMPARE(f.emitted(), QStringLiteral("back- forward- home- sync-"));
    QCOMPARE(f.text(), QStringLiteral("two"));
    f.show("sub.html");
    QCOMPARE(f.emitted(), QStringLiteral("caption Set forward- empty- up+ home- sync+"));
}

void TestBrowser::anchorTakesTheRowOfItsPage()
{
    Fixture f(ThreePages);
    f.show("sub.html#x");
    QCOMPARE(f.emitted(), QStringLiteral("caption Set forward- empty- up+ home- sync+"));
    QCOMPARE(f.current(), QStringLiteral("D/sub.html#x"));
    f.show("sub.html");
    QCOMPARE(f.emitted(), QStringLiteral("caption Set back+ forward- empty- up+ home+ sync+"));
}

void TestBrowser::pageThatCannotBeShown_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("missing, named in the contents") << "gone.html"
                                                    << "D/set.cnt, line 9";
    QTest::newRow("missing") << "nowhere.html"
                             << "There is no such file.";
    QTest::newRow("missing with anchor") << "nowhere.html#x"
                                         << "D/nowhere.html#x";
    QTest::newRow("directory") << "."
                               << "This is a directory, not a page.";
    QTest::newRow("empty") << "blank.html"
                           << "The file is empty.";
    QTest::newRow("only scripts") << "script.html"
                                  << "holds nothing that can be shown";
    QTest::newRow("markup in the name") << "<b>x</b>.html"
                                        << "D/<b>x</b>.html";
}

void TestBrowser::pageThatCannotBeShown()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    Fixture f(ThreePages);
    f.show("one.html");
    f.emitted();
    f.browser.setSource(f.files.path(name));
    QVERIFY2(f.files.shortened(f.text()).contains(expected), qPrintable(f.text()));
    QVERIFY(f.emitted().contains(QStringLiteral("back+ forward- empty-")));
    f.browser.backward();
    QVERIFY(f.text().startsWith(QStringLiteral("one")));
}

void TestBrowser::bookAndKeywordWithoutPage()
{
    Fixture f(ThreePages);
    auto* book = f.record(2);
    f.browser.setSource(book);
    QCOMPARE(f.text(), QStringLiteral("Book\nChild\nEmpty"));
    f.emitted();
    QTest::keyClick(&f.browser, Qt::Key_Tab);
    QTest::keyClick(&f.browser, Qt::Key_Return);
    QCOMPARE(f.current(), QStringLiteral("D/one.html#place"));
    QVERIFY(f.emitted().contains(QStringLiteral("back+")));
    f.browser.backward();
    QCOMPARE(f.browser.getCurrentLink(), book);

    // A book in a book has the same page name, but is another page.
    f.browser.setSource(book->listViewItem->children[1]->contentsItem);
    QVERIFY(f.text().contains(QStringLiteral("The contents name no page for this entry.")));
    QVERIFY(f.emitted().contains(QStringLiteral("back+")));

    const auto& rows = f.library.keywordIndex().rows();
    f.browser.setSource(*rows.at(1).indexItem);
    QVERIFY(f.text().contains(QStringLiteral("no page and no sub-keywords")));
    f.browser.setSource(*rows.at(2).indexItem);
    QCOMPARE(f.text(), QStringLiteral("subs\nsecond\nfirst"));
    const auto* keywordPage = f.browser.getCurrentLink();
    QVERIFY(keywordPage->listViewItem == nullptr);
    f.browser.setSource(*rows.at(0).indexItem);
    QVERIFY(f.files.shortened(f.text()).contains(QStringLiteral("D/set.idx, line 5")));
    f.browser.backward();
    QCOMPARE(f.browser.getCurrentLink(), keywordPage);
    QCOMPARE(f.text(), QStringLiteral("subs\nsecond\nfirst"));
}

void TestBrowser::linksInPages_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << "sub.html"
                           << "D/sub.html";
    QTest::newRow("escaped") << "a%20b%23c.html"
                             << "D/a b#c.html";
    QTest::newRow("anchor") << "#place"
                            << "D/page.html#place";
    QTest::newRow("up and down") << "../x/./sub.html#p"
                                 << "x/sub.html#p";
    QTest::newRow("letter case") << "HTTP://UP.CASE/A"
                                 << "HTTP://UP.CASE/A";
    QTest::newRow("code of the viewer's own") << "item:0"
                                              << "item:0";
    QTest::newRow("coded by the page") << "raw:736563726574"
                                       << "raw:736563726574";
    QTest::newRow("script") << "javascript:alert(1)"
                            << "javascript:alert(1)";
}

void TestBrowser::linksInPages()
{
    QFETCH(QString, href);
    QFETCH(QString, expected);
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("page.html"), "<a href=\"" + href.toUtf8() + "\">link</a>");
    f.files.write(QStringLiteral("a b#c.html"), "x");
    f.show("page.html");
    QTest::keyClick(&f.browser, Qt::Key_Tab);
    QTest::keyClick(&f.browser, Qt::Key_Return);
    QVERIFY2(f.current().endsWith(expected), qPrintable(f.current()));
}

void TestBrowser::linkTargetsAreShown()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("page.html"), "<a href=\"two.html\">link</a>");
    f.show("page.html");
    const QPoint link = f.browser.cursorRect().topLeft() + QPoint(8, 8);
    QTest::mouseMove(f.browser.viewport(), link);
    QTRY_COMPARE(f.files.shortened(f.hovered), QStringLiteral("D/two.html"));
    QTest::mouseMove(f.browser.viewport(), QPoint(300, 250));
    QTRY_COMPARE(f.hovered, QString());
    QTest::mouseMove(f.browser.viewport(), link);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(f.browser.viewport(), &leave);
    QCOMPARE(f.hovered, QString());
    QVERIFY(QTest::qWaitForWindowActive(&f.browser));
    QTest::keyClick(&f.browser, Qt::Key_Tab);
    QCOMPARE(f.files.shortened(f.hovered), QStringLiteral("D/two.html"));
}

void TestBrowser::remoteNames_data()
{
    QTest::addColumn<QStringList>("programs");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("started");
    const QStringList all{QStringLiteral("netscape"), QStringLiteral("konqueror"), QStringLiteral("htmlview"),
                          QStringLiteral("xdg-open")};
    QTest::newRow("first") << all << "http://x/?a=1&b='2'"
                           << "netscape";
    QTest::newRow("second") << all.mid(1) << "https://x"
                            << "konqueror";
    QTest::newRow("third") << all.mid(2) << "ftp://x"
                           << "htmlview";
    QTest::newRow("last") << all.mid(3) << "  http://x "
                          << "xdg-open";
    QTest::newRow("missing picture") << all << "/nowhere/a.png"
                                     << "netscape";
}

void TestBrowser::remoteNames()
{
    QFETCH(QStringList, programs);
    QFETCH(QString, name);
    QFETCH(QString, started);
    FakeBrowsers fakes(programs);
    Fixture f(ThreePages);
    f.show("one.html");
    f.emitted();
    f.browser.setSource(name);
    QCOMPARE(fakes.call(), (QStringList{started, QStringLiteral("1"), name}));
    QCOMPARE(f.emitted(), QString());
    QVERIFY(f.text().startsWith(QStringLiteral("one")));
}

void TestBrowser::noBrowserStarts()
{
    FakeBrowsers none({});
    Fixture f(ThreePages);
    for (const auto* name : {"http://x", " ftp://x"}) {
        f.browser.setSource(QLatin1StringView(name));
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        QCOMPARE(box->windowTitle() + u'|' + box->text(),
                 QStringLiteral("Load help file error|On-line Help can display local file only."));
        box->button(QMessageBox::Ok)->click();
    }
    QCOMPARE(f.emitted(), QString());
}

void TestBrowser::damagedPicture()
{
    FakeBrowsers fakes({QStringLiteral("netscape"), QStringLiteral("xdg-open")});
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("damaged.png"), QByteArray("\x89PNG\0\0", 6));
    f.browser.setSource(f.path("damaged.png"));
    QVERIFY(fakes.call().isEmpty());
    QVERIFY(f.text().contains(f.path("damaged.png")));
}

/// Drawings keep the pictures that are part of them, but take none from other files.
void TestBrowser::svgPictures()
{
    if (!QImageReader::supportedImageFormats().contains("svg")) {
        QSKIP("needs the toolkit's SVG plugin");
    }
    TemporaryFiles files;
    QImage dot(1, 1, QImage::Format_RGB32);
    dot.fill(Qt::green);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QVERIFY(buffer.open(QIODevice::WriteOnly) && dot.save(&buffer, "PNG"));
    const QString other = files.write(QStringLiteral("dot.png"), bytes);
    const auto image = [](int x, const QByteArray& target) -> QByteArray {
        return "<image x='" + QByteArray::number(x) + "' width='10' height='10' xlink:href='" + target +
               "'/>";
    };
    const QString drawing = files.write(
        QStringLiteral("a.svg"), "<svg xmlns='http://www.w3.org/2000/svg' "
                                 "xmlns:xlink='http://www.w3.org/1999/xlink' width='20' height='10'>"
                                 "<rect width='20' height='10' fill='red'/>" +
                                     image(0, other.toUtf8()) +
                                     image(10, "data:image/png;base64," + bytes.toBase64()) + "</svg>");
    const PictureFile file(drawing);
    QCOMPARE(file.size(), QSize(20, 10));
    const QImage picture = file.read(file.size());
    QCOMPARE(picture.pixelColor(5, 5), QColor(Qt::red));
    QCOMPARE(picture.pixelColor(15, 5), QColor(Qt::green));
}

/// What begins like a picture but is text is shown as a page.
void TestBrowser::textsLikePictures_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("bitmap") << QByteArray(
        "BM is an abbreviation of many things and long enough for a header.");
    QTest::newRow("portable bitmap") << QByteArray("P1 is the first of them");
    QTest::newRow("drawing") << QByteArray("<svg is how a drawing begins");
}

void TestBrowser::textsLikePictures()
{
    QFETCH(QByteArray, bytes);
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("a.txt"), bytes);
    f.show("a.txt");
    QCOMPARE(f.text(), QString::fromUtf8(bytes));
}

/// Names of files are not taken for places in a text.
void TestBrowser::percentSignsInNames()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("%2/%1.cnt"), "title=%3\nTopic = none%20%1.html\n");
    const QString contents = f.path("%2/%1.cnt");
    f.load(contents);
    f.browser.setSource(f.path("%2/none%20%1.html"));
    QVERIFY2(f.text().contains(contents + u", line 2"), qPrintable(f.text()));
    QVERIFY2(f.text().contains(u"/%2/none%20%1.html"_qs), qPrintable(f.text()));
}

/// Pictures are decoded as large as they are shown, and only so many are kept.
void TestBrowser::memoryOfPictures()
{
    TemporaryFiles files;
    QImage image(3000, 2000, QImage::Format_RGB32);
    image.fill(0);
    PictureStore store;
    for (int i = 0; i < 4; ++i) {
        const QString name = files.path(QString::number(i) + u".png");
        QVERIFY(image.save(name));
        QCOMPARE(store.size(name), image.size());
        QCOMPARE(store.picture(name, {300, 200}).size(), QSize(300, 200));
    }
    QVERIFY(store.sum() < 4 * 300 * 200 * 4 + 1);
    for (int i = 0; i < 4; ++i) {
        const QString name = files.path(QString::number(i) + u".png");
        QCOMPARE(store.picture(name, {9000, 9000}).size(), QSize(3000, 2000).boundedTo(QSize(2828, 2828)));
        QVERIFY(store.isReady(name, {9000, 9000}));
    }
    QVERIFY(store.sum() <= PictureStore::LargestSum);
    QVERIFY(!store.isReady(files.path(QStringLiteral("0.png")), {9000, 9000}));
}

/// The page that cannot be shown tells which page leads to it.
void TestBrowser::brokenLink()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("page.html"), "<a href=none.html>link</a>");
    f.show("page.html");
    QTest::keyClick(&f.browser, Qt::Key_Tab);
    QTest::keyClick(&f.browser, Qt::Key_Return);
    QVERIFY(f.text().contains(f.path("none.html")) && f.text().contains(f.path("page.html")));
}

/// A link into a package that is not open offers to open it; one that an open set can follow leads there,
/// wherever that is.
void TestBrowser::linksBetweenHelpSets()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("far/x"), {});
    makeQch(f.path("from.qch"), "from", "../to/sub/a.html#x");
    makeQch(f.path("to.qch"), "to");
    makeQch(f.path("far/to.qch"), "to");
    f.load(f.path("from.qch"));
    QSignalSpy requested(&f.browser, &HelpBrowser::helpSetRequested);
    const auto follow = [&](const char* page) {
        f.show(page);
        QTest::keyClick(&f.browser, Qt::Key_Tab);
        QTest::keyClick(&f.browser, Qt::Key_Return);
    };
    follow("from.qch/from/index.html");
    QVERIFY2(f.text().contains(QStringLiteral("not open")) &&
                 f.text().contains(QStringLiteral("to.qch › a.html")),
             qPrintable(f.text()));
    QTest::keyClick(&f.browser, Qt::Key_Tab);
    QTest::keyClick(&f.browser, Qt::Key_Return);
    QCOMPARE(requested.value(0), QVariantList({f.path("to.qch"), f.path("to.qch/to/sub/a.html#x")}));
    // What was offered has been done.
    f.load(f.path("to.qch"));
    f.show("to.qch/to/sub/a.html#x");
    QCOMPARE(f.text(), QStringLiteral("text"));
    QCOMPARE(f.current(), QStringLiteral("D/to.qch/to/sub/a.html#x"));
    QVERIFY(f.browser.getCurrentLink()->root() != nullptr);
    auto* root = f.library.getContentsByFileName(f.path("to.qch"))->root();
    f.browser.forget(*root);
    f.library.removeContents(root);
    f.load(f.path("far/to.qch"));
    follow("from.qch/from/index.html");
    QCOMPARE(f.current(), QStringLiteral("D/far/to.qch/to/sub/a.html#x"));
    // From a page of another kind.
    f.files.write(QStringLiteral("page.html"), "<a href='qthelp://org.example/to/index.html'>link</a>");
    follow("page.html");
    QCOMPARE(f.current(), QStringLiteral("D/far/to.qch/to/index.html"));
}

void TestBrowser::beginningOfALargePage()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("page.html"),
                  "<p>begin" + QByteArray("<!-- nothing to lay out -->").repeated(400'000) + "<p>end");
    f.show("page.html");
    QVERIFY(f.text().contains(QStringLiteral("begin")) && !f.text().contains(QStringLiteral("end")));
    QTest::keyClick(&f.browser, Qt::Key_Tab);
    QTest::keyClick(&f.browser, Qt::Key_Return);
    QCOMPARE(f.text(), QStringLiteral("begin\nend"));
}

void TestBrowser::pictureWindow_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QSize>("window");
    QTest::newRow("small") << QSize(200, 100) << QSize(200, 100);
    QTest::newRow("wide") << QSize(1000, 200) << QSize(400, 300);
    QTest::newRow("tall") << QSize(20, 301) << QSize(400, 300);
}

void TestBrowser::pictureWindow()
{
    QFETCH(QSize, picture);
    QFETCH(QSize, window);
    Fixture f(ThreePages);
    const QString name = f.path("picture.html");
    QImage image(picture, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(name, "PNG"));
    // Asked for twice, as a help set does whose first page is a picture, it still has one window.
    f.browser.setSource(name);
    f.browser.setSource(name);
    QTRY_VERIFY(QApplication::activeModalWidget() != nullptr);
    QCoreApplication::processEvents();
    auto* dialog = QApplication::activeModalWidget();
    QCOMPARE(dialog->windowTitle(), name);
    QCOMPARE(dialog->size(), window);
    dialog->close();
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(f.emitted(), QString());
}

void TestBrowser::onlyRegularLocalFilesAreRead()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("page.html"),
                  "<head><link rel=stylesheet href='/dev/zero'></head><body><img src='/dev/zero'>"
                  "<img src='http://x/y.png'><img src='file://h/y.png'><p>end</p>");
    f.show("page.html");
    QVERIFY(f.text().contains(QStringLiteral("end")));
    f.show("x.html");
    QCOMPARE(f.text().trimmed(), QStringLiteral("page in XML"));
    f.show("loose.html");
    QCOMPARE(f.text().trimmed(), QStringLiteral("loose"));
}

void TestBrowser::changedPageIsReadAgain()
{
    Fixture f(ThreePages);
    f.show("one.html");
    f.files.write(QStringLiteral("one.html"), "<p>quite another text</p>");
    f.show("one.html");
    QCOMPARE(f.text(), QStringLiteral("quite another text"));
}

/// A page of 200 short paragraphs.
static QByteArray longPage(const QByteArray& start)
{
    QByteArray page = start;
    for (int i = 0; i < 200; ++i) {
        page += "<p>paragraph <a href='one.html'>link</a> <code>code</code></p>";
    }
    return page;
}

void TestBrowser::backRemembersThePlace()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("long.html"), longPage("<h1>Long</h1>"));
    f.show("long.html");
    f.browser.setPlace(1000);
    const int place = f.browser.place();
    QVERIFY(place > 900);
    f.show("two.html");
    f.browser.backward();
    QCOMPARE(f.browser.place(), place);
    f.browser.forward();
    QCOMPARE(f.browser.place(), 0);
}

void TestBrowser::settingsKeepThePlace()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("long.html"), longPage("<h1>Long</h1>"));
    f.show("long.html");
    f.browser.setPlace(1000);
    const int place = f.browser.place();
    f.emitted();
    f.browser.setFontFixedFamily(QStringLiteral("Nothing Fixed"));
    f.browser.setLinkUnderline(false);
    f.browser.setLinkColor(Qt::red);
    f.browser.zoomIn();
    f.browser.setFontSize(20);
    QVERIFY(qAbs(f.browser.place() - place) < 40);
    QCOMPARE(f.emitted(), QString());
    QFont pixels = f.browser.font();
    pixels.setPixelSize(20);
    f.browser.setFont(pixels);
    f.browser.zoomIn();
    QCOMPARE(f.browser.font().pixelSize(), 21);
    QCOMPARE(f.browser.getFontSize(), 21);
}

/// What the menu of the page does, over a link and elsewhere.
void TestBrowser::pageMenu()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("page.html"), "<p><a href='two.html'>link</a></p><p>text</p>");
    f.show("page.html");
    f.browser.resize(400, 300);
    f.browser.show();
    const auto menuAt = [&](int position) {
        QTextCursor cursor(f.browser.document());
        cursor.setPosition(position);
        const QPoint point = f.browser.cursorRect(cursor).center() + QPoint(3, 0);
        auto* viewport = f.browser.viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, viewport->mapToGlobal(point));
        QCoreApplication::sendEvent(viewport, &event);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    };
    const auto choose = [&](int position, const QString& text) {
        auto* menu = menuAt(position);
        QVERIFY(menu != nullptr);
        for (auto* entry : menu->actions()) {
            if (entry->text().remove(u'&') == text) {
                QVERIFY(entry->isEnabled());
                entry->trigger();
            }
        }
        menu->close();
    };
    choose(1, QStringLiteral("Copy Link Location"));
    QCOMPARE(QApplication::clipboard()->text(), f.path("two.html"));
    choose(6, QStringLiteral("Select All"));
    QCOMPARE(f.browser.textCursor().selectedText().size(), 9);
    choose(6, QStringLiteral("Copy"));
    QCOMPARE(QApplication::clipboard()->text().simplified(), QStringLiteral("link text"));
    QCOMPARE(menuAt(6)->actions().size(), 2);
    // Its entries are about a page that is there.
    const QPointer<QWidget> menu = QApplication::activePopupWidget();
    f.show("one.html");
    QVERIFY(menu == nullptr || !menu->isVisible());
    f.show("page.html");
    choose(1, QStringLiteral("Open Link"));
    QCOMPARE(f.text(), QStringLiteral("two"));
}

/// Links and anchors are written with escapes or without.
void TestBrowser::escapedAnchors()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("far.html"), longPage("<h1>Far</h1>") +
                                                  "<p id='a b'>here</p><p id='c%20d'>there</p>" +
                                                  QByteArray("<p>x</p>").repeated(200));
    for (const auto* anchor : {"a%20b", "a b", "c d", "c%20d"}) {
        f.show("far.html");
        f.browser.setPlace(0);
        f.browser.setSource(f.path("far.html") + u'#' + QString::fromUtf8(anchor));
        QVERIFY2(f.browser.place() > 0, anchor);
    }
}

/// The format of the first link of the page shown.
static QTextCharFormat linkFormat(const HelpBrowser& browser)
{
    for (auto it = browser.document()->begin().begin(); !it.atEnd(); ++it) {
        if (!it.fragment().charFormat().anchorHref().isEmpty()) {
            return it.fragment().charFormat();
        }
    }
    return {};
}

void TestBrowser::linkLooks()
{
    Fixture f(ThreePages);
    f.files.write(QStringLiteral("page.html"), "x <a href='two.html'>link</a>");
    f.files.write(QStringLiteral("own.html"), "x <a href='two.html' style='color:#00ff00'>link</a>");
    f.show("page.html");
    QVERIFY(linkFormat(f.browser).fontUnderline());
    f.browser.setLinkColor(QColor(200, 0, 0));
    f.browser.setLinkUnderline(false);
    QCOMPARE(linkFormat(f.browser).foreground().color(), QColor(200, 0, 0));
    QVERIFY(!linkFormat(f.browser).fontUnderline());
    f.show("own.html");
    QCOMPARE(linkFormat(f.browser).foreground().color(), QColor(0, 255, 0));

    Fixture dark(ThreePages);
    QPalette palette = dark.browser.palette();
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::Link, Qt::blue);
    dark.browser.setPalette(palette);
    dark.files.write(QStringLiteral("page.html"), "x <a href='two.html'>link</a>");
    dark.show("page.html");
    QVERIFY(contrast(linkFormat(dark.browser).foreground().color(), QColor(30, 30, 30)) >= 4.5);
}

void TestBrowser::groundsOfThePage()
{
    Fixture f(ThreePages);
    QPalette palette = f.browser.palette();
    palette.setColor(QPalette::Base, Qt::black);
    palette.setColor(QPalette::Text, Qt::white);
    f.browser.setPalette(palette);
    f.files.write(QStringLiteral("white.html"), "<body bgcolor='white'><p>dark on light</p></body>");
    f.show("white.html");
    QTextCursor cursor(f.browser.document());
    cursor.movePosition(QTextCursor::NextCharacter);
    QCOMPARE(cursor.charFormat().foreground().color(), QColor(Qt::black));
    f.show("two.html");
    cursor = QTextCursor(f.browser.document());
    cursor.movePosition(QTextCursor::NextCharacter);
    QVERIFY(!cursor.charFormat().hasProperty(QTextFormat::ForegroundBrush));
}

QTEST_MAIN(TestBrowser)
#include "tst_browser.moc"
