// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"
#include "browser/helpfinddialog.h"
#include "desk/findline.h"
#include "library/helplibrary.h"
#include "mainwindow/helpmainwindow.h"
#include "search/searchlist.h"
#include "search/searchpane.h"
#include "testfiles.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QProgressBar>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

SearchHit hit(const QString& title)
{
    SearchHit made;
    made.page = u"/help/%1.html"_s.arg(title);
    made.file = made.page;
    made.title = title;
    made.helpSet = u"Set"_s;
    made.path = {u"Book"_s, u"Chapter"_s};
    made.snippet = u"before "_s + QString(300, u'x') + u" the word behind"_s;
    made.marks = {{312, 4}};
    return made;
}

SearchAnswer answer(const QString& query, const QStringList& titles)
{
    SearchAnswer made;
    made.query = query;
    made.total = titles.size();
    for (const auto& title : titles) {
        made.hits.push_back(hit(title));
    }
    return made;
}

constexpr auto BeanPages = R"(== a.cnt
:title=Set
Start=a1.html
Book=a2.html
== a1.html
<html lang="en"><p>Start of the set.</p></html>
== a2.html
<html lang="en"><h1>Coffee</h1><p>Beans and <b>bean</b> counters.</p><p>One bean.</p></html>
)";

/// The shown window with a help set that has been indexed.
struct Window {
    explicit Window(const QByteArray& text) : files(text)
    {
        qputenv("XDG_CACHE_HOME", QFile::encodeName(files.path(u"cache"_s)));
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        window.insertContents(files.first());
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&window, key, modifiers);
    }
    void searchFor(const QString& query) const
    {
        field->setText(query);
        QTRY_VERIFY(list->model()->rowCount() > 0);
        QTest::keyClick(field, Qt::Key_Return);
    }
    [[nodiscard]] QString selected() const { return browser->textCursor().selectedText(); }

    TemporaryFiles files;
    HelpLibrary library;
    HelpMainWindow window{library};
    HelpBrowser* browser = window.findChild<HelpBrowser*>();
    QLineEdit* field = window.findChild<SearchPane*>()->findChild<QLineEdit*>();
    SearchList* list = window.findChild<SearchList*>();
    QLabel* count = window.findChild<QLabel*>(u"searchCount"_s);
};

/// The shown pane, its parts, and what it asks for.
struct Pane {
    Pane()
    {
        QObject::connect(&pane, &SearchPane::searchRequested, &pane,
                         [this](const SearchRequest& request) { requests.append(request.query); });
        QObject::connect(&pane, &SearchPane::pageRequested, &pane,
                         [this](const SearchHit& found, const QString& query) {
                             opened.append(found.title + u'|' + query);
                         });
        pane.resize(200, 500);
        pane.show();
        QVERIFY(QTest::qWaitForWindowActive(&pane));
        pane.setFocus();
    }
    void type(const QString& text) const { QTest::keyClicks(pane.focusWidget(), text); }
    void press(Qt::Key key) const { QTest::keyClick(pane.focusWidget(), key); }
    [[nodiscard]] QStringList rows() const
    {
        QStringList titles;
        for (int i = 0; i < list->model()->rowCount(); ++i) {
            titles.append(list->model()->index(i, 0).data().toString());
        }
        return titles;
    }
    [[nodiscard]] QString current() const { return list->currentIndex().data().toString(); }

    SearchPane pane{nullptr};
    QStringList requests;
    QStringList opened;
    QLineEdit* field = pane.findChild<QLineEdit*>();
    SearchList* list = pane.findChild<SearchList*>();
    QLabel* summary = pane.findChild<SearchSummary*>();
    SearchScope* scope = pane.findChild<SearchScope*>();
};

} // namespace

