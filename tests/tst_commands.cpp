// SPDX-License-Identifier: MIT
#include "browser/colorscheme.h"
#include "browser/helpfinddialog.h"
#include "browser/helpsettings.h"
#include "icons/icons.h"
#include "index/helpindexfound.h"
#include "library/installedcontents.h"
#include "testfiles.h"
#include "windowuser.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QSettings>
#include <QShortcut>
#include <QSpinBox>
#include <QToolBar>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr auto Sets = R"(== a.cnt
:title=A
:index=a.idx
Start=a1.html
Book=a2.html
 Leaf=a3.html
== a.idx
Alone=a1.html
Shared=a2.html
== b.cnt
:index=b.idx
Row=b.html
== b.idx
Shared=b.html
== a1.html
<h1>Start</h1><p>page with some words</p>
== a2.html
<p>book</p>
== a3.html
<p>leaf</p>
== b.html
<p>other</p>
)";

/// A window with both sets, on the first page of the first.
struct Fixture : WindowUser {
    Fixture()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        leaveDialogsOpen();
        open(files.path(u"a.cnt"_s));
        open(files.path(u"b.cnt"_s));
        waitUntilLoaded();
        window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window()));
    }
    void press(const QKeySequence& key)
    {
        auto* widget = QApplication::focusWidget();
        QTest::keySequence(widget != nullptr ? widget : &window(), key);
    }
    [[nodiscard]] QAction& action(const char* name)
    {
        return *window().findChild<QAction*>(QLatin1StringView(name));
    }
    [[nodiscard]] QString page() { return browser().toPlainText().simplified(); }

    TemporaryFiles files{Sets};
};

QString plain(QString text)
{
    return text.remove(u'&');
}

/// Presses the button of this text.
void press(QDialog& dialog, const QString& text)
{
    for (auto* button : dialog.findChildren<QPushButton*>()) {
        if (plain(button->text()) == text) {
            button->click();
            return;
        }
    }
    QFAIL(qUtf8Printable(text));
}

/// Commands by where they are in the menus, such as "Edit, Copy"; with submenus.
QMap<QString, QAction*> menuCommands(QMenu& menu, const QString& path)
{
    QMap<QString, QAction*> all;
    for (auto* action : menu.actions()) {
        const QString name = path + u", "_s + plain(action->text());
        if (action->menu() != nullptr) {
            all.insert(menuCommands(*action->menu(), name));
        } else if (!action->isSeparator()) {
            all.insert(name, action);
        }
    }
    return all;
}

QMap<QString, QAction*> menuCommands(HelpMainWindow& window)
{
    QMap<QString, QAction*> all;
    for (auto* action : window.menuBar()->actions()) {
        all.insert(menuCommands(*action->menu(), plain(action->text())));
    }
    return all;
}

QStringList texts(const QList<QKeySequence>& keys)
{
    QStringList all;
    for (const auto& key : keys) {
        all += key.toString(QKeySequence::PortableText);
    }
    return all;
}

/// No two entries of a menu answer to one letter.
void checkLetters(const QList<QAction*>& actions)
{
    QStringList letters;
    for (const auto* action : actions) {
        if (const auto key = QKeySequence::mnemonic(action->text()); !key.isEmpty()) {
            QVERIFY2(!letters.contains(key.toString()), qUtf8Printable(action->text()));
            letters += key.toString();
        }
        if (action->menu() != nullptr && action->menu()->objectName().isEmpty()) {
            checkLetters(action->menu()->actions());
        }
    }
}

/// What a person can use, or read, by itself; no parts of such.
bool isControl(const QWidget& widget)
{
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return (label != nullptr && !label->text().isEmpty()) || widget.inherits("QAbstractButton") ||
           widget.inherits("QComboBox") || widget.inherits("QLineEdit") ||
           widget.inherits("QAbstractSpinBox") || widget.inherits("QAbstractItemView") ||
           widget.inherits("QTextEdit") || widget.inherits("QTabBar");
}

QList<QWidget*> controls(const QWidget& parent)
{
    QList<QWidget*> all;
    for (auto* child : parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (!child->isVisible() || child->isWindow()) {
            continue;
        }
        all += isControl(*child) ? QList{child} : controls(*child);
    }
    return all;
}

QByteArray describe(const QWidget& widget)
{
    const QStringList words{QString::fromUtf8(widget.metaObject()->className()), widget.objectName(),
                            widget.property("text").toString()};
    return words.join(u' ').toUtf8();
}

