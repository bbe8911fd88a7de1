// SPDX-License-Identifier: MIT
#include "desk/arrivalmark.h"
#include "desk/breadcrumb.h"
#include "desk/desk.h"
#include "desk/findline.h"
#include "desk/librarylist.h"
#include "desk/librarypage.h"
#include "desk/pageoutline.h"
#include "library/installedcontents.h"
#include "library/openedsets.h"
#include "machine/machinedialog.h"
#include "mainwindow/manual.h"
#include "testfiles.h"
#include "windowuser.h"

#include <QClipboard>
#include <QDockWidget>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QToolButton>
#include <QTreeWidgetItemIterator>
#include <QUrl>

namespace {

constexpr auto TwoSets = R"(== a.cnt
:title=Alpha
:index=a.idx
Start=a1.html
Book=a2.html
 Leaf=a3.html
 Twig=a4.html
== a.idx
one=a1.html
open=a2.html
Sizing=a3.html
treat=a4.html
== b.cnt
:title=Beta
:index=b.idx
Other=b1.html
Tree=b2.html
 Branch=b3.html
== b.idx
openness=b1.html
sizes=b2.html
tree=b3.html
résumé=b3.html
== a1.html
<p>start <a href="b3.html">to the other</a></p>
== a2.html
<p>book</p>
== a3.html
<p>leaf</p>
== a4.html
<p>twig</p>
== b1.html
<p>other</p>
== b2.html
<p>tree</p>
== b3.html
<p>branch</p>
)";

/// A window with help sets, and what can be seen in it.
struct Scene : WindowUser {
    explicit Scene(const QStringList& sets = {}, const QByteArray& text = TwoSets) : files(text)
    {
        for (const auto& set : sets) {
            open(path(set));
        }
        waitUntilLoaded();
    }

    [[nodiscard]] QString path(const QString& name) const { return files.path(name); }
    void show(const QString& page) { browser().setSource(path(page)); }
    [[nodiscard]] QString page() { return browser().toPlainText().trimmed(); }
    [[nodiscard]] HelpContentsListView& tree() { return the<HelpContentsListView>(); }
    [[nodiscard]] QString row() { return tree().currentIndex().data().toString(); }
    /// All rows in sight, indented, an open one with a minus sign.
    [[nodiscard]] QString rows()
    {
        QStringList lines;
        for (auto index = tree().model()->index(0, 0); index.isValid(); index = tree().indexBelow(index)) {
            const int depth = index.parent().isValid() ? 1 + (index.parent().parent().isValid() ? 1 : 0) : 0;
            lines += QString(depth, u' ') +
                     (tree().isExpanded(index) && tree().model()->hasChildren(index) ? QStringLiteral("-")
                                                                                     : QString()) +
                     index.data().toString();
        }
        return lines.join(u'|');
    }
    [[nodiscard]] QString crumbs()
    {
        auto& line = the<Breadcrumb>();
        QStringList parts;
        for (const auto* button : line.findChildren<QToolButton*>()) {
            if (button->isVisibleTo(&line)) {
                parts += button->accessibleName();
            }
        }
        return line.isVisible() ? parts.join(QStringLiteral(" > ")) : QString();
    }
    [[nodiscard]] LibraryPage* library()
    {
        auto* found = window().findChild<LibraryPage*>();
        return found != nullptr && found->isVisible() ? found : nullptr;
    }
    /// Kinds and titles on the library page.
    [[nodiscard]] QString entries()
    {
        QStringList result;
        for (const auto& entry : library()->findChild<LibraryList*>()->entries()) {
            result += QStringLiteral("OIB").at(int(entry.kind)) + QStringLiteral(":") + entry.title;
        }
        return result.join(u' ');
    }
    [[nodiscard]] QMenu& menu(const char* name)
    {
        return *window().findChild<QMenu*>(QLatin1StringView(name));
    }
    void remove(int number) { menu("removeMenu").actions().at(number)->trigger(); }

    TemporaryFiles files;
};

} // namespace