class TestSearchPane : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QSettings().clear(); }

    void keyboard()
    {
        Pane p;
        p.type(u"js"_s);
        QCOMPARE(p.requests, (QStringList{u"j"_s, u"js"_s}));
        p.press(Qt::Key_Down);
        QVERIFY(p.field->hasFocus());
        p.pane.showAnswer(answer(u"js"_s, {u"A"_s, u"B"_s, u"C"_s}));
        QCOMPARE(p.current(), QString());
        p.press(Qt::Key_Down);
        p.press(Qt::Key_Down);
        QVERIFY(p.list->hasFocus());
        QCOMPARE(p.current(), u"B"_s);
        p.press(Qt::Key_Return);
        p.press(Qt::Key_Up);
        p.press(Qt::Key_Up);
        QVERIFY(p.field->hasFocus());
        p.press(Qt::Key_Return);
        QCOMPARE(p.opened, (QStringList{u"B|js"_s, u"A|js"_s}));
        p.press(Qt::Key_Down);
        QCOMPARE(p.current(), u"B"_s);
        p.type(u"o"_s);
        QVERIFY(p.field->hasFocus());
        QCOMPARE(p.field->text(), u"jso"_s);
        p.pane.showAnswer(answer(u"jso"_s, {u"C"_s}));
        QTest::mouseClick(p.list->viewport(), Qt::LeftButton, {},
                          p.list->visualRect(p.list->model()->index(0, 0)).center());
        QCOMPARE(p.opened.last(), u"C|jso"_s);
        p.list->setFocus();
        p.press(Qt::Key_Backspace);
        QCOMPARE(p.field->text(), u"js"_s);
    }

    /// What comes for another text than that of the field is not shown, and Return waits for what belongs to
    /// it.
    void staleAnswers()
    {
        Pane p;
        p.type(u"ab"_s);
        p.pane.showAnswer(answer(u"a"_s, {u"Old"_s}));
        QCOMPARE(p.rows(), QStringList());
        p.press(Qt::Key_Return);
        p.pane.showAnswer(answer(u"a"_s, {u"Old"_s}));
        QCOMPARE(p.opened, QStringList());
        p.pane.showAnswer(answer(u"ab"_s, {u"New"_s}));
        QCOMPARE(p.opened, QStringList{u"New|ab"_s});
        p.field->clear();
        QCOMPARE(p.rows(), QStringList());
        p.pane.showAnswer(answer(u"ab"_s, {u"New"_s}));
        p.pane.showAnswer(answer(QString(), {u"New"_s}));
        QCOMPARE(p.rows(), QStringList());
    }

    /// Snippets, more pages and other pages for the same words leave the user where they are.
    void sameQueryAgain()
    {
        Pane p;
        p.type(u"a"_s);
        p.pane.showAnswer(answer(u"a"_s, {u"A"_s, u"B"_s}));
        p.press(Qt::Key_Down);
        p.press(Qt::Key_Down);
        QSignalSpy resets(p.list->model(), &QAbstractItemModel::modelReset);
        p.pane.showAnswer(answer(u"a"_s, {u"A"_s, u"B"_s, u"C"_s}));
        QCOMPARE(resets.count(), 0);
        QCOMPARE(p.rows().size(), 3);
        p.pane.showAnswer(answer(u"a"_s, {u"X"_s, u"A"_s, u"B"_s}));
        QCOMPARE(p.current(), u"B"_s);
        p.type(u"b"_s);
        p.pane.showAnswer(answer(u"ab"_s, {u"B"_s, u"C"_s}));
        QCOMPARE(p.current(), QString());
    }

    void moreAtTheEnd()
    {
        Pane p;
        QList<int> limits;
        connect(&p.pane, &SearchPane::searchRequested, &p.pane,
                [&](const SearchRequest& request) { limits.append(request.limit); });
        QStringList titles;
        for (int i = 0; i < SearchRequest().limit; ++i) {
            titles.append(QString::number(i));
        }
        auto many = answer(u"a"_s, titles);
        many.total = 1000;
        p.type(u"a"_s);
        p.pane.showAnswer(many);
        p.list->setFocus();
        p.press(Qt::Key_End);
        QCOMPARE(limits, (QList{50, 200}));
    }

    void scope()
    {
        Pane p;
        QList<QStringList> asked;
        connect(&p.pane, &SearchPane::searchRequested, &p.pane,
                [&](const SearchRequest& request) { asked.append(request.contentsFiles); });
        p.type(u"x"_s);
        const SearchChoice a{u"/a.cnt"_s, u"<b>A</b> & co"_s};
        const SearchChoice b{u"/b.cnt"_s, u"B"_s};
        p.pane.setHelpSets({a});
        QVERIFY(!p.scope->isVisible());
        p.pane.setHelpSets({a, b});
        QVERIFY(p.scope->isVisible());
        const auto entry = [&](const QString& text) {
            const auto entries = p.scope->findChild<QMenu*>()->actions();
            return *std::find_if(entries.begin(), entries.end(),
                                 [&](const auto* action) { return action->text() == text; });
        };
        entry(u"<b>A</b> && co"_s)->trigger();
        QCOMPARE(p.scope->currentText(), u"In <b>A</b> & co"_s);
        p.pane.setHelpSets({b, a});
        p.pane.searchAgain();
        entry(u"&All help sets"_s)->trigger();
        entry(u"B"_s)->trigger();
        p.pane.setHelpSets({a});
        p.pane.searchAgain();
        QCOMPARE(asked,
                 (QList<QStringList>{{}, {a.contentsFile}, {a.contentsFile}, {}, {b.contentsFile}, {}}));
    }

    /// What is chosen while there is no choice says nothing about help sets that come later.
    void searchHere()
    {
        Pane p;
        const SearchChoice a{u"/a.cnt"_s, u"A"_s};
        const SearchChoice b{u"/b.cnt"_s, u"B"_s};
        const SearchChoice c{u"/c.cnt"_s, u"C"_s};
        p.pane.setHelpSets({a});
        p.pane.searchIn(a.contentsFile);
        p.pane.setHelpSets({a, b});
        QCOMPARE(p.scope->currentText(), u"In all help sets"_s);
        p.pane.searchIn(c.contentsFile);
        QCOMPARE(p.scope->currentText(), u"In all help sets"_s);
        p.pane.setHelpSets({a, b, c});
        QCOMPARE(p.scope->currentText(), u"In C"_s);
    }

    void summary_data()
    {
        addTexts("query", "nearest", "text");
        QTest::addColumn<int>("total");
        addRow("none", "<i>x", "", "No page has “&lt;i&gt;x”.", 0);
        addRow("near", "a & b", "a<b",
               R"(No page has “a &amp; b”. These have “<a href="nearest">a&lt;b</a>” (1 page):)", 0);
        addRow("one", "x", "", "1 page, 3 ms", 1);
        addRow("many", "x", "", "1,234 pages, 3 ms", 1234);
    }

    void summary()
    {
        QFETCH(QString, query);
        QFETCH(QString, nearest);
        QFETCH(QString, text);
        QFETCH(int, total);
        QLocale::setDefault(QLocale::English);
        Pane p;
        p.field->setText(query);
        auto found = answer(query, {});
        found.total = total;
        found.milliseconds = 2.6;
        if (!nearest.isEmpty()) {
            found.nearest = nearest;
            found.nearestTotal = 1;
            found.hits = {hit(u"Near"_s)};
        }
        p.pane.showAnswer(found);
        const QRegularExpression looks(u" style=\"[^\"]*\""_s);
        QCOMPARE(p.summary->text().remove(looks), text);
        p.press(Qt::Key_Return);
        QCOMPARE(p.opened, nearest.isEmpty() ? QStringList() : QStringList{u"Near|"_s + nearest});
        if (!nearest.isEmpty()) {
            Q_EMIT p.summary->linkActivated(u"nearest"_s);
            QCOMPARE(p.field->text(), nearest);
        }
        p.pane.setIndexState(IndexState::Stopped, 2);
        QVERIFY(p.summary->text().startsWith(u"Not all pages are indexed. <a "));
        QVERIFY(p.summary->text().contains(u"2 pages could not be read"));
    }

    /// Texts of pages are drawn and told as they are, and a narrow pane does not cut the word that was found.
    void foreignTexts()
    {
        Pane p;
        p.type(u"a"_s);
        p.pane.showAnswer(answer(u"a"_s, {u"<b>bold</b>\n& more "_s + QString(200, u'w')}));
        const auto row = p.list->model()->index(0, 0);
        QVERIFY(row.data(Qt::ToolTipRole).toString().contains(u"&lt;b&gt;bold&lt;/b&gt;\n&amp; more"));
        QCOMPARE(p.pane.width(), 200);
        QCOMPARE(p.list->horizontalScrollBar()->maximum(), 0);
        QVERIFY(p.list->visualRect(row).width() <= p.list->viewport()->width());
        QVERIFY(!p.list->grab().toImage().isNull());
    }

    void marksOnThePage()
    {
        Window w(BeanPages);
        w.window.findChild<QDockWidget*>()->close();
        w.press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(w.field->isVisible() && w.field->hasFocus());
        w.searchFor(u"bean"_s);
        QVERIFY(w.browser->toPlainText().contains(u"Coffee"));
        QTRY_COMPARE(w.count->text(), u"1 of 3 on this page"_s);
        QCOMPARE(w.selected(), u"Beans"_s);
        QCOMPARE(w.browser->extraSelections().size(), 3);
        w.press(Qt::Key_F3);
        w.press(Qt::Key_F3);
        QCOMPARE(w.count->text(), u"3 of 3 on this page"_s);
        w.press(Qt::Key_F3);
        QCOMPARE(w.selected(), u"Beans"_s);
        w.press(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(w.count->text(), u"3 of 3 on this page"_s);
        w.browser->setReadingView(!w.browser->isReadingView());
        QTRY_COMPARE(w.browser->extraSelections().size(), 3);

        w.press(Qt::Key_Escape);
        QVERIFY(w.browser->extraSelections().isEmpty() && !w.count->isVisible());
        w.press(Qt::Key_F3);
        auto* line = w.window.findChild<FindLine*>();
        QVERIFY(line != nullptr && line->isVisible());
        w.window.findChild<QAction*>(u"editFindAction"_s)->trigger();
        QVERIFY(!line->isVisible());
        auto* dialog = w.window.findChild<HelpFindDialog*>();
        QVERIFY(dialog != nullptr && dialog->isVisible());
        w.searchFor(u"bean"_s);
        QVERIFY(!dialog->isVisible());
        QTRY_COMPARE(w.browser->extraSelections().size(), 3);

        // Return before the answer is there, which then comes while a message of the find dialog is open.
        w.field->setText(u"counters"_s);
        QTest::keyClick(w.field, Qt::Key_Return);
        w.window.findChild<QAction*>(u"editFindAction"_s)->trigger();
        const QPointer<HelpFindDialog> asking = w.window.findChild<HelpFindDialog*>();
        asking->setFindText(u"zebra"_s);
        asking->findNext(true);
        QVERIFY(QApplication::activeModalWidget() != nullptr);
        QTRY_VERIFY(asking.isNull());
        QCOMPARE(QApplication::activeModalWidget(), nullptr);
        QTRY_COMPARE(w.selected(), u"counters"_s);
        w.browser->setSource(w.files.path(u"a1.html"_s));
        QVERIFY(w.browser->extraSelections().isEmpty() && !w.count->isVisible());
        w.browser->backward();
        QVERIFY(w.browser->toPlainText().contains(u"Coffee"));
        QVERIFY(w.browser->extraSelections().isEmpty());
    }

    void removedHelpSets()
    {
        Window w(BeanPages);
        w.searchFor(u"bean"_s);
        w.window.findChild<QMenu*>(u"removeMenu"_s)->actions().at(0)->trigger();
        QTRY_COMPARE(w.list->model()->rowCount(), 0);
    }

    void closingStopsIndexing()
    {
        TemporaryFiles files;
        QByteArray contents;
        for (int i = 0; i < 200; ++i) {
            const QString name = u"p%1.html"_s.arg(i);
            contents += name.toUtf8() + '=' + name.toUtf8() + '\n';
            files.write(name, "<p>" + QByteArray("some words to be indexed ").repeated(4000));
        }
        files.write(u"a.cnt"_s, contents);
        // On a busy machine a single measurement says little.
        qint64 shortest = 1000;
        for (int i = 0; i < 3 && shortest >= 200; ++i) {
            qputenv("XDG_CACHE_HOME", QFile::encodeName(files.path(u"cache%1"_s.arg(i))));
            HelpLibrary library;
            auto window = std::make_unique<HelpMainWindow>(library);
            window->show();
            window->insertContents(files.path(u"a.cnt"_s));
            QTRY_VERIFY(window->findChild<QProgressBar*>() != nullptr);
            QElapsedTimer time;
            time.start();
            window.reset();
            shortest = std::min(shortest, time.elapsed());
        }
        QVERIFY2(shortest < 200, qPrintable(QString::number(shortest)));
    }
};

QTEST_MAIN(TestSearchPane)
#include "tst_searchpane.moc"