/// Everything lies inside its window, over nothing else, is as large as its text, and is painted.
void checkPlaces(QWidget& window)
{
    QMap<QWidget*, QRect> places;
    for (auto* control : controls(window)) {
        const QRect place(control->mapTo(&window, QPoint()), control->size());
        QVERIFY2(window.rect().contains(place), describe(*control));
        for (auto it = places.cbegin(); it != places.cend(); ++it) {
            const QByteArray both = describe(*control) + " over " + describe(*it.key());
            QVERIFY2(!it.value().intersects(place), both);
        }
        places.insert(control, place);
        const bool hasText = !control->property("text").toString().isEmpty();
        if (hasText && !control->inherits("QLineEdit")) {
            const QSize least = control->minimumSizeHint();
            QVERIFY2(control->size().expandedTo(least) == control->size(), describe(*control));
            const QImage image = window.grab(place).toImage();
            const QImage blank = image.copy(0, 0, 1, 1).scaled(image.size());
            QVERIFY2(image != blank, describe(*control));
        }
    }
}

/// Tab reaches everything that can have the focus.
void checkTabOrder(QWidget& window)
{
    QSet<QWidget*> reached;
    for (int i = 0; i < 50; ++i) { // NOLINT(*-magic-numbers)
        auto* focus = QApplication::focusWidget();
        QVERIFY(focus != nullptr);
        reached += focus;
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    for (auto* control : controls(window)) {
        if (control->isEnabled() && (control->focusPolicy() & Qt::TabFocus) != 0) {
            const QByteArray both = describe(*control) + " beyond " + describe(*QApplication::focusWidget());
            QVERIFY2(reached.contains(control), both);
        }
    }
}

QString storedFamily()
{
    return QSettings().value(u"HelpMainWindow/fontName"_s).toString();
}

} // namespace