class TestDesk : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void rowsOfHelpSets();
    void oneRowForATitle();
    void groupingIsAChoice();
    void treeFollowsThePage_data();
    void treeFollowsThePage();
    void pagesPassedByAreNotKept();
    void menuOfRows();
    void breadcrumb();
    void markOfThePlace();
    void libraryPageWithoutHelpSets();
    void libraryPageByCommand();
    void libraryPageFindsOutWhatIsWrong();
    void installAndForget();
    void lastSessionAsAWhole();
    void undoRemove_data();
    void undoRemove();
    void filesAreDropped();
    void manualIsNotStored();
    void findLine();
    void indexDoesNotMislead_data();
    void indexDoesNotMislead();
    void indexLooksUpWhatWasTypedBefore();
    void narrowWindow();
    void panelTakesItsPart();
    void handsOnThePage();
    void outlineOfThePage();
    void outlineFollowsThePage();
    void outlineIsRemembered();
    void libraryPageTellsOfTheIndex();
    void documentationOnTheMachine();
};

void TestDesk::init()
{
    QSettings().clear();
}

void TestDesk::rowsOfHelpSets()
{
    Scene s({QStringLiteral("a.cnt")});
    QCOMPARE(s.rows(), QStringLiteral("Start|Book"));
    s.tree().expand(s.tree().model()->index(1, 0));
    s.open(s.path(QStringLiteral("b.cnt")));
    s.waitUntilLoaded();
    QCOMPARE(s.rows(), QStringLiteral("-Alpha| Start| -Book|  Leaf|  Twig|Beta"));
    QVERIFY(s.tree().model()->index(0, 0).data(Qt::FontRole).value<QFont>().bold());
    s.show(QStringLiteral("b3.html"));
    QCOMPARE(s.rows(), QStringLiteral("Alpha|-Beta| Other| -Tree|  Branch"));
    s.clickRow(0);
    QCOMPARE(s.page(), QStringLiteral("start to the other"));
    QCOMPARE(s.row(), QStringLiteral("Alpha"));
    s.remove(1);
    QCOMPARE(s.rows(), QStringLiteral("Start|-Book| Leaf| Twig"));
}

/// A help set whose only row is called like itself needs no other one.
void TestDesk::oneRowForATitle()
{
    Scene s({QStringLiteral("a.cnt"), QStringLiteral("b.cnt")},
            "== a.cnt\n:title=Alpha\nOne=a.html\n== b.cnt\n:title=Beta\nBeta=b.html\n Leaf=c.html\n"
            "== a.html\n<p>one</p>\n== b.html\n<p>beta</p>\n== c.html\n<p>leaf</p>\n");
    s.show(QStringLiteral("c.html"));
    QCOMPARE(s.rows(), QStringLiteral("Alpha|-Beta| Leaf"));
    QCOMPARE(s.row(), QStringLiteral("Leaf"));
    QCOMPARE(s.crumbs(), QStringLiteral("Beta > Leaf"));
    s.show(QStringLiteral("b.html"));
    QCOMPARE(s.row(), QStringLiteral("Beta"));
    QCOMPARE(s.crumbs(), QStringLiteral("Beta"));
    QVERIFY(s.tree().currentIndex().data(Qt::FontRole).value<QFont>().bold());
    s.clickRow(0);
    QCOMPARE(s.page(), QStringLiteral("one"));
    s.clickRow(1 + 1);
    QCOMPARE(s.page(), QStringLiteral("beta"));
    s.trigger("viewGroupAction");
    QCOMPARE(s.rows(), QStringLiteral("One|-Beta| Leaf"));
    s.trigger("viewGroupAction");
    s.remove(0);
    QCOMPARE(s.rows(), QStringLiteral("-Beta| Leaf"));
    s.trigger("fileUndoRemoveAction");
    s.waitUntilLoaded();
    QCOMPARE(s.tree().model()->rowCount(), 2);
}

void TestDesk::groupingIsAChoice()
{
    Scene s({QStringLiteral("a.cnt"), QStringLiteral("b.cnt")});
    s.show(QStringLiteral("a3.html"));
    s.trigger("viewGroupAction");
    QCOMPARE(s.rows(), QStringLiteral("Start|-Book| Leaf| Twig|Other|Tree"));
    QCOMPARE(s.row(), QStringLiteral("Leaf"));
    s.open(s.path(QStringLiteral("a.cnt")));
    s.waitUntilLoaded();
    s.remove(0);
    s.trigger("viewGroupAction");
    QCOMPARE(s.tree().model()->rowCount(), 2);
    QVERIFY(s.rows().contains(QStringLiteral("Beta")));
}

