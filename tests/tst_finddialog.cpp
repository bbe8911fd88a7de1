// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"
#include "browser/helpfinddialog.h"
#include "library/helplibrary.h"

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

const QString NoMatch = QStringLiteral("<p>The dog sat.</p><p>No more.</p>");
const QString OneMatch = QStringLiteral("<p>The dog and</p><p>the cat sat.</p>");
const QString ThreeMatches = QStringLiteral("<p>A cat, a <b>c</b>at</p><p>and one cat</p>");

/// Answers every message box that opens with the same button and keeps what the boxes said.
class Answers : public QObject {
public:
    explicit Answers(QMessageBox::StandardButton button)
    {
        connect(&m_timer, &QTimer::timeout, this, [this, button] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                said.append(box->windowTitle() + u": " + box->text());
                auto* answer = box->button(button);
                (answer == nullptr ? box->button(QMessageBox::Ok) : answer)->click();
            }
        });
        m_timer.start(5);
    }

    /// Until no box is open any more.
    static void wait()
    {
        while (QApplication::activeModalWidget() != nullptr) {
            QTest::qWait(1);
        }
    }

    QStringList said;

private:
    QTimer m_timer;
};

} // namespace

class TestFindDialog : public QObject {
    Q_OBJECT

    struct Viewer {
        HelpLibrary library;
        QMainWindow window;
        HelpBrowser* browser = new HelpBrowser(library, &window);
        HelpFindDialog* dialog = nullptr;

        explicit Viewer(const QString& html, const QString& text = QStringLiteral("cat"))
        {
            window.setCentralWidget(browser);
            window.resize(500, 400);
            window.show();
            browser->setHtml(html);
            dialog = new HelpFindDialog(&window, browser);
            dialog->setFindText(text);
        }

        [[nodiscard]] QPushButton* button(const QString& text) const
        {
            for (auto* button : dialog->findChildren<QPushButton*>()) {
                if (button->text() == text) {
                    return button;
                }
            }
            return nullptr;
        }

        [[nodiscard]] QString countText() const
        {
            return dialog->findChild<QLabel*>(QStringLiteral("countLabel"))->text();
        }

        /// The number of the match that a search found, or what it said, or "silent".
        QString step(bool forward, bool byButton, Answers& answers) const
        {
            const auto before = browser->textCursor();
            const auto boxes = answers.said.size();
            byButton ? button(QStringLiteral("Find"))->click() : dialog->findNext(forward);
            Answers::wait();
            if (answers.said.size() > boxes) {
                return answers.said.constLast() == u"Not found: Start search from begin ?"
                           ? QStringLiteral("asked")
                           : answers.said.constLast();
            }
            const auto after = browser->textCursor();
            if (after == before || after.selectedText().toLower() != dialog->findText().toLower()) {
                return QStringLiteral("silent");
            }
            const QString above = browser->toPlainText().first(after.selectionStart());
            return QString::number(above.count(dialog->findText(), Qt::CaseInsensitive) + 1);
        }
    };

private Q_SLOTS:
    void states_data();
    void states();
    void declinedUntilReset();
    void options();
    void failureKeepsSelection();
    void foreignTextIsPlain();
    void marksAndCount();
    void marksAgreeWithFind();
    void closing_data();
    void closing();
    void keepsSearch();
};

