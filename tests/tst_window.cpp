// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"
#include "contents/helpcontents.h"
#include "contents/helpcontentslistview.h"
#include "index/helpindex.h"
#include "index/helpindexfound.h"
#include "index/helpindexlistbox.h"
#include "library/helplibrary.h"
#include "library/installedcontents.h"
#include "mainwindow/helpmainwindow.h"
#include "mainwindow/manual.h"
#include "testfiles.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>

namespace {

constexpr auto TwoSets = R"(== a.cnt
:title=A & B
:index=a.idx
Start=a1.html
Book=a2.html
 Leaf=a3.html
== a.idx
Alpha=a1.html
Shared=a3.html
== b.cnt
:title=Beta
:index=b.idx
Other=b1.html
== b.idx
Beta=b1.html
Shared=b1.html
== bad.cnt
Fine=a1.html
   Too deep=a2.html
== a1.html
<p>start</p>
== a2.html
<p>book</p>
== a3.html
<p>leaf</p>
== b1.html
<p>other</p>
)";

/// The shown window with helpers that act as a user would.
struct Fixture {
    explicit Fixture(const QByteArray& text = TwoSets) : files(text) {}

    void open()
    {
        window = std::make_unique<HelpMainWindow>(library);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }
    void load(const char* name) const
    {
        window->insertContents(path(name));
        window->gotoFirstPage();
        QTRY_VERIFY(!library.isBusy());
    }
    [[nodiscard]] QString path(const char* name) const { return files.path(QLatin1StringView(name)); }
    [[nodiscard]] QAction* action(const char* name) const
    {
        return window->findChild<QAction*>(QLatin1StringView(name));
    }
    void trigger(const char* name) const { action(name)->trigger(); }
    [[nodiscard]] QMenu* menu(const char* name) const
    {
        return window->findChild<QMenu*>(QLatin1StringView(name));
    }
    [[nodiscard]] HelpBrowser* browser() const { return window->findChild<HelpBrowser*>(); }
    [[nodiscard]] HelpContentsListView* tree() const { return window->findChild<HelpContentsListView*>(); }
    [[nodiscard]] HelpIndexListBox* keywords() const { return window->findChild<HelpIndexListBox*>(); }
    [[nodiscard]] QLineEdit* lookFor() const
    {
        return window->findChild<HelpIndex*>()->findChild<QLineEdit*>();
    }
    [[nodiscard]] QString page() const { return browser()->toPlainText().trimmed(); }
    [[nodiscard]] QString row() const { return tree()->currentIndex().data().toString(); }
    /// The enabled ones among the commands that depend on the page.
    [[nodiscard]] QString enabled() const
    {
        QStringList names;
        for (const auto* name :
             {"Print", "Copy", "Find", "ZoomIn", "ZoomOut", "Back", "Forward", "Up", "Home", "Sync"}) {
            for (const auto* group : {"file", "edit", "view", "go"}) {
                const auto* found = action(qPrintable(QLatin1StringView(group) + QLatin1StringView(name) +
                                                      QStringLiteral("Action")));
                if (found != nullptr && found->isEnabled()) {
                    names.append(QLatin1StringView(name));
                }
            }
        }
        return names.join(u' ');
    }

    TemporaryFiles files;
    HelpLibrary library;
    std::unique_ptr<HelpMainWindow> window;
};

/// The modal dialog that is open, as soon as there is one.
template <typename Dialog>
Dialog* openDialog()
{
    [[maybe_unused]] const bool isOpen =
        QTest::qWaitFor([] { return qobject_cast<Dialog*>(QApplication::activeModalWidget()) != nullptr; });
    return qobject_cast<Dialog*>(QApplication::activeModalWidget());
}

} // namespace

class TestWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void freshWindow();
    void commandsFollowThePage();
    void clicksAndKeysInTheTree();
    void upAndSynchronize();
    void synchronizeKeepsThePlace();
    void clicksBesideRows();
    void floatingPanes();
    void exportAsksBeforeReplacing();
    void removeContents();
    void pictureComesFirst();
    void removingKeepsWhatIsRead_data();
    void removingKeepsWhatIsRead();
    void sameFileTwice();
    void malformedFiles();
    void index();
    void foundTopics();
    void lettersToUnderline();
    void noContentsFile_data();
    void noContentsFile();
    void installedMenu();
    void fileOutOfReach();
    void longNamesInMenus();
    void showInstalled();
    void defaultLoad_data();
    void defaultLoad();
    void paneAndToolBarMarks();
    void foreignTextIsPlain();
    void addContents();
    void outline();
    void manual();
};