void TestDesk::treeFollowsThePage_data()
{
    addTexts("way", "row");
    addRow("a link", "link", "Branch");
    addRow("back", "link back", "Start");
    addRow("a keyword", "keyword", "Leaf");
    addRow("the breadcrumb of the set", "link crumb", "Other");
    addRow("switched off", "off link", "Start");
    addRow("a page of another row is shown", "leaf", "Leaf");
}

void TestDesk::treeFollowsThePage()
{
    QFETCH(QString, way);
    Scene s({QStringLiteral("a.cnt"), QStringLiteral("b.cnt")});
    s.show(QStringLiteral("a1.html"));
    for (const auto& step : way.split(u' ')) {
        if (step == QStringLiteral("link")) {
            s.followLink(0);
        } else if (step == QStringLiteral("back")) {
            s.trigger("goBackAction");
        } else if (step == QStringLiteral("keyword")) {
            s.lookUp(QStringLiteral("sizi"));
            s.the<QTabWidget>().setCurrentIndex(0);
        } else if (step == QStringLiteral("crumb")) {
            s.the<Breadcrumb>().findChildren<QToolButton*>().constFirst()->click();
        } else if (step == QStringLiteral("off")) {
            s.trigger("viewFollowAction");
        } else {
            s.show(QStringLiteral("a3.html"));
        }
    }
    QTEST(s.row(), "row");
    const QRect place = s.tree().visualRect(s.tree().currentIndex());
    QVERIFY(!place.isEmpty() && s.tree().viewport()->rect().contains(place.center()));
}

/// Of the rows that keys pass over only the first page and the last one are in the history.
void TestDesk::pagesPassedByAreNotKept()
{
    Scene s({QStringLiteral("a.cnt")});
    s.tree().expandAll();
    s.tree().setFocus();
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(&s.tree(), Qt::Key_Down);
    }
    QCOMPARE(s.page(), QStringLiteral("twig"));
    s.trigger("goBackAction");
    QCOMPARE(s.page(), QStringLiteral("start to the other"));
    s.trigger("goForwardAction");
    QCOMPARE(s.page(), QStringLiteral("twig"));
}

void TestDesk::menuOfRows()
{
    Scene s({QStringLiteral("a.cnt"), QStringLiteral("b.cnt")});
    s.show(QStringLiteral("a2.html"));
    const auto choose = [&](const QString& text) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(&s.tree(), &event);
        const auto* menu = s.window().findChild<QMenu*>(QStringLiteral("rowMenu"));
        for (auto* action : menu->actions()) {
            if (QString(action->text()).remove(u'&') == text) {
                action->trigger();
                return;
            }
        }
        QFAIL(qPrintable(text));
    };
    choose(QStringLiteral("Expand All"));
    QCOMPARE(s.rows(), QStringLiteral("-Alpha| Start| -Book|  Leaf|  Twig|Beta"));
    choose(QStringLiteral("Copy Title"));
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Book"));
    choose(QStringLiteral("Copy Path"));
    QCOMPARE(QApplication::clipboard()->text(), s.path(QStringLiteral("a2.html")));
    choose(QStringLiteral("Remove Help Set"));
    QCOMPARE(s.rows(), QStringLiteral("Other|Tree"));
}

void TestDesk::breadcrumb()
{
    Scene s({QStringLiteral("a.cnt"), QStringLiteral("b.cnt")});
    s.show(QStringLiteral("a3.html"));
    QCOMPARE(s.crumbs(), QStringLiteral("Alpha > Book > Leaf"));
    const auto buttons = s.the<Breadcrumb>().findChildren<QToolButton*>();
    auto* siblings = buttons.at(2)->menu();
    Q_EMIT siblings->aboutToShow();
    QCOMPARE(siblings->actions().size(), 2);
    siblings->actions().at(1)->trigger();
    QCOMPARE(s.page(), QStringLiteral("twig"));
    buttons.at(1)->click();
    QCOMPARE(s.page(), QStringLiteral("book"));
    auto* sets = buttons.at(0)->menu();
    Q_EMIT sets->aboutToShow();
    sets->actions().at(1)->trigger();
    QCOMPARE(s.crumbs(), QStringLiteral("Beta > Other"));
    s.remove(1);
    QCOMPARE(s.crumbs(), QStringLiteral("Alpha > Book"));
    s.window().resize(200, 400);
    QVERIFY(s.the<Breadcrumb>().width() <= s.window().width());
    s.files.write(QStringLiteral("loose.html"), "<p>loose</p>");
    s.show(QStringLiteral("loose.html"));
    QCOMPARE(s.crumbs(), QString());
}

