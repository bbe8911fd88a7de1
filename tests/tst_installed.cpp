// SPDX-License-Identifier: MIT
#include "library/installedcontents.h"

#include "testfiles.h"

#include <QSettings>
#include <QTest>

using namespace InstalledContents;
using namespace Qt::StringLiterals;

namespace {

const QString Key = u"/HelpMainWindow/contentsInstalled"_s;

} // namespace

class InstalledTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void asStored();
    void answers();
    void relativeNames();
    void oddNames_data();
    void oddNames();
    void newOneLast();
    void sorting_data();
    void sorting();
    void vanishedFiles();
    void foreignSettingsStay();

private:
    /// The line of the list in the store's file.
    [[nodiscard]] static QString storedLine(const TemporaryFiles& files);

    TemporaryFiles m_store;
};

void InstalledTest::initTestCase()
{
    QCoreApplication::setOrganizationName(u"Orvanel"_s);
    QCoreApplication::setApplicationName(u"Quenda"_s);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_store.path(u"config"_s));
}

void InstalledTest::init()
{
    QSettings().clear();
}

QString InstalledTest::storedLine(const TemporaryFiles& files)
{
    QFile store(QSettings().fileName());
    for (const auto& line :
         store.open(QIODevice::ReadOnly) ? store.readAll().split('\n') : QByteArrayList()) {
        if (line.startsWith("contentsInstalled")) {
            return files.shortened(QString::fromUtf8(line));
        }
    }
    return {};
}

void InstalledTest::asStored()
{
    const TemporaryFiles files("== a.cnt\n:title = B\n== b.cnt\n:title = A\n");
    QVERIFY(installContents(files.path(u"a.cnt"_s)).stored);
    QCOMPARE(storedLine(files), u"contentsInstalled=D/a.cnt"_s);
    QVERIFY(installContents(files.path(u"b.cnt"_s)).stored);
    QCOMPARE(storedLine(files), u"contentsInstalled=D/a.cnt, D/b.cnt"_s);
    QVERIFY(uninstallContents(files.path(u"a.cnt"_s)).stored);
    QCOMPARE(storedLine(files), u"contentsInstalled=D/b.cnt"_s);
    QVERIFY(uninstallContents(files.path(u"b.cnt"_s)).stored);
    QCOMPARE(storedLine(files), u"contentsInstalled="_s);
    QCOMPARE(loadInstalledFromSettings(), QStringList(QString()));
    QVERIFY(dropVanishedContents().isEmpty());
}

void InstalledTest::answers()
{
    const TemporaryFiles files("== a.cnt\n== b.cnt\n== d/x\n");
    const QString a = files.path(u"a.cnt"_s);
    QCOMPARE(uninstallContents(a).answer, Answer::No);
    QCOMPARE(isinstallContents(a), Answer::No);
    QCOMPARE(installContents(a).answer, Answer::Yes);
    QCOMPARE(installContents(files.path(u"d/.././a.cnt"_s)).answer, Answer::No);
    QCOMPARE(isinstallContents(a), Answer::Yes);
    QCOMPARE(isinstallContents(files.path(u"b.cnt"_s)), Answer::No);
    QCOMPARE(installContents(files.path(u"d"_s)).answer, Answer::NotFound);
    QCOMPARE(installContents(files.path(u"c.cnt"_s)).answer, Answer::NotFound);
    QCOMPARE(uninstallContents(a).answer, Answer::Yes);
    QCOMPARE(uninstallContents(a).answer, Answer::No);

    QCOMPARE(installContents(a).answer, Answer::Yes);
    QVERIFY(QFile::remove(a));
    QCOMPARE(isinstallContents(a), Answer::NotFound);
    QCOMPARE(uninstallContents(a).answer, Answer::NotFound);
    QVERIFY(loadInstalledFromSettings().contains(a));
}

void InstalledTest::relativeNames()
{
    const TemporaryFiles files("== a.cnt\n== d/x\n");
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(files.path(u"d"_s)));
    QCOMPARE(installContents(u"../a.cnt"_s).answer, Answer::Yes);
    QCOMPARE(isinstallContents(u"a.cnt"_s), Answer::NotFound);
    QVERIFY(QDir::setCurrent(files.path(u"."_s)));
    QCOMPARE(isinstallContents(u"a.cnt"_s), Answer::Yes);
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(storedLine(files), u"contentsInstalled=D/a.cnt"_s);
}

void InstalledTest::oddNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("separators of lists") << u"a, b;c.cnt"_s;
    QTest::newRow("blanks and quotes at the ends") << u" \"a\" .cnt \""_s;
    QTest::newRow("escapes") << u"a\\b=%20\n@.cnt"_s;
    QTest::newRow("far letters") << u"\u00E9\u4E2D\U0001F600.cnt"_s;
    QTest::newRow("colon in front") << u":a.cnt"_s;
}

void InstalledTest::oddNames()
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

void InstalledTest::newOneLast()
{
    const TemporaryFiles files("== c.cnt\n:title = 3\n== b.cnt\n:title = 2\n== a.cnt\n:title = 1\n");
    for (const auto& name : files.names()) {
        QCOMPARE(installContents(files.path(name)).answer, Answer::Yes);
    }
    QCOMPARE(files.shortened(QSettings().value(Key).toStringList().join(u' ')), u"D/b.cnt D/c.cnt D/a.cnt"_s);
    QCOMPARE(files.shortened(loadInstalledFromSettings().join(u' ')), u"D/a.cnt D/b.cnt D/c.cnt"_s);
}

void InstalledTest::sorting_data()
{
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<QString>("expected"); // positions in `titles`
    QTest::newRow("letter case") << QStringList{u"beta"_s, u"Alpha"_s, u"Zeta"_s} << u"1 2 0"_s;
    QTest::newRow("code units") << QStringList{u"\uFF5E"_s, u"\U0001F600"_s, u"z"_s} << u"2 1 0"_s;
    QTest::newRow("no title: by file name") << QStringList{u"0"_s, u""_s, u"/"_s} << u"2 1 0"_s;
}

void InstalledTest::sorting()
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

void InstalledTest::vanishedFiles()
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
    QCOMPARE(storedLine(files), u"contentsInstalled=D/d.cnt, D/a.cnt"_s);
    QVERIFY(QFile::remove(list[0]) && QFile::remove(list[3]));
    QVERIFY(dropVanishedContents().isEmpty());
    QCOMPARE(storedLine(files), u"contentsInstalled="_s);
}

void InstalledTest::foreignSettingsStay()
{
    const TemporaryFiles files("== a.cnt\n");
    QSettings().setValue(u"/HelpMainWindow/fontName"_s, u"Sans"_s);
    QCOMPARE(installContents(files.first()).answer, Answer::Yes);
    QCOMPARE(QSettings().value(u"/HelpMainWindow/fontName"_s).toString(), u"Sans"_s);
}

QTEST_GUILESS_MAIN(InstalledTest)
#include "tst_installed.moc"