void TestWindow::init()
{
    QSettings().clear();
}

void TestWindow::freshWindow()
{
    Fixture f;
    f.open();
    QCOMPARE(f.window->windowTitle(), QStringLiteral("On-line Help"));
    QCOMPARE(f.enabled(), QString());
    QVERIFY(!f.menu("removeMenu")->isEnabled());
    QVERIFY(!f.menu("installedMenu")->isEnabled());
    for (const auto* name :
         {"fileAddContentsAction", "fileExitAction", "viewContentsAction", "viewGoToolbarAction"}) {
        QVERIFY(f.action(name)->isEnabled());
    }
    QCOMPARE(f.action("goHomeAction")->shortcut(), QKeySequence(QStringLiteral("Alt+Up")));
    QVERIFY(f.action("goUpAction")->shortcut().isEmpty());
    const auto* goToolBar = f.window->findChild<QToolBar*>();
    QCOMPARE(goToolBar->actions().size(), 6);
    QCOMPARE(goToolBar->actions().constLast(), f.action("goLibraryAction"));
    QVERIFY(f.window->findChild<QDockWidget*>()->width() >= 200);
}

void TestWindow::commandsFollowThePage()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    QCOMPARE(f.window->windowTitle(), QStringLiteral("On-line Help: A & B"));
    QCOMPARE(f.enabled(), QStringLiteral("Print Copy Find ZoomIn ZoomOut Sync"));
    f.browser()->selectAll();
    f.trigger("editCopyAction");
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("start"));
    f.browser()->setTextCursor(QTextCursor(f.browser()->document()));
    QVERIFY(!f.action("editCopyAction")->isEnabled());
    f.window->loadHtml(f.library.topRows().at(1)->children[0]->contentsItem);
    QCOMPARE(f.enabled(), QStringLiteral("Print Copy Find ZoomIn ZoomOut Back Up Home Sync"));
    QTest::keyClick(f.window.get(), Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(f.page(), QStringLiteral("start"));
    QTest::keyClick(f.window.get(), Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(f.page(), QStringLiteral("leaf"));
    QTest::keyClick(f.window.get(), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(f.page(), QStringLiteral("start"));
}

void TestWindow::clicksAndKeysInTheTree()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    auto* tree = f.tree();
    const auto click = [&](int row) {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualRect(tree->model()->index(row, 0)).center());
    };
    click(1);
    QCOMPARE(f.page(), QStringLiteral("book"));
    f.browser()->setSource(f.path("b1.html"));
    click(1);
    QCOMPARE(f.page(), QStringLiteral("book"));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, QPoint(20, tree->viewport()->height() - 5));
    QCOMPARE(f.page(), QStringLiteral("book"));
    QTest::keyClick(tree, Qt::Key_Right);
    QTest::keyClick(tree, Qt::Key_Down);
    QCOMPARE(f.page(), QStringLiteral("leaf"));
    QTest::mouseMove(tree->viewport(), tree->visualRect(tree->model()->index(0, 0)).center());
    QTRY_COMPARE(f.files.shortened(f.window->statusBar()->currentMessage()), QStringLiteral("D/a1.html"));
}

void TestWindow::upAndSynchronize()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    f.trigger("viewFollowAction");
    f.browser()->setSource(f.path("a3.html"));
    QCOMPARE(f.row(), QStringLiteral("Start"));
    f.trigger("goSyncAction");
    QCOMPARE(f.row(), QStringLiteral("Leaf"));
    QVERIFY(f.tree()->isExpanded(f.tree()->model()->index(1, 0)));
    f.trigger("goUpAction");
    QCOMPARE(f.row(), QStringLiteral("Book"));
    QCOMPARE(f.page(), QStringLiteral("book"));
}

void TestWindow::synchronizeKeepsThePlace()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    f.browser()->setSource(f.path("a3.html#there"));
    auto* tabs = f.window->findChild<QTabWidget*>();
    tabs->setCurrentIndex(1);
    f.trigger("goSyncAction");
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(f.row(), QStringLiteral("Leaf"));
    QCOMPARE(f.files.shortened(f.browser()->getCurrentLink()->page()), QStringLiteral("D/a3.html#there"));
    f.files.write(QStringLiteral("a2.html"), QByteArray("<p>line</p>").repeated(200));
    f.browser()->setSource(f.path("a2.html"));
    f.browser()->setPlace(500);
    const int place = f.browser()->place();
    QVERIFY(place > 400);
    f.trigger("goSyncAction");
    QCOMPARE(f.row(), QStringLiteral("Book"));
    QCOMPARE(f.browser()->place(), place);
}

