// SPDX-License-Identifier: MIT
#include "testfiles.h"
#include "testprogram.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr auto Sets = R"(== a.cnt
:title=A
Start=a1.html
Leaf=a2.html
== b.cnt
Row=b.html
== a1.html
page a
== a2.html
leaf
== b.html
page b
)";

} // namespace

/// The program from its start to its end, with a window.
class ViewerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_files = std::make_unique<TemporaryFiles>(Sets); }
    void cleanup() { tellAfterFailure(); }

    void start_data()
    {
        addTexts("stored", "arguments", "shown", "error");
        addRow("nothing", "", "", "||", "");
        addRow("installed", "contentsInstalled=D/a.cnt, D/b.cnt", "", "D/b.cnt,A|page b|Row", "");
        addRow("last open", "contents=D/b.cnt\ncontentsInstalled=D/a.cnt", "", "D/b.cnt|page b|Row", "");
        addRow("last page", "contents=D/a.cnt\nsession\\page=D/a2.html", "", "A|leaf|Leaf", "");
        addRow("two files", "contents=D/a.cnt", "b.cnt ./a.cnt", "D/b.cnt,A|page b|Row", "");
        addRow("one twice", "", "a.cnt a.cnt", "A,A|page a|Start", "");
        addRow("a missing one", "", "none.cnt b.cnt", "D/b.cnt|page b|Row",
               "quenda: 'D/none.cnt' cannot be opened: no such file.\n");
        for (const auto* option : {"--show", "-show", "/show"}) {
            QTest::newRow(option) << u"contents=D/b.cnt"_s << QString::fromUtf8(option) + u" a.cnt"_s
                                  << u"D/b.cnt,A|page a|Start"_s << QString();
        }
        addRow("show what is open", "contents=D/a.cnt, D/b.cnt", "--show b.cnt", "D/b.cnt,A|page b|Row", "");
        addRow("show what is missing", "contents=D/b.cnt", "--show none.cnt", "D/b.cnt|page b|Row", "");
        for (const auto* name : {"--INSTALL", "install"}) {
            QTest::newRow(name) << QString() << QString::fromUtf8(name) + u" a.cnt"_s << u"A|page a|Start"_s
                                << u"quenda: 'D/%1' cannot be opened: no such file.\n"_s.arg(
                                       QString::fromUtf8(name));
        }
        addRow("a request with two files", "", "--install a.cnt b.cnt", "A,D/b.cnt|page a|Start",
               "quenda: 'D/--install' cannot be opened: no such file.\n");
        addRow("a request without a file", "", "--install", "||",
               "quenda: 'D/--install' cannot be opened: no such file.\n");
        addRow("the toolkit's options", "contents=D/a.cnt", "-style fusion", "||", "");
        addRow("the toolkit's options and a file", "", "-style fusion b.cnt", "D/b.cnt|page b|Row", "");
    }

    void start()
    {
        QFETCH(const QString, stored);
        QFETCH(const QString, arguments);
        QFETCH(const QString, shown);
        QFETCH(const QString, error);
        const QByteArray lines = QString(stored).replace(u"D/"_s, m_files->path({})).toUtf8();
        const QString store =
            m_files->write(u"config/Orvanel/Quenda.conf"_s, "[HelpMainWindow]\n" + lines + '\n');
        const auto answer = run(arguments, shown);
        QCOMPARE(answer.code, 0);
        QCOMPARE(m_files->shortened(QString::fromUtf8(answer.out)), shown + u'\n');
        const QString plugin = u"This plugin does not support propagateSizeHints()\n"_s;
        QCOMPARE(m_files->shortened(QString::fromUtf8(answer.error).remove(plugin)), error);
        QFile file(store);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto left = QString::fromUtf8(file.readAll());
        const QString open = matches(left, u"^contents=([^\\n]*)$"_s).value(0);
        QCOMPARE(open.split(u", "_s, Qt::SkipEmptyParts).size(), sets(shown));
        const auto installed = u"^(contentsInstalled=[^\\n]*)$"_s;
        QCOMPARE(m_files->shortened(matches(left, installed).value(0)), matches(stored, installed).value(0));
    }

    void exitStatus()
    {
        qputenv("QUENDA_STATUS", "7");
        QCOMPARE(run({}, u"||"_s).code, 7);
        qunsetenv("QUENDA_STATUS");
    }

private:
    static qsizetype sets(const QString& shown)
    {
        return shown.section(u'|', 0, 0).split(u',', Qt::SkipEmptyParts).size();
    }

    [[nodiscard]] Answer run(const QString& arguments, const QString& shown) const
    {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, m_files->path(u"config"_s));
        environment.insert(u"QUENDA_SETS"_s, QString::number(sets(shown)));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_files->path({}));
        process.start(QCoreApplication::applicationDirPath() + u"/viewerdriver"_s,
                      arguments.split(u' ', Qt::SkipEmptyParts));
        return finish(process);
    }

    std::unique_ptr<TemporaryFiles> m_files;
};

QTEST_GUILESS_MAIN(ViewerTest)
#include "tst_viewer.moc"