void TestDesk::markOfThePlace()
{
    Scene s({QStringLiteral("a.cnt")},
            "== a.cnt\nPage=a.html#there\n== a.html\n" + QByteArray("<p>line</p>").repeated(100) +
                "<p><a name=\"there\"></a>target</p>" + QByteArray("<p>line</p>").repeated(100));
    auto& mark = s.the<ArrivalMark>();
    QVERIFY(mark.isVisible());
    const QPoint place = mark.geometry().center();
    QCOMPARE(s.browser().cursorForPosition(place).block().text(), QStringLiteral("target"));
    QTRY_VERIFY(!mark.isVisible());
}

void TestDesk::libraryPageWithoutHelpSets()
{
    const TemporaryFiles files(TwoSets);
    (void)InstalledContents::installContents(files.path(QStringLiteral("a.cnt")));
    OpenedSets::remember({files.path(QStringLiteral("b.cnt")), files.path(QStringLiteral("a.cnt"))});
    Scene s;
    QVERIFY(s.library() != nullptr);
    QTRY_COMPARE(s.entries(), QStringLiteral("I:Alpha B:Beta"));
    QVERIFY(!s.window().findChild<QAction*>(QStringLiteral("editFindAction"))->isEnabled());
    auto* list = s.library()->findChild<LibraryList*>();
    QVERIFY(list->hasFocus() || s.window().focusWidget() != nullptr);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    s.waitUntilLoaded();
    QVERIFY(s.library() == nullptr);
    QCOMPARE(s.page(), QStringLiteral("other"));
}

void TestDesk::libraryPageByCommand()
{
    Scene s({QStringLiteral("a.cnt"), QStringLiteral("b.cnt")});
    s.show(QStringLiteral("a3.html"));
    s.trigger("goLibraryAction");
    QVERIFY(s.library() != nullptr);
    QCOMPARE(s.entries(), QStringLiteral("O:Alpha O:Beta"));
    QCOMPARE(s.crumbs(), QString());
    QTest::keyClick(&s.window(), Qt::Key_Escape);
    QVERIFY(s.library() == nullptr);
    QCOMPARE(s.crumbs(), QStringLiteral("Alpha > Book > Leaf"));
    s.trigger("goLibraryAction");
    s.clickRow(0);
    QVERIFY(s.library() == nullptr);
    s.trigger("goLibraryAction");
    auto* list = s.library()->findChild<LibraryList*>();
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(s.entries(), QStringLiteral("O:Beta B:Alpha"));
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(s.entries(), QStringLiteral("B:Beta B:Alpha"));
    QVERIFY(s.page().isEmpty());
}

void TestDesk::libraryPageFindsOutWhatIsWrong()
{
    const TemporaryFiles files(
        "== bad.cnt\n:title=Bad\nFine=x.html\n   Too deep=x.html\n== good.cnt\nx=x.html\n");
    OpenedSets::remember({files.path(QStringLiteral("gone.cnt")), files.path(QStringLiteral("bad.cnt")),
                          files.path(QStringLiteral("good.cnt"))});
    Scene s;
    const auto state = [&](size_t number) {
        return files.shortened(s.library()->findChild<LibraryList*>()->entries().at(number).state);
    };
    QTRY_VERIFY(!state(0).isEmpty());
    QTRY_VERIFY(state(1).contains(QStringLiteral("D/bad.cnt, line 3")));
    QTRY_COMPARE(state(2), QStringLiteral("not yet indexed"));
    auto* list = s.library()->findChild<LibraryList*>();
    QVERIFY(!list->entries().front().canBeOpened);
}

void TestDesk::installAndForget()
{
    Scene s({QStringLiteral("a.cnt")});
    InstalledContents::installContents(s.path(QStringLiteral("b.cnt")));
    s.trigger("goLibraryAction");
    auto* page = s.library();
    // The keys pass over the rows of sections.
    auto* list = page->findChild<LibraryList*>();
    QCOMPARE(list->current()->title, QStringLiteral("Alpha"));
    QTest::keyClick(list, Qt::Key_Down);
    QVERIFY(list->current().has_value());
    QCOMPARE(list->current()->kind, LibraryEntry::Kind::Installed);
    QTest::keyClick(list, Qt::Key_Up);
    QCOMPARE(list->current()->kind, LibraryEntry::Kind::Open);
    QTest::keyClick(list, Qt::Key_Up);
    QVERIFY(list->current().has_value());
    InstalledContents::forget(s.path(QStringLiteral("b.cnt")));
    Q_EMIT page->installRequested(s.path(QStringLiteral("a.cnt")), true);
    QCOMPARE(InstalledContents::loadInstalledFromSettings(), QStringList{s.path(QStringLiteral("a.cnt"))});
    QCOMPARE(s.menu("installedMenu").actions().size(), 1);
    Q_EMIT page->removeRequested(LibraryEntry::Kind::Installed, s.path(QStringLiteral("a.cnt")));
    QVERIFY(!s.menu("installedMenu").isEnabled());
    s.remove(0);
    QTRY_COMPARE(s.entries(), QStringLiteral("B:Alpha"));
    Q_EMIT page->clearRequested();
    QCOMPARE(s.entries(), QString());
}