void TestFindDialog::states_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<bool>("forward");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<QStringList>("steps");
    const QString missing = QStringLiteral("Not found: 'cat' not found.");
    const auto row = [](const char* name, const QString& page, bool forward, bool yes,
                        const QStringList& steps) { QTest::newRow(name) << page << forward << yes << steps; };
    row("0, forward, yes", NoMatch, true, true, {u"asked"_qs, missing, missing, missing});
    row("0, forward, no", NoMatch, true, false, {u"asked"_qs, u"silent"_qs, u"silent"_qs});
    row("0, backward, yes", NoMatch, false, true, {u"asked"_qs, missing, missing});
    row("0, backward, no", NoMatch, false, false, {u"asked"_qs, u"silent"_qs});
    row("1, forward, yes", OneMatch, true, true, {u"1"_qs, u"asked"_qs, u"silent"_qs, u"asked"_qs});
    row("1, forward, no", OneMatch, true, false, {u"1"_qs, u"asked"_qs, u"silent"_qs, u"silent"_qs});
    row("1, backward, yes", OneMatch, false, true, {u"asked"_qs, u"1"_qs, u"asked"_qs});
    row("1, backward, no", OneMatch, false, false, {u"asked"_qs, u"silent"_qs, u"silent"_qs});
    row("3, forward, yes", ThreeMatches, true, true,
        {u"1"_qs, u"2"_qs, u"3"_qs, u"asked"_qs, u"1"_qs, u"2"_qs, u"3"_qs, u"asked"_qs});
    row("3, forward, no", ThreeMatches, true, false,
        {u"1"_qs, u"2"_qs, u"3"_qs, u"asked"_qs, u"silent"_qs, u"silent"_qs});
    row("3, backward, yes", ThreeMatches, false, true,
        {u"asked"_qs, u"3"_qs, u"2"_qs, u"1"_qs, u"asked"_qs, u"3"_qs});
    row("3, backward, no", ThreeMatches, false, false, {u"asked"_qs, u"silent"_qs});
}

void TestFindDialog::states()
{
    QFETCH(QString, page);
    QFETCH(bool, forward);
    QFETCH(bool, yes);
    QFETCH(QStringList, steps);
    for (const bool byButton : {true, false}) {
        Viewer viewer(page);
        viewer.dialog->setSearch({QStringLiteral("cat"), false, false, forward});
        viewer.dialog->setVisible(byButton);
        Answers answers(yes ? QMessageBox::Yes : QMessageBox::No);
        QStringList seen;
        for (qsizetype i = 0; i < steps.size(); ++i) {
            seen.append(viewer.step(forward, byButton, answers));
        }
        QCOMPARE(seen, steps);
    }
}

void TestFindDialog::declinedUntilReset()
{
    Viewer viewer(NoMatch);
    viewer.dialog->show();
    Answers answers(QMessageBox::No);
    QCOMPARE(viewer.step(true, true, answers), u"asked");
    viewer.dialog->setFindText(QStringLiteral("dog"));
    QCOMPARE(viewer.step(true, true, answers), u"silent");
    viewer.dialog->resetFind();
    QCOMPARE(viewer.step(true, true, answers), u"1");
}

void TestFindDialog::options()
{
    Viewer viewer(QStringLiteral("<p>concat Cat cat&nbsp;x</p>"));
    Answers answers(QMessageBox::No);
    viewer.dialog->setSearch({QStringLiteral("cat"), true, false, true});
    QCOMPARE(viewer.step(true, true, answers), u"2");
    viewer.dialog->setSearch({QStringLiteral("cat"), true, true, true});
    QCOMPARE(viewer.step(true, true, answers), u"3");
    viewer.browser->moveCursor(QTextCursor::Start);
    viewer.dialog->setFindText(QStringLiteral("cat\u00a0x"));
    viewer.dialog->findNext(true);
    QCOMPARE(viewer.browser->textCursor().selectionStart(), 11);
}

void TestFindDialog::failureKeepsSelection()
{
    Viewer viewer(OneMatch);
    Answers answers(QMessageBox::Yes);
    viewer.dialog->findNext(true);
    viewer.dialog->setFindText(QStringLiteral("zebra"));
    viewer.dialog->findNext(true);
    Answers::wait();
    viewer.dialog->findNext(true);
    Answers::wait();
    QCOMPARE(answers.said.size(), 2);
    QCOMPARE(viewer.browser->textCursor().selectedText(), u"cat");
}