/// Rows are what clicks are about, and what the status bar says of them stays with them.
void TestWindow::clicksBesideRows()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    for (QAbstractItemView* view :
         {static_cast<QAbstractItemView*>(f.tree()), static_cast<QAbstractItemView*>(f.keywords())}) {
        f.window->findChild<QTabWidget*>()->setCurrentIndex(view == f.tree() ? 0 : 1);
        const QPoint row = view->visualRect(view->model()->index(1, 0)).center();
        QTest::mouseMove(view->viewport(), row + QPoint(1, 0));
        QTest::mouseMove(view->viewport(), row);
        const QString hovered = f.window->statusBar()->currentMessage();
        QVERIFY(!hovered.isEmpty());
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, row);
        QCOMPARE(f.window->statusBar()->currentMessage(), hovered);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->viewport()->rect().bottomLeft() + QPoint(5, -5));
        QCOMPARE(view->selectionModel()->selectedIndexes(), QModelIndexList{view->currentIndex()});
        QCOMPARE(view->currentIndex().row(), 1);
    }
}

void TestWindow::floatingPanes()
{
    Fixture f;
    f.open();
    auto* dock = f.window->findChild<QDockWidget*>();
    dock->setFloating(true);
    dock->resize(60, 300);
    auto* bar = dock->findChild<QTabBar*>();
    QTRY_VERIFY(dock->width() >= bar->sizeHint().width());
}

void TestWindow::removeContents()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    f.load("b.cnt");
    QCOMPARE(f.library.topRows().size(), size_t(3));
    QCOMPARE(f.keywords()->model()->rowCount(), 3);
    f.menu("removeMenu")->actions().at(0)->trigger();
    QCOMPARE(f.library.topRows().size(), size_t(1));
    QCOMPARE(f.keywords()->model()->rowCount(), 2);
    QCOMPARE(f.page(), QStringLiteral("other"));
    QCOMPARE(f.window->windowTitle(), QStringLiteral("On-line Help: Beta"));
    QVERIFY(!f.action("goBackAction")->isEnabled());
    f.load("a.cnt");
    f.menu("removeMenu")->actions().at(0)->trigger();
    f.browser()->setSource(f.path("a3.html"));
    QVERIFY(f.action("goUpAction")->isEnabled());
    f.menu("removeMenu")->actions().at(0)->trigger();
    QVERIFY(!f.menu("removeMenu")->isEnabled());
    QCOMPARE(f.enabled(), QString());
    QCOMPARE(f.window->windowTitle(), QStringLiteral("On-line Help"));
    QVERIFY(f.page().isEmpty());
    QVERIFY(f.browser()->hint().startsWith(QLatin1StringView("No help set is open.")));
}

/// It has a window of its own, so that the window has no page yet.
void TestWindow::pictureComesFirst()
{
    Fixture f("== a.cnt\nPicture = p.png\nPage = p.html\n== p.html\n<p>page</p>");
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(f.path("p.png")));
    f.open();
    QVERIFY(f.browser()->hint().startsWith(QLatin1StringView("No help set is open.")));
    f.load("a.cnt");
    QVERIFY(openDialog<QDialog>()->close());
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QVERIFY(f.page().isEmpty());
    QCOMPARE(f.browser()->hint(), QStringLiteral("Choose a page in the contents."));
}

void TestWindow::removingKeepsWhatIsRead_data()
{
    addTexts("steps", "removed", "after", "back");
    addRow("another set is removed", "a2 b1 a3", "b", "leaf", "book");
    addRow("the set of the page goes", "a2 b1", "b", "book", "start");
    addRow("pages before and behind go", "a2 b1 a3 b1", "a", "other", "other");
    addRow("nothing else was read", "", "a", "other", "other");
}