void TestDesk::lastSessionAsAWhole()
{
    TemporaryFiles files(TwoSets);
    const QStringList both{files.path(QStringLiteral("a.cnt")), files.path(QStringLiteral("b.cnt"))};
    QSettings().setValue(QStringLiteral("HelpMainWindow/contents"), both);
    {
        HelpLibrary library;
        HelpMainWindow window(library);
        window.insertContents(files.write(QStringLiteral("c.cnt"), "C=a1.html\n"));
        window.show();
    }
    QCOMPARE(OpenedSets::loadEarlierSession(), both);
    QVERIFY(OpenedSets::load().contains(files.path(QStringLiteral("c.cnt"))));
    Scene s;
    Q_EMIT s.library()->sessionRequested();
    s.waitUntilLoaded();
    // The session offered is the last one, in which only the third was open.
    QCOMPARE(s.menu("removeMenu").actions().size(), 1);
}

void TestDesk::undoRemove_data()
{
    addTexts("removed", "shown", "page");
    addRow("the page was one of its own", "0", "a3.html", "leaf");
    addRow("another set was read", "0", "b3.html", "branch");
    addRow("the last of the sets", "1", "b3.html", "branch");
}

void TestDesk::undoRemove()
{
    QFETCH(QString, removed);
    QFETCH(QString, shown);
    Scene s({QStringLiteral("a.cnt"), QStringLiteral("b.cnt")});
    const auto* undo = s.window().findChild<QAction*>(QStringLiteral("fileUndoRemoveAction"));
    QVERIFY(!undo->isEnabled());
    s.show(shown);
    s.remove(removed.toInt());
    QVERIFY(undo->isEnabled());
    s.trigger("fileUndoRemoveAction");
    s.waitUntilLoaded();
    QTEST(s.page(), "page");
    QVERIFY(!undo->isEnabled());
    QCOMPARE(s.tree().model()->index(0, 0).data().toString(), QStringLiteral("Alpha"));
    QCOMPARE(s.tree().model()->index(1, 0).data().toString(), QStringLiteral("Beta"));
}

void TestDesk::filesAreDropped()
{
    Scene s;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(s.path(QStringLiteral("a.cnt"))),
                  QUrl::fromLocalFile(s.path(QStringLiteral("none.cnt")))});
    for (QWidget* part :
         {static_cast<QWidget*>(s.browser().viewport()), static_cast<QWidget*>(&s.window())}) {
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(part, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(part, &event);
        QVERIFY(event.isAccepted());
    }
    s.waitUntilLoaded();
    QCOMPARE(s.menu("removeMenu").actions().size(), 2);
    s.trigger("goLibraryAction");
    QStringList notices;
    for (const auto* label : s.library()->findChildren<QLabel*>()) {
        notices += label->text();
    }
    QVERIFY(notices.join(u' ').contains(s.path(QStringLiteral("none.cnt"))));
}

void TestDesk::manualIsNotStored()
{
    if (manualContentsFile().isEmpty()) {
        QSKIP("the tests were built outside the source tree");
    }
    const TemporaryFiles files(TwoSets);
    {
        HelpLibrary library;
        HelpMainWindow window(library);
        window.insertContents(files.path(QStringLiteral("a.cnt")));
        window.show();
        window.findChild<QAction*>(QStringLiteral("helpManualAction"))->trigger();
        QTRY_VERIFY(!library.isBusy());
        QCOMPARE(library.roots().size(), size_t(2));
    }
    QCOMPARE(QSettings().value(QStringLiteral("HelpMainWindow/contents")).toStringList(),
             QStringList{files.path(QStringLiteral("a.cnt"))});
    QCOMPARE(OpenedSets::load(), QStringList{files.path(QStringLiteral("a.cnt"))});
}