void TestFindDialog::foreignTextIsPlain()
{
    Viewer viewer(OneMatch, QStringLiteral("<b>%1</b>"));
    Answers answers(QMessageBox::Yes);
    viewer.dialog->findNext(true);
    Answers::wait();
    viewer.dialog->findNext(true);
    Answers::wait();
    QCOMPARE(answers.said.constLast(), u"Not found: '<b>%1</b>' not found.");
}

void TestFindDialog::marksAndCount()
{
    Viewer viewer(ThreeMatches);
    Answers answers(QMessageBox::No);
    viewer.dialog->show();
    QTRY_COMPARE(viewer.countText(), u"3 on this page");
    QCOMPARE(viewer.browser->extraSelections().size(), 3);
    viewer.dialog->findNext(true);
    viewer.dialog->findNext(true);
    QCOMPARE(viewer.countText(), u"2 of 3");
    viewer.dialog->setFindText(QStringLiteral("dog"));
    QTRY_COMPARE(viewer.countText(), u"Not on this page");
    QVERIFY(viewer.browser->extraSelections().isEmpty());
    viewer.browser->setHtml(NoMatch);
    QTRY_COMPARE(viewer.countText(), u"1 on this page");
    QCOMPARE(viewer.browser->extraSelections().constFirst().cursor.selectedText(), u"dog");
    viewer.dialog->close();
    QVERIFY(viewer.browser->extraSelections().isEmpty());
}

/// What is counted is what the searches find, one by one.
void TestFindDialog::marksAgreeWithFind()
{
    const QString text =
        QStringLiteral("<p>aa aaa xaa aa a aaa</p><p>a a xa a a</p><p>aa.aa_aa-aa&nbsp;aa</p>").repeated(300);
    for (const auto& sought : {u"aa"_qs, u"a a"_qs, u"A"_qs}) {
        for (const bool wholeWords : {false, true}) {
            Viewer viewer(text);
            Answers answers(QMessageBox::No);
            viewer.dialog->setSearch({sought, wholeWords, false, true});
            viewer.dialog->show();
            QTRY_VERIFY(!viewer.countText().isEmpty());
            QVERIFY(viewer.browser->extraSelections().size() < 1500);
            int found = 0;
            for (; answers.said.isEmpty(); ++found) {
                viewer.dialog->findNext(true);
                Answers::wait();
            }
            QCOMPARE(viewer.countText(), QStringLiteral("%1 of %1").arg(found - 1));
        }
    }
}

void TestFindDialog::closing_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("Close") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("window") << 2;
    QTest::newRow("window, asking") << 3;
}

void TestFindDialog::closing()
{
    QFETCH(int, way);
    Viewer viewer(OneMatch);
    QPointer<HelpFindDialog> dialog = viewer.dialog;
    QSignalSpy closed(dialog, qOverload<>(&HelpFindDialog::done));
    connect(dialog, qOverload<>(&HelpFindDialog::done), dialog, &QObject::deleteLater);
    dialog->show();
    if (way > 2) {
        // What ends the dialog may come while a message of its own waits for an answer.
        dialog->setFindText(QStringLiteral("zebra"));
        dialog->findNext(true);
        QVERIFY(QApplication::activeModalWidget() != nullptr);
    }
    if (way == 0) {
        viewer.button(QStringLiteral("Close"))->click();
    } else if (way == 1) {
        QTest::keyClick(dialog, Qt::Key_Escape);
    } else {
        dialog->close();
    }
    QCOMPARE(closed.size(), 1);
    QTRY_VERIFY(dialog.isNull());
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
}

void TestFindDialog::keepsSearch()
{
    Viewer viewer(OneMatch);
    viewer.dialog->setSearch({QStringLiteral("dog"), true, true, false});
    const auto search = viewer.dialog->search();
    QCOMPARE(search.text, u"dog");
    QVERIFY(search.wholeWords && search.caseSensitive && !search.forward);
}

QTEST_MAIN(TestFindDialog)
#include "tst_finddialog.moc"