/// Page and history of the other help sets stay; `steps` are the pages that are shown one after another.
void TestWindow::removingKeepsWhatIsRead()
{
    QFETCH(QString, steps);
    QFETCH(QString, removed);
    Fixture f;
    f.open();
    f.load("a.cnt");
    f.load("b.cnt");
    for (const auto& name : steps.split(u' ', Qt::SkipEmptyParts)) {
        f.browser()->setSource(f.files.path(name + QStringLiteral(".html")));
    }
    f.menu("removeMenu")->actions().at(removed == QStringLiteral("a") ? 0 : 1)->trigger();
    QTEST(f.page(), "after");
    f.trigger("goBackAction");
    QTEST(f.page(), "back");
}

void TestWindow::sameFileTwice()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    f.load("a.cnt");
    QCOMPARE(f.menu("removeMenu")->actions().size(), 2);
    f.menu("removeMenu")->actions().at(0)->trigger();
    QCOMPARE(f.library.topRows().size(), size_t(2));
    f.browser()->setSource(f.path("a3.html"));
    f.trigger("goUpAction");
    QCOMPARE(f.page(), QStringLiteral("book"));
    f.lookFor()->setText(QStringLiteral("shared"));
    QTest::keyClick(f.lookFor(), Qt::Key_Return);
    QCOMPARE(f.page(), QStringLiteral("leaf"));
}

void TestWindow::malformedFiles()
{
    Fixture f;
    f.open();
    f.load("bad.cnt");
    QTRY_VERIFY(QApplication::activeModalWidget() != nullptr);
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box != nullptr);
    QCOMPARE(box->windowTitle(), QStringLiteral("Load contents error"));
    QCOMPARE(f.files.shortened(box->text()), QStringLiteral("'D/bad.cnt' not a contents file."));
    QVERIFY(f.files.shortened(box->informativeText()).startsWith(QStringLiteral("D/bad.cnt, line 2: ")));
    box->button(QMessageBox::Ok)->click();
    QCOMPARE(f.library.topRows().size(), size_t(1));
    f.files.write(QStringLiteral("twice.cnt"), "One=bad.cnt\nTwo=bad.cnt\n");
    f.load("twice.cnt");
    QCOMPARE(f.files.shortened(openDialog<QMessageBox>()->text()),
             QStringLiteral("'D/bad.cnt' not a contents file."));
    openDialog<QMessageBox>()->button(QMessageBox::Ok)->click();
}

void TestWindow::index()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    QTest::keyClick(f.window.get(), Qt::Key_2, Qt::ControlModifier);
    QVERIFY(f.lookFor()->isVisible());
    QTest::keyClicks(f.lookFor(), QStringLiteral("SH"));
    QCOMPARE(f.keywords()->currentIndex().row(), 1);
    QTest::keyClick(f.lookFor(), Qt::Key_Return);
    QCOMPARE(f.page(), QStringLiteral("leaf"));
    QTest::keyClick(f.lookFor(), Qt::Key_Up);
    QCOMPARE(f.keywords()->currentIndex().row(), 0);
    const QPoint second = f.keywords()->visualRect(f.keywords()->model()->index(1, 0)).center();
    QTest::mouseClick(f.keywords()->viewport(), Qt::LeftButton, {}, second);
    QCOMPARE(f.lookFor()->text(), QStringLiteral("Shared"));
    f.browser()->setSource(f.path("a1.html"));
    QTest::mouseDClick(f.keywords()->viewport(), Qt::LeftButton, {}, second);
    QCOMPARE(f.page(), QStringLiteral("leaf"));
    f.browser()->setSource(f.path("a1.html"));
    QTest::keyClick(f.keywords(), Qt::Key_Return);
    QCOMPARE(f.page(), QStringLiteral("leaf"));
    QTest::mouseMove(f.keywords()->viewport(), second + QPoint(1, 0));
    QTRY_COMPARE(f.files.shortened(f.window->statusBar()->currentMessage()), QStringLiteral("D/a3.html"));
}