void TestDesk::findLine()
{
    Scene s({QStringLiteral("a.cnt")}, "== a.cnt\nPage=a.html\n== a.html\n<p>word one</p>" +
                                           QByteArray("<p>line</p>").repeated(200) + "<p>word two</p>" +
                                           QByteArray("<p>line</p>").repeated(200) + "<p>word three</p>");
    s.browser().setFocus();
    s.browser().setPlace(500);
    const int origin = s.browser().place();
    QTest::keyClick(&s.browser(), Qt::Key_Slash);
    auto* line = s.window().findChild<FindLine*>();
    QVERIFY(line != nullptr && line->isVisible());
    auto* field = line->findChild<QLineEdit*>();
    const auto count = [&] { return line->findChild<QLabel*>(QStringLiteral("findCount"))->text(); };
    QTest::keyClicks(field, QStringLiteral("word"));
    QTRY_COMPARE(count(), QStringLiteral("2 of 3"));
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(count(), QStringLiteral("3 of 3"));
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(count(), QStringLiteral("1 of 3, from the top"));
    QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(count(), QStringLiteral("3 of 3, from the bottom"));
    field->setText(QStringLiteral("nowhere"));
    QTRY_COMPARE(count(), QStringLiteral("Not on this page"));
    QTest::keyClick(&s.window(), Qt::Key_Escape);
    QVERIFY(!line->isVisible());
    QCOMPARE(s.browser().place(), origin);
    QVERIFY(s.browser().extraSelections().isEmpty());
}

void TestDesk::indexDoesNotMislead_data()
{
    addTexts("typed", "inUse", "row", "note");
    addRow("letter case", "Siz", "b1.html", "Sizing", "");
    addRow("the set in use", "tre", "b1.html", "tree", "");
    addRow("the other set in use", "tre", "a1.html", "treat", "");
    addRow("the whole word", "open", "b1.html", "open", "");
    addRow("an accent", "resu", "a1.html", "résumé", "");
    addRow("an accent typed", "öpenn", "a1.html", "openness", "");
    addRow("contained only", "enne", "a1.html", "openness", "have it in them");
    addRow("nowhere", "qwertz", "a1.html", "", "No keyword has");
}

void TestDesk::indexDoesNotMislead()
{
    QFETCH(QString, typed);
    QFETCH(QString, inUse);
    QFETCH(QString, note);
    Scene s({QStringLiteral("a.cnt"), QStringLiteral("b.cnt")});
    s.show(inUse);
    s.the<QTabWidget>().setCurrentIndex(1);
    auto& list = s.the<HelpIndexListBox>();
    auto* field = list.parentWidget()->findChild<QLineEdit*>();
    field->setText(typed);
    QTEST(list.currentIndex().data().toString(), "row");
    QStringList notes;
    for (const auto* label : list.parentWidget()->findChildren<QLabel*>()) {
        notes += label->isVisible() ? label->text() : QString();
    }
    QCOMPARE(notes.join(u' ').contains(QStringLiteral("No keyword")), !note.isEmpty());
    QVERIFY(notes.join(u' ').contains(note));
    const QString before = s.page();
    QTest::keyClick(field, Qt::Key_Return);
    if (list.currentIndex().isValid()) {
        QVERIFY(s.page() != before || note.isEmpty());
    } else {
        QCOMPARE(s.page(), before);
        QCOMPARE(s.the<QTabWidget>().currentIndex(), 2);
    }
    field->clear();
    QCOMPARE(list.model()->rowCount(), 8);
}

/// Who types while help sets are still being loaded finds it when they are there.
void TestDesk::indexLooksUpWhatWasTypedBefore()
{
    Scene s;
    s.the<QTabWidget>().setCurrentIndex(1);
    auto& list = s.the<HelpIndexListBox>();
    list.parentWidget()->findChild<QLineEdit*>()->setText(QStringLiteral("tre"));
    s.open(s.path(QStringLiteral("b.cnt")));
    s.waitUntilLoaded();
    QCOMPARE(list.currentIndex().data().toString(), QStringLiteral("tree"));
    s.open(s.path(QStringLiteral("a.cnt")));
    s.waitUntilLoaded();
    QVERIFY(list.currentIndex().data().toString().startsWith(QStringLiteral("tre")));
}