/// What every command, every dialog and every control has in common.
class CommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QSettings().clear(); }

    /// The manual's page of keys and the window tell the same.
    void keyboardPage()
    {
        Fixture f;
        QMap<QString, QStringList> described;
        QStringList others;
        const auto rows =
            matches(sourceText("docs/manual/keyboard.html"), u"<tr><td>(.*?</td><td>.*?</td><td>.*?)</td>"_s);
        for (const auto& row : rows) {
            auto keys = row.section(u"</td><td>"_s, 0, 0).simplified().split(u", "_s);
            auto entries = row.section(u"</td><td>"_s, 1, 1).simplified().split(u", "_s);
            // Others work without a menu, with the mouse, or in one place of the window only.
            if (entries.size() < 2 || keys[0].contains(u' ') ||
                row.section(u"</td><td>"_s, 2).startsWith(u"in ")) {
                others += keys;
                continue;
            }
            const QString menu = entries.takeFirst();
            for (qsizetype i = 0; i < entries.size(); ++i) {
                described[menu + u", "_s + entries[i]] = entries.size() > 1 ? keys.mid(i, 1) : keys;
            }
        }
        const auto all = menuCommands(f.window());
        for (auto it = all.cbegin(); it != all.cend(); ++it) {
            // The second key for a command is one that other keyboards have in place of the first.
            QCOMPARE(texts(it.value()->shortcuts()).mid(0, 1), described.take(it.key()).mid(0, 1));
        }
        QCOMPARE(described.keys(), QStringList());
        for (const auto* shortcut : f.window().findChildren<QShortcut*>(Qt::FindDirectChildrenOnly)) {
            const QString key = shortcut->key().toString(QKeySequence::PortableText);
            QVERIFY2(others.contains(key), qUtf8Printable(key));
        }
    }

    /// No key and no letter means two things, and every command is in a menu.
    void keysAreUnique()
    {
        Fixture f;
        QStringList keys;
        for (const auto* action : f.commands()) {
            keys += texts(action->shortcuts());
        }
        for (const auto* shortcut : f.window().findChildren<QShortcut*>()) {
            keys += shortcut->key().toString(QKeySequence::PortableText);
        }
        QVERIFY2(keys.removeDuplicates() == 0, qUtf8Printable(keys.join(u' ')));
        checkLetters(f.window().menuBar()->actions());
        const auto inMenus = menuCommands(f.window()).values();
        for (auto* action : f.commands()) {
            QVERIFY2(inMenus.contains(action), qUtf8Printable(action->objectName()));
        }
        QVERIFY(f.commands().size() > 20);
    }

    void keys()
    {
        Fixture f;
        const int size = f.browser().getFontSize();
        f.press(Qt::CTRL | Qt::Key_Plus);
        f.press(Qt::CTRL | Qt::Key_Equal);
        QCOMPARE(f.browser().getFontSize(), size + 2);
        f.press(Qt::CTRL | Qt::Key_Minus);
        QCOMPARE(f.browser().getFontSize(), size + 1);
        f.press(Qt::CTRL | Qt::Key_0);
        QCOMPARE(f.browser().getFontSize(), size);
        f.press(Qt::CTRL | Qt::SHIFT | Qt::Key_R);
        QVERIFY(!f.browser().isReadingView());
        auto& tabs = f.the<QTabWidget>();
        for (const auto& [key, tab] : {std::pair(Qt::Key_3, 2), {Qt::Key_2, 1}, {Qt::Key_1, 0}}) {
            f.press(Qt::CTRL | key);
            QCOMPARE(tabs.currentIndex(), tab);
            QVERIFY(tabs.isAncestorOf(QApplication::focusWidget()));
            f.press(Qt::Key_F6);
            QVERIFY(f.browser().hasFocus());
            f.press(Qt::Key_F6);
            QVERIFY(tabs.currentWidget()->isAncestorOf(QApplication::focusWidget()));
        }
        f.press(Qt::CTRL | Qt::SHIFT | Qt::Key_F);
        QCOMPARE(tabs.currentIndex(), 2);
        f.browser().setFocus();
        f.press(Qt::CTRL | Qt::Key_F);
        QVERIFY(f.the<HelpFindDialog>().isVisible());
    }

    /// Those that act on the window or on what is read.
    void keysOfTheWindow()
    {
        Fixture f;
        f.press(Qt::CTRL | Qt::Key_O);
        auto* files = f.openDialog<QFileDialog>();
        QVERIFY(files != nullptr);
        files->reject();
        f.press(Qt::Key_F11);
        QVERIFY(f.window().isFullScreen());
        QVERIFY(f.action("viewFullScreenAction").isChecked());
        f.press(Qt::Key_F11);
        QVERIFY(!f.window().isFullScreen());
        // A window manager does it, too.
        f.window().setWindowState(Qt::WindowFullScreen);
        QTRY_VERIFY(f.action("viewFullScreenAction").isChecked());
        f.window().setWindowState(Qt::WindowNoState);
        QTRY_VERIFY(!f.action("viewFullScreenAction").isChecked());
        f.press(Qt::CTRL | Qt::Key_Q);
        QVERIFY(!f.window().isVisible());
    }

    void reload()
    {
        Fixture f;
        const QString before = f.browser().toPlainText();
        QFile file(f.browser().page().file);
        QVERIFY(file.open(QIODevice::Append));
        file.write("<p>something new</p>");
        file.close();
        f.press(Qt::Key_F5);
        QVERIFY(!before.contains(u"something new"_s));
        QVERIFY(f.browser().toPlainText().contains(u"something new"_s));
    }

    void print_data() { answers(); }
    void print()
    {
        QFETCH(const bool, isOk);
        Fixture f;
        f.press(Qt::CTRL | Qt::Key_P);
        auto* dialog = f.openDialog<QPrintDialog>();
        QVERIFY(dialog != nullptr);
        const QString file = f.files.path(u"out.pdf"_s);
        dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
        dialog->printer()->setOutputFileName(file);
        dialog->done(isOk ? QDialog::Accepted : QDialog::Rejected);
        QCOMPARE(QFileInfo(file).size() > 1000, isOk); // NOLINT(*-magic-numbers)
        QCOMPARE(QApplication::activeModalWidget(), nullptr);
        f.trigger("filePrintAction");
        dialog = f.openDialog<QPrintDialog>();
        dialog->printer()->setOutputFileName(f.files.path(u"none/out.pdf"_s));
        QTest::ignoreMessage(QtWarningMsg, "QPainter::begin(): Returned false");
        dialog->done(QDialog::Accepted);
        QVERIFY(f.openDialog<QMessageBox>()->text().contains(u"none/out.pdf"));
    }

    void preview()
    {
        Fixture f;
        f.trigger("filePreviewAction");
        auto* dialog = f.openDialog<QPrintPreviewDialog>();
        QVERIFY(dialog != nullptr);
        auto* sheets = dialog->findChild<QPrintPreviewWidget*>();
        QTRY_COMPARE(sheets->pageCount(), 1);
        dialog->reject();
        QCOMPARE(QApplication::activeModalWidget(), nullptr);
    }

    void exportAsPdf_data() { answers(); }
    void exportAsPdf()
    {
        QFETCH(const bool, isOk);
        Fixture f;
        f.trigger("fileExportAction");
        auto* dialog = f.openDialog<QFileDialog>();
        QCOMPARE(QFileInfo(dialog->selectedFiles().value(0)).fileName(), u"a1.pdf"_s);
        const QString file = f.files.path(u"out.pdf"_s);
        dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(f.files.path(u"out"_s));
        dialog->findChild<QDialogButtonBox*>()
            ->button(isOk ? QDialogButtonBox::Save : QDialogButtonBox::Cancel)
            ->click();
        QCOMPARE(QFileInfo(file).size() > 1000, isOk); // NOLINT(*-magic-numbers)
        QCOMPARE(QApplication::activeModalWidget(), nullptr);
    }

    void settings_data() { answers(); }
    void settings()
    {
        QFETCH(const bool, isOk);
        const QString family = u"Some Family"_s;
        const QString fixed = u"Fixed Family"_s;
        {
            Fixture f;
            const bool isUnderlined = f.browser().getLinkUnderline();
            const QString before = f.browser().getFontFamily();
            const QString fixedBefore = f.browser().getFontFixedFamily();
            const QColor color = f.browser().getLinkColor();
            f.trigger("viewSettingsAction");
            auto* dialog = f.openDialog<HelpSettings>();
            QCOMPARE(dialog->getFontFamily(), before);
            QCOMPARE(dialog->getFontFixedFamily(), fixedBefore);
            QCOMPARE(dialog->getLinkColor(), color);
            QCOMPARE(dialog->getLinkUnderline(), isUnderlined);
            dialog->setFontFamily(family);
            dialog->setFontFixedFamily(fixed);
            dialog->setLinkColor(QColor(1, 2, 3));
            dialog->findChild<QCheckBox*>()->click();
            for (auto* button : dialog->findChildren<QPushButton*>()) {
                if (plain(button->text()).compare(isOk ? u"OK" : u"Cancel", Qt::CaseInsensitive) == 0) {
                    button->click();
                }
            }
            QCOMPARE(QApplication::activeModalWidget(), nullptr);
            QCOMPARE(f.browser().getFontFamily(), isOk ? family : before);
            QCOMPARE(f.browser().getFontFixedFamily(), isOk ? fixed : fixedBefore);
            QCOMPARE(f.browser().getLinkColor(), isOk ? QColor(1, 2, 3) : color);
            QCOMPARE(f.browser().getLinkUnderline(), isUnderlined != isOk);
        }
        QCOMPARE(storedFamily() == family, isOk);
    }

    /// What nobody chose any more is the desktop's again.
    void settingsAsTheDesktop_data() { answers(); }
    void settingsAsTheDesktop()
    {
        QFETCH(const bool, isOk);
        const auto stored = [](const char* key) {
            return QSettings().value(u"HelpMainWindow/"_s + QLatin1StringView(key)).toInt();
        };
        int size = 0;
        {
            Fixture f;
            size = f.browser().getFontSize();
            f.trigger("viewSettingsAction");
            auto* dialog = f.openDialog<HelpSettings>();
            dialog->setFontSize(size + 4);
            dialog->setLineWidth(66);
            dialog->setColorScheme(ColorScheme::Dark);
            press(*dialog, u"Ok"_s);
        }
        QCOMPARE(stored("lineWidth"), 66);
        QCOMPARE(stored("colors"), int(ColorScheme::Dark));
        applyColorScheme(ColorScheme::Desktop);
        {
            Fixture f;
            QCOMPARE(f.browser().lineWidth(), 66);
            QCOMPARE(appliedColorScheme(), ColorScheme::Dark);
            f.trigger("viewSettingsAction");
            auto* dialog = f.openDialog<HelpSettings>();
            press(*dialog, u"As the Desktop"_s);
            QCOMPARE(dialog->getFontSize(), size);
            QCOMPARE(dialog->getLineWidth(), int(PageView::UsualLineWidth));
            QCOMPARE(dialog->getColorScheme(), ColorScheme::Desktop);
            press(*dialog, isOk ? u"Ok"_s : u"Cancel"_s);
            QCOMPARE(f.browser().getFontSize(), isOk ? size : size + 4);
        }
        QCOMPARE(stored("lineWidth"), isOk ? int(PageView::UsualLineWidth) : 66);
        QCOMPARE(stored("colors"), int(isOk ? ColorScheme::Desktop : ColorScheme::Dark));
        QCOMPARE(QSettings().value(u"HelpMainWindow/fontSizeChosen"_s).toBool(), !isOk);
        applyColorScheme(ColorScheme::Desktop);
    }

    /// Every window and every dialog.
    void controlsOfWindows()
    {
        Fixture f;
        for (const auto* pane : {"contents", "index", "search"}) {
            f.the<QTabWidget>().setCurrentIndex(
                int(QByteArrayList{"contents", "index", "search"}.indexOf(pane)));
            f.browser().setFocus();
            checkPlaces(f.window());
            checkTabOrder(f.window());
        }
        const auto check = [](QWidget* dialog) {
            QVERIFY(dialog != nullptr);
            dialog->activateWindow();
            QTRY_VERIFY(dialog->isActiveWindow());
            checkPlaces(*dialog);
            checkTabOrder(*dialog);
            dialog->close();
        };
        f.trigger("viewSettingsAction");
        check(f.openDialog<HelpSettings>());
        f.trigger("helpAboutAction");
        check(f.openDialog<QDialog>());
        f.trigger("editFindAction");
        check(&f.the<HelpFindDialog>());
        f.lookUp(u"shared"_s);
        check(f.openDialog<HelpIndexFound>());
    }

    /// Books are closed or open, all others pages; so they are painted.
    void rowIcons()
    {
        Fixture f;
        auto& tree = f.the<HelpContentsListView>();
        const auto picture = [&tree](const QModelIndex& row) {
            return tree.viewport()->grab(tree.visualRect(row)).toImage();
        };
        const auto shows = [&](const QModelIndex& row, BookIcon icon) {
            const QImage drawn = picture(row);
            const QImage expected = bookIcon(icon).pixmap(16).toImage().convertToFormat(drawn.format());
            for (int x = 0; x + expected.width() <= drawn.width(); ++x) {
                for (int y = 0; y + expected.height() <= drawn.height(); ++y) {
                    QImage ground = drawn.copy(x, y, expected.width(), expected.height());
                    const QColor color = drawn.pixelColor(0, 0);
                    QImage wanted(ground.size(), drawn.format());
                    wanted.fill(color);
                    QPainter(&wanted).drawPixmap(0, 0, bookIcon(icon).pixmap(16));
                    if (ground == wanted) {
                        return true;
                    }
                }
            }
            return false;
        };
        const auto row = [&tree](const QString& title) {
            return tree.model()
                ->match(tree.model()->index(0, 0), Qt::DisplayRole, title, 1, Qt::MatchRecursive)
                .value(0);
        };
        const auto book = row(u"Book"_s);
        tree.setCurrentIndex(row(u"Start"_s));
        tree.collapse(book);
        QVERIFY(shows(book, BookIcon::Close) && !shows(book, BookIcon::Open));
        tree.expand(book);
        QVERIFY(shows(book, BookIcon::Open) && !shows(book, BookIcon::Close));
        QVERIFY(shows(tree.model()->index(0, 0, book), BookIcon::Item));
    }

    /// Each viewer leaves what it changed, and what an installer did meanwhile stays.
    void severalViewers()
    {
        {
            auto first = std::make_unique<Fixture>();
            Fixture second;
            QCOMPARE(InstalledContents::installContents(second.files.path(u"a.cnt"_s)).answer,
                     InstalledContents::Answer::Yes);
            second.window().findChild<QMenu*>(u"removeMenu"_s)->actions().at(0)->trigger();
            QVERIFY(second.window().close());
            first->browser().setFontFamily(u"Some Family"_s);
            const QString open = first->files.path(u"a.cnt"_s) + u' ' + first->files.path(u"b.cnt"_s);
            first.reset();
            QCOMPARE(QSettings().value(u"HelpMainWindow/contents"_s).toStringList().join(u' '), open);
            QCOMPARE(storedFamily(), u"Some Family"_s);
            QCOMPARE(InstalledContents::loadInstalledFromSettings().size(), 1);
        }
        QCOMPARE(InstalledContents::loadInstalledFromSettings().size(), 1);
        QCOMPARE(QSettings().value(u"HelpMainWindow/contents"_s).toStringList().size(), 1);
    }

    void removeEntries()
    {
        Fixture f;
        QStringList entries;
        for (const auto* action : f.window().findChild<QMenu*>(u"removeMenu"_s)->actions()) {
            entries += f.files.shortened(action->text());
        }
        QCOMPARE(entries, (QStringList{u"A"_s, u"D/b.cnt"_s}));
    }

private:
    static void answers()
    {
        QTest::addColumn<bool>("isOk");
        QTest::newRow("Ok") << true;
        QTest::newRow("Cancel") << false;
    }
};

QTEST_MAIN(CommandsTest)
#include "tst_commands.moc"