void TestWindow::foundTopics()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    f.load("b.cnt");
    f.window->findChild<QTabWidget*>()->setCurrentIndex(1);
    f.lookFor()->setText(QStringLiteral("shared"));
    QStringList rows;
    QTest::keyClick(f.lookFor(), Qt::Key_Return);
    auto* dialog = openDialog<HelpIndexFound>();
    QVERIFY(dialog != nullptr);
    auto* list = dialog->findChild<QTreeWidget*>();
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        const auto* row = list->topLevelItem(i);
        rows.append(QStringList{row->text(0), row->text(1), row->text(2)}.join(u'|'));
    }
    dialog->reject();
    QCOMPARE(rows, (QStringList{QStringLiteral("Shared|A & B|Leaf"), QStringLiteral("Shared|Beta|Other")}));
    QCOMPARE(f.page(), QStringLiteral("start"));
    QTest::keyClick(f.lookFor(), Qt::Key_Return);
    list = openDialog<HelpIndexFound>()->findChild<QTreeWidget*>();
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(f.page(), QStringLiteral("other"));
    QTest::keyClick(f.lookFor(), Qt::Key_Return);
    openDialog<HelpIndexFound>()->accept();
    QCOMPARE(f.page(), QStringLiteral("leaf"));
    // The topic that is read already is not the one that is wanted.
    QTest::keyClick(f.lookFor(), Qt::Key_Return);
    openDialog<HelpIndexFound>()->accept();
    QCOMPARE(f.page(), QStringLiteral("other"));
    // The topics of a help set go with it.
    QTest::keyClick(f.lookFor(), Qt::Key_Return);
    const QPointer<HelpIndexFound> open = openDialog<HelpIndexFound>();
    f.menu("removeMenu")->actions().at(0)->trigger();
    QTRY_VERIFY(open.isNull());
}

/// In each menu every entry has a letter of its own.
void TestWindow::lettersToUnderline()
{
    Fixture f;
    f.open();
    const auto letterOf = [](const QString& text) {
        const qsizetype mark =
            QString(text).replace(QStringLiteral("&&"), QStringLiteral("__")).indexOf(u'&');
        return mark < 0 ? QString() : text.mid(mark + 1, 1).toUpper();
    };
    QStringList titles;
    for (const auto* entry : f.window->menuBar()->actions()) {
        titles += letterOf(entry->text());
        QStringList letters;
        for (const auto* action : entry->menu()->actions()) {
            if (!action->isSeparator()) {
                letters += letterOf(action->text());
            }
        }
        QVERIFY2(!letters.contains(QString()), qPrintable(entry->text() + letters.join(u',')));
        QCOMPARE(letters.removeDuplicates(), 0);
    }
    QCOMPARE(titles.removeDuplicates(), 0);
}

void TestWindow::noContentsFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    QTest::newRow("empty") << QByteArray("\n \n") << "it is empty";
    QTest::newRow("a web page") << QByteArray("\n<!DOCTYPE html><p>x</p>") << "web page";
    QTest::newRow("packed") << QByteArray("\x1f\x8b\x08rest") << "packed";
    QTest::newRow("no text") << QByteArray("ELF\0\1\2", 6) << "no text";
    QTest::newRow("two bytes for each character") << QByteArray("\xff\xfe"
                                                                "A\0=\0",
                                                                6)
                                                  << "";
    QTest::newRow("a tag in a row") << QByteArray("<i>x</i>=a1.html") << "";
}

void TestWindow::noContentsFile()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    Fixture f;
    f.open();
    const QString problem = f.window->insertContents(f.files.write(QStringLiteral("x.cnt"), bytes));
    QTRY_VERIFY(!f.library.isBusy());
    QVERIFY(problem.contains(reason));
    QCOMPARE(problem.isEmpty(), reason.isEmpty());
    QCOMPARE(f.library.topRows().empty(), !reason.isEmpty());
}

void TestWindow::installedMenu()
{
    Fixture f;
    for (const auto* name : {"b.cnt", "bad.cnt", "a.cnt"}) {
        InstalledContents::installContents(f.path(name));
    }
    QFile::remove(f.path("bad.cnt"));
    f.open();
    QStringList titles;
    for (const auto* entry : f.menu("installedMenu")->actions()) {
        titles.append(entry->text());
    }
    QCOMPARE(titles, (QStringList{QStringLiteral("A && B"), QStringLiteral("Beta")}));
    QCOMPARE(InstalledContents::loadInstalledFromSettings(), (QStringList{f.path("a.cnt"), f.path("b.cnt")}));
    f.menu("installedMenu")->actions().at(1)->trigger();
    f.menu("installedMenu")->actions().at(0)->trigger();
    f.menu("installedMenu")->actions().at(1)->trigger();
    QCOMPARE(f.menu("removeMenu")->actions().size(), 2);
    QCOMPARE(f.page(), QStringLiteral("other"));
    QCOMPARE(f.row(), QStringLiteral("Other"));
    QVERIFY(!f.action("goBackAction")->isEnabled());
}