/// The panes lie over the page and go after a choice.
void TestDesk::narrowWindow()
{
    Scene s({QStringLiteral("a.cnt")});
    s.window().resize(360, 400);
    QVERIFY(s.window().width() <= 360);
    QVERIFY(!s.tree().isVisible());
    QTest::keyClick(&s.window(), Qt::Key_1, Qt::ControlModifier);
    QVERIFY(s.tree().isVisible());
    s.clickRow(1);
    QVERIFY(!s.tree().isVisible());
    QCOMPARE(s.page(), QStringLiteral("book"));
    QTest::keyClick(&s.window(), Qt::Key_2, Qt::ControlModifier);
    QVERIFY(s.the<HelpIndexListBox>().isVisible());
    QTest::keyClick(&s.window(), Qt::Key_Escape);
    QVERIFY(!s.the<HelpIndexListBox>().isVisible());
    s.window().resize(900, 600);
    QVERIFY(s.the<QTabWidget>().isVisible());
    QCOMPARE(s.browser().width() < 800, true);
}

/// Until somebody gives it another width.
void TestDesk::panelTakesItsPart()
{
    Scene s({QStringLiteral("a.cnt")});
    auto& dock = s.the<QDockWidget>();
    s.window().resize(1200, 600);
    QTRY_COMPARE(dock.width(), 324);
    s.window().resize(2000, 600);
    QTRY_COMPARE(dock.width(), 420);
    s.window().resizeDocks({&dock}, {250}, Qt::Horizontal);
    s.window().resize(1300, 600);
    QTRY_COMPARE(dock.width(), 250);
}

void TestDesk::handsOnThePage()
{
    Scene s({QStringLiteral("a.cnt")});
    s.show(QStringLiteral("a2.html"));
    auto* viewport = s.browser().viewport();
    QTest::mouseClick(viewport, Qt::BackButton);
    QCOMPARE(s.page(), QStringLiteral("start to the other"));
    QTest::mouseClick(viewport, Qt::ForwardButton);
    QCOMPARE(s.page(), QStringLiteral("book"));
    const int size = s.browser().getFontSize();
    QNativeGestureEvent spread(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, {}, {}, {},
                               0.25, {});
    QApplication::sendEvent(viewport, &spread);
    QVERIFY(s.browser().getFontSize() > size);
}

/// Of three pages with headings, one of them long.
QByteArray pagesWithHeadings()
{
    QByteArray text =
        "== a.cnt\nLong=long.html\nPlain=plain.html\n== plain.html\n<p>plain</p>\n== long.html\n";
    for (const auto* heading : {"<h1>First</h1>", "<h3>Deep</h3>", "<h2>Second</h2>", "<h1>Third</h1>"}) {
        text += QByteArray(heading) + QByteArray("<p>some text of the section</p>").repeated(60) + '\n';
    }
    return text + "<h1>Last</h1><p>end</p>\n";
}

/// The rows of the headings, indented, the current one with a star.
QString headings(Scene& s)
{
    auto* outline = s.window().findChild<PageOutline*>();
    auto* list = outline == nullptr || !outline->isVisible() ? nullptr : outline->findChild<QTreeWidget*>();
    QStringList lines;
    for (QTreeWidgetItemIterator it(list); list != nullptr && *it != nullptr; ++it) {
        const QString star = *it == list->currentItem() ? QStringLiteral("*") : QString();
        const int depth = (*it)->parent() == nullptr ? 0 : (*it)->parent()->parent() == nullptr ? 1 : 2;
        lines += QString(depth, u' ') + star + (*it)->text(0);
    }
    return lines.join(u'|');
}

void TestDesk::outlineOfThePage()
{
    Scene s({QStringLiteral("a.cnt")}, pagesWithHeadings());
    QVERIFY(s.window().findChild<PageOutline*>() == nullptr);
    s.trigger("viewOutlineAction");
    QTRY_COMPARE(headings(s), QStringLiteral("*First| Deep| Second|Third|Last"));
    auto& outline = s.the<PageOutline>();
    s.show(QStringLiteral("plain.html"));
    QTRY_COMPARE(headings(s), QString());
    QVERIFY(outline.findChild<QTreeWidget*>()->findChild<QLabel*>()->isVisible());
    outline.findChild<QToolButton*>()->click();
    QVERIFY(!outline.isVisible());
    QVERIFY(!s.window().findChild<QAction*>(QStringLiteral("viewOutlineAction"))->isChecked());
    QTest::keyClick(&s.window(), Qt::Key_4, Qt::ControlModifier);
    QVERIFY(outline.findChild<QTreeWidget*>()->hasFocus());
    QVERIFY(s.window().findChild<QAction*>(QStringLiteral("viewOutlineAction"))->isChecked());
}

