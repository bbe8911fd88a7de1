// SPDX-License-Identifier: MIT
#include "browser/colorscheme.h"
#include "browser/helpsettings.h"

#include <QColorDialog>
#include <QComboBox>
#include <QFontDatabase>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

class TestSettingsDialog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void givesBackWhatWasSet();
    void unknownFamilyComesFirst();
    void colorDialog();
    void sampleShowsTheChoice();
    void everyFieldIsReachedByTab();

private:
    QWidget m_parent;
};

void TestSettingsDialog::givesBackWhatWasSet()
{
    HelpSettings dialog(&m_parent);
    const QStringList families = QFontDatabase::families();
    dialog.setFontFamily(families.constLast());
    dialog.setFontFixedFamily(families.constFirst());
    dialog.setLinkUnderline(true);
    dialog.setLinkColor(QColor(0xe0, 0x10, 0x20));
    QVERIFY(dialog.isModal());
    QCOMPARE(dialog.getFontFamily(), families.constLast());
    QCOMPARE(dialog.getFontFixedFamily(), families.constFirst());
    QVERIFY(dialog.getLinkUnderline());
    QCOMPARE(dialog.getLinkColor(), QColor(0xe0, 0x10, 0x20));
    const auto combos = dialog.findChildren<QComboBox*>();
    QCOMPARE(combos.at(0)->count(), families.size());
    QCOMPARE(combos.at(1)->count(), families.size());
    dialog.setFontSize(17);
    dialog.setLineWidth(66);
    dialog.setColorScheme(ColorScheme::Dark);
    QCOMPARE(dialog.getFontSize(), 17);
    QCOMPARE(dialog.getLineWidth(), 66);
    QCOMPARE(dialog.getColorScheme(), ColorScheme::Dark);
}

void TestSettingsDialog::unknownFamilyComesFirst()
{
    HelpSettings dialog(&m_parent);
    const QString swapped = QFontDatabase::families().constFirst().toUpper() + u'!';
    for (const auto& family : {swapped, swapped.toLower(), QString()}) {
        dialog.setFontFamily(family);
        QCOMPARE(dialog.getFontFamily(), family);
        QCOMPARE(dialog.findChild<QComboBox*>()->currentIndex(), 0);
    }
}

void TestSettingsDialog::colorDialog()
{
    for (const bool accepted : {false, true}) {
        HelpSettings dialog(&m_parent);
        dialog.setLinkColor(Qt::red);
        for (auto* button : dialog.findChildren<QPushButton*>()) {
            if (button->text().isEmpty()) {
                const QImage face = button->grab().toImage();
                QCOMPARE(face.pixelColor(face.rect().center()), QColor(Qt::red));
                button->click();
            }
        }
        auto* colors = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        QVERIFY(colors != nullptr);
        QCOMPARE(colors->currentColor(), QColor(Qt::red));
        colors->setCurrentColor(Qt::green);
        accepted ? static_cast<QDialog*>(colors)->accept() : colors->reject();
        QCOMPARE(dialog.getLinkColor(), QColor(accepted ? Qt::green : Qt::red));
    }
}

void TestSettingsDialog::sampleShowsTheChoice()
{
    HelpSettings dialog(&m_parent);
    dialog.setFontSize(10);
    const auto* sample = dialog.findChild<QTextBrowser*>();
    dialog.findChild<QSpinBox*>()->setValue(21);
    QCOMPARE(sample->document()->defaultFont().pointSize(), 21);
    dialog.setColorScheme(ColorScheme::Dark);
    QVERIFY(sample->palette().color(QPalette::Base).lightness() < 128);
    dialog.setColorScheme(ColorScheme::Light);
    QVERIFY(sample->palette().color(QPalette::Base).lightness() > 128);
    dialog.setLinkColor(Qt::magenta);
    QVERIFY(sample->document()->defaultStyleSheet().contains(QColor(Qt::magenta).name()));
}

void TestSettingsDialog::everyFieldIsReachedByTab()
{
    HelpSettings dialog(&m_parent);
    dialog.show();
    QStringList order;
    auto* first = dialog.findChild<QComboBox*>();
    first->setFocus();
    for (auto* widget = first->nextInFocusChain(); widget != first; widget = widget->nextInFocusChain()) {
        if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0) {
            order.append(QString::fromLatin1(widget->metaObject()->className()));
        }
    }
    order.removeAll(QStringLiteral("HelpSettings"));
    order.removeAll(QStringLiteral("QLineEdit")); // inside of the fields for numbers
    QCOMPARE(order, QStringList({u"QComboBox"_qs, u"QPushButton"_qs, u"QCheckBox"_qs, u"QSpinBox"_qs,
                                 u"QComboBox"_qs, u"QSpinBox"_qs, u"QPushButton"_qs, u"QPushButton"_qs,
                                 u"QPushButton"_qs}));
}

QTEST_MAIN(TestSettingsDialog)
#include "tst_settingsdialog.moc"