/// What cannot be examined is still offered, and says why it does not open.
void TestWindow::fileOutOfReach()
{
    Fixture f;
    const QString loop = f.path("loop.cnt");
    QVERIFY(QFile::link(loop, loop));
    InstalledContents::saveInstalledToSettings({loop});
    f.open();
    QVERIFY(f.menu("installedMenu")->isEnabled());
    f.menu("installedMenu")->actions().at(0)->trigger();
    auto* box = openDialog<QMessageBox>();
    QVERIFY(box != nullptr);
    QVERIFY(box->text().contains(loop) && box->text().contains(QStringLiteral("not readable")));
    box->button(QMessageBox::Ok)->click();
    f.window->showInstalled(f.path("nowhere.cnt"));
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

/// Two help sets without titles in one folder with a long name look different.
void TestWindow::longNamesInMenus()
{
    Fixture f;
    const QString folder = QStringLiteral("folder/").repeated(20);
    for (const auto* name : {"one.cnt", "two.cnt"}) {
        f.files.write(folder + QLatin1StringView(name), "Row=a1.html");
        InstalledContents::installContents(f.path(qPrintable(folder + QLatin1StringView(name))));
    }
    f.open();
    auto* menu = f.menu("installedMenu");
    menu->popup({});
    QCOMPARE(menu->actions().size(), 2);
    QVERIFY(menu->width() < 700);
    for (auto* entry : menu->actions()) {
        QVERIFY(f.files.names().contains(QString(entry->text()).remove(f.path("."))) ||
                entry->text().endsWith(QStringLiteral(".cnt")));
        QVERIFY(entry->text().size() > 140 && entry->toolTip().contains(entry->text()));
    }
    const auto looks = [menu](int entry) {
        return menu->grab(menu->actionGeometry(menu->actions().at(entry)));
    };
    QVERIFY(looks(0).toImage() != looks(1).toImage());
    menu->close();
}

void TestWindow::showInstalled()
{
    Fixture f;
    f.open();
    f.window->showInstalled(f.path("nowhere.cnt"));
    QCOMPARE(f.enabled(), QString());
    f.window->showInstalled(f.path("a.cnt"));
    f.window->showInstalled(f.path("./a.cnt"));
    QTRY_VERIFY(!f.library.isBusy());
    QCOMPARE(f.menu("removeMenu")->actions().size(), 2);
}

void TestWindow::defaultLoad_data()
{
    QTest::addColumn<QStringList>("lastOpen");
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QString>("titles");
    const QString a = QStringLiteral("a.cnt");
    const QString b = QStringLiteral("b.cnt");
    QTest::newRow("nothing") << QStringList() << QStringList() << "";
    QTest::newRow("last open, in title order") << QStringList{b, a} << QStringList{b} << "A && B,Beta";
    QTest::newRow("nothing open: installed") << QStringList{QString()} << QStringList{b, a} << "A && B,Beta";
    QTest::newRow("last open has gone: installed")
        << QStringList{QStringLiteral("gone.cnt")} << QStringList{b} << "Beta";
}

void TestWindow::defaultLoad()
{
    QFETCH(QStringList, lastOpen);
    QFETCH(QStringList, installed);
    QFETCH(QString, titles);
    Fixture f;
    for (auto& name : lastOpen) {
        name = name.isEmpty() ? name : f.files.path(name);
    }
    QSettings().setValue(QStringLiteral("HelpMainWindow/contents"), lastOpen);
    for (const auto& name : installed) {
        InstalledContents::installContents(f.files.path(name));
    }
    f.open();
    f.window->loadDefault();
    QTRY_VERIFY(!f.library.isBusy());
    QStringList loaded;
    for (const auto* entry : f.menu("removeMenu")->actions()) {
        loaded.append(entry->text());
    }
    QCOMPARE(loaded.join(u','), titles);
    QCOMPARE(f.page().isEmpty(), titles.isEmpty());
}

void TestWindow::paneAndToolBarMarks()
{
    Fixture f;
    f.open();
    auto* dock = f.window->findChild<QDockWidget*>();
    QVERIFY(f.action("viewContentsAction")->isChecked());
    QVERIFY(f.action("viewGoToolbarAction")->isChecked());
    dock->close();
    QVERIFY(!f.action("viewContentsAction")->isChecked());
    f.trigger("viewContentsAction");
    QVERIFY(dock->isVisible());
    f.trigger("viewGoToolbarAction");
    QVERIFY(!f.window->findChild<QToolBar*>()->isVisible());
}

void TestWindow::foreignTextIsPlain()
{
    Fixture f("== a.cnt\n:title=<b>x</b> &File [*]\tCtrl+Q\n<i>row</i>=a.html\n== a.html\n<p>x</p>\n");
    f.open();
    f.load("a.cnt");
    QCOMPARE(f.window->windowTitle(), QStringLiteral("On-line Help: <b>x</b> &File [*][*]\tCtrl+Q"));
    QCOMPARE(f.menu("removeMenu")->actions().at(0)->text(), QStringLiteral("<b>x</b> &&File [*] Ctrl+Q"));
    QCOMPARE(f.row(), QStringLiteral("<i>row</i>"));
}

void TestWindow::addContents()
{
    Fixture f;
    f.open();
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    f.trigger("fileAddContentsAction");
    auto* dialog = openDialog<QFileDialog>();
    QCOMPARE(dialog->nameFilters().constFirst(), QStringLiteral("Contents File (*.cnt)"));
    dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(f.path("b.cnt"));
    static_cast<QDialog*>(dialog)->accept();
    QCOMPARE(f.page(), QStringLiteral("other"));
    QVERIFY(InstalledContents::loadInstalledFromSettings().isEmpty());
}

/// The dialog adds the suffix, so it cannot tell that a file of the whole name exists.
void TestWindow::exportAsksBeforeReplacing()
{
    Fixture f;
    f.open();
    f.load("a.cnt");
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QString precious = f.files.write(QStringLiteral("precious.pdf"), "precious");
    const auto answer = [&](QMessageBox::StandardButton button) {
        auto* dialog = openDialog<QFileDialog>();
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(f.path("precious"));
        static_cast<QDialog*>(dialog)->accept();
        auto* box = openDialog<QMessageBox>();
        QVERIFY(box->text().contains(precious));
        box->button(button)->click();
    };
    const auto content = [&] {
        QFile file(precious);
        return file.open(QIODevice::ReadOnly) ? file.read(5) : QByteArray();
    };
    f.trigger("fileExportAction");
    answer(QMessageBox::No);
    QCOMPARE(content(), QByteArray("preci"));
    answer(QMessageBox::Yes);
    QCOMPARE(content(), QByteArray("%PDF-"));
    f.trigger("fileExportAction");
    static_cast<QDialog*>(openDialog<QFileDialog>())->reject();
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

/// The submenu lists the headings of the page shown, as plain text.
void TestWindow::outline()
{
    Fixture f;
    f.open();
    QByteArray html = "<h1>One & <i>all</i></h1>" + QByteArray("<p>Text.</p>").repeated(100);
    for (int i = 0; i < 70; ++i) {
        html += "<h3>Detail</h3>";
    }
    f.files.write(QStringLiteral("long.html"), html + "<h2>Two</h2><h2> </h2>");
    auto* menu = f.window->findChild<QMenu*>(QStringLiteral("outlineMenu"));
    QVERIFY(!menu->isEnabled());
    f.browser()->setSource(f.files.path(QStringLiteral("long.html")));
    QVERIFY(menu->isEnabled());
    Q_EMIT menu->aboutToShow();
    QStringList titles;
    for (const auto* action : menu->actions()) {
        titles += action->text();
    }
    QCOMPARE(titles, (QStringList{QStringLiteral("One && all"), QStringLiteral("    Two")}));
    menu->actions().at(1)->trigger();
    QVERIFY(f.browser()->place() > 0);
    f.browser()->setSource(f.files.path(QStringLiteral("a1.html")));
    QVERIFY(!menu->isEnabled());
}

void TestWindow::manual()
{
    if (manualContentsFile().isEmpty()) {
        QSKIP("the tests were built outside the source tree");
    }
    Fixture f;
    f.open();
    f.load("a.cnt");
    QTest::keyClick(f.window.get(), Qt::Key_F1);
    QTest::keyClick(f.window.get(), Qt::Key_F1);
    QCOMPARE(f.menu("removeMenu")->actions().size(), 2);
    QVERIFY(f.page().contains(QStringLiteral("Quenda")));
    f.trigger("goBackAction");
    QCOMPARE(f.page(), QStringLiteral("start"));
}

QTEST_MAIN(TestWindow)
#include "tst_window.moc"