void TestDesk::outlineFollowsThePage()
{
    Scene s({QStringLiteral("a.cnt")}, pagesWithHeadings());
    QTest::keyClick(&s.window(), Qt::Key_4, Qt::ControlModifier);
    QTRY_COMPARE(headings(s), QStringLiteral("*First| Deep| Second|Third|Last"));
    auto* list = s.the<PageOutline>().findChild<QTreeWidget*>();
    auto* bar = s.browser().verticalScrollBar();
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    QCOMPARE(bar->value(), 0);
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(bar->value() > 0);
    const int atSecond = bar->value();
    QTRY_COMPARE(headings(s), QStringLiteral("First| Deep| *Second|Third|Last"));
    bar->setValue(atSecond - 100);
    QTRY_COMPARE(headings(s), QStringLiteral("First| *Deep| Second|Third|Last"));
    bar->setValue(bar->maximum());
    QTRY_COMPARE(headings(s), QStringLiteral("First| Deep| Second|Third|*Last"));
    // One that cannot stand at the top is the current one nevertheless.
    const auto third = list->visualItemRect(list->topLevelItem(1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, third.center());
    QTRY_COMPARE(headings(s), QStringLiteral("First| Deep| Second|*Third|Last"));
    QVERIFY(bar->value() > atSecond);
    QVERIFY(s.browser().cursorForPosition(QPoint(100, 5)).block().text() == QStringLiteral("Third"));
}

void TestDesk::outlineIsRemembered()
{
    {
        Scene s({QStringLiteral("a.cnt")}, pagesWithHeadings());
        s.trigger("viewOutlineAction");
        QVERIFY(s.the<PageOutline>().isVisible());
    }
    Scene s({QStringLiteral("a.cnt")}, pagesWithHeadings());
    QVERIFY(s.window().findChild<QAction*>(QStringLiteral("viewOutlineAction"))->isChecked());
    QTRY_VERIFY(!headings(s).isEmpty());
    const int height = s.the<PageOutline>().height();
    QVERIFY(height > 50 && height < s.window().height() / 2);
}

void TestDesk::libraryPageTellsOfTheIndex()
{
    Scene s({QStringLiteral("a.cnt")});
    s.trigger("goLibraryAction");
    const auto state = [&s] { return s.library()->findChild<LibraryList*>()->entries().front().state; };
    QCOMPARE(state(), QStringLiteral("not yet indexed"));
    QTRY_COMPARE(state(), QStringLiteral("open"));
    s.remove(0);
    QTRY_COMPARE(state(), QString());
}

/// By keys alone, from the command to the page.
void TestDesk::documentationOnTheMachine()
{
    const TemporaryFiles files("== doc/one/index.html\n<title>One</title><p>first</p>\n"
                               "== doc/two/index.html\n<title>Two</title><p>second</p>\n");
    const QByteArray before = qgetenv("XDG_DATA_DIRS");
    qputenv("XDG_DATA_DIRS", files.path(QString()).toUtf8());
    Scene s;
    s.leaveDialogsOpen();
    s.trigger("fileMachineAction");
    auto* dialog = s.openDialog<MachineDialog>();
    QVERIFY(dialog != nullptr);
    auto* list = dialog->findChild<QTreeWidget*>();
    auto* filter = dialog->findChild<QLineEdit*>();
    QTRY_COMPARE(list->topLevelItemCount(), 2);
    QTest::keyClicks(filter, QStringLiteral("nothing like this"));
    QVERIFY(list->currentItem() == nullptr || list->currentItem()->isHidden());
    QTest::keyClick(filter, Qt::Key_Return);
    QVERIFY(dialog->isVisible());
    filter->setText(QStringLiteral("two"));
    QCOMPARE(list->currentItem()->text(0), QStringLiteral("Two"));
    QTest::keyClick(filter, Qt::Key_Return);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    s.waitUntilLoaded();
    QCOMPARE(s.page(), QStringLiteral("second"));
    qputenv("XDG_DATA_DIRS", before);
}

QTEST_MAIN(TestDesk)
#include "tst_desk.moc"
