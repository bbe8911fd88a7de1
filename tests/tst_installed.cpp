// SPDX-License-Identifier: MIT
#include "library/installedcontents.h"

#include "testfiles.h"

#include <QSettings>

using namespace InstalledContents;
using namespace Qt::StringLiterals;

class InstalledTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(u"Orvanel"_s);
        QCoreApplication::setApplicationName(u"Quenda"_s);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path(u"config"_s));
    }

    void init() { QSettings().clear(); }
    void asStored()
    {
        const TemporaryFiles files("== b.cnt\n:title = B\n== a.cnt\n:title = A\n== c.cnt\n");
        QSettings().setValue(u"/HelpMainWindow/fontName"_s, u"Sans"_s);
        for (const auto* stored : {u"D/b.cnt", u"D/b.cnt, D/a.cnt", u"D/a.cnt, D/b.cnt, D/c.cnt"}) {
            const QString expected = QStringView(stored).toString();
            QVERIFY(installContents(expected.last(5).prepend(files.path({}))).stored);
            QCOMPARE(storedLine(files), expected);
        }
        QCOMPARE(files.shortened(loadInstalledFromSettings().join(u' ')), u"D/c.cnt D/a.cnt D/b.cnt"_s);
        for (const auto& name : files.names()) {
            QVERIFY(uninstallContents(files.path(name)).stored);
        }
        QVERIFY(storedLine(files).isEmpty() && dropVanishedContents().isEmpty());
        QVERIFY(QSettings().contains(u"/HelpMainWindow/contentsInstalled"_s));
        QCOMPARE(QSettings().value(u"/HelpMainWindow/fontName"_s).toString(), u"Sans"_s);
    }

    void answers()
    {
        const TemporaryFiles files("== a.cnt\n== b.cnt\n== d/x\n");
        const QString a = files.path(u"a.cnt"_s);
        QCOMPARE(installContents(files.path(u"d"_s)).answer, Answer::NotFound);
        QCOMPARE(installContents(a).answer, Answer::Yes);
        QCOMPARE(installContents(files.path(u"d/.././a.cnt"_s)).answer, Answer::No);
        QCOMPARE(isinstallContents(files.path(u"b.cnt"_s)), Answer::No);
        QVERIFY(QFile::remove(a));
        QCOMPARE(isinstallContents(a), Answer::NotFound);
        QCOMPARE(uninstallContents(a).answer, Answer::NotFound);
        QCOMPARE(loadInstalledFromSettings(), QStringList(a));
    }

    void oddNames_data()
    {
        addTexts("name");
        addRow("separators of lists", "a, b;c.cnt");
        addRow("blanks and quotes at the ends", R"( "a".cnt )");
        addRow("escapes", "a\\b=%20\t\n@.cnt");
        addRow("far letters", "\u00E9\u4E2D\U0001F600.cnt");
        addRow("colon in front", ":a.cnt");
    }

    void oddNames()
    {
        QFETCH(const QString, name);
        TemporaryFiles files;
        const QStringList both{files.write(name, ":title = 1"), files.write(u"z.cnt"_s, ":title = 2")};
        for (const auto& file : both) {
            QCOMPARE(installContents(file).answer, Answer::Yes);
            QCOMPARE(isinstallContents(file), Answer::Yes);
        }
        QCOMPARE(loadInstalledFromSettings(), both);
    }

    void sorting_data()
    {
        QTest::addColumn<QStringList>("titles");
        addTexts("expected"); // positions in `titles`
        addRow("letter case", QStringList{u"beta"_s, u"Alpha"_s, u"Zeta"_s}, "1 2 0");
        addRow("code units", QStringList{u"\uFF5E"_s, u"\U0001F600"_s, u"z"_s}, "2 1 0");
        addRow("no title: by file name", QStringList{u"0"_s, u""_s, u"/"_s}, "2 1 0");
    }

    void sorting()
    {
        QFETCH(const QStringList, titles);
        QFETCH(const QString, expected);
        TemporaryFiles files;
        QStringList list;
        for (const auto& title : titles) {
            list += files.write(QString::number(list.size()), ":title = " + title.toUtf8());
        }
        QCOMPARE(files.shortened(sortingCntList(list).join(u' ')).remove(u"D/"_s), expected);
    }

    void vanishedFiles()
    {
        const TemporaryFiles files(
            "== a.cnt\n:title = 3\n== b.cnt\n:title = 2\n== c.cnt\n== d.cnt\n:title = 1\n");
        QStringList list;
        for (const auto& name : files.names()) {
            list += files.path(name);
        }
        saveInstalledToSettings(list);
        QVERIFY(QFile::remove(list[2]) && QFile::remove(list[1]));
        QCOMPARE(files.shortened(dropVanishedContents().join(u' ')), u"D/d.cnt D/a.cnt"_s);
        QCOMPARE(storedLine(files), u"D/d.cnt, D/a.cnt"_s);
        QVERIFY(QFile::remove(list[0]) && QFile::remove(list[3]));
        QVERIFY(dropVanishedContents().isEmpty());
        QCOMPARE(storedLine(files), u""_s);
        // A link to itself leads nowhere, but neither can it be told that nothing is there.
        QVERIFY(QFile::link(list[0], list[0]));
        saveInstalledToSettings({list[3], list[0]});
        QCOMPARE(dropVanishedContents(), QStringList{list[0]});
        QCOMPARE(storedLine(files), u"D/a.cnt"_s);
    }

private:
    /// The line of the list in the store's file.
    [[nodiscard]] static QString storedLine(const TemporaryFiles& files)
    {
        QFile store(QSettings().fileName());
        const auto lines = store.open(QIODevice::ReadOnly) ? QString::fromUtf8(store.readAll()) : QString();
        return files.shortened(lines.section(u"contentsInstalled="_s, 1).section(u'\n', 0, 0));
    }

    TemporaryFiles m_store;
};

QTEST_GUILESS_MAIN(InstalledTest)
#include "tst_installed.moc"
