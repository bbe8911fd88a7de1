// SPDX-License-Identifier: MIT
#include "testfiles.h"
#include "testprogram.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

/// The program as a process of its own, with a store of its own and without a display.
class RequestsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QFileInfo(testProgram()).isExecutable(), "QUENDA_PROGRAM has to name the program");
    }

    void init()
    {
        m_files = std::make_unique<TemporaryFiles>("== a.cnt\n:title = A\n== b.cnt\n:title = B\n");
    }

    void cleanup() { tellAfterFailure(); }

    void lines_data()
    {
        addTexts("prefix");
        addRow("two dashes", "--");
        addRow("one dash", "-");
        addRow("slash", "/");
    }

    void lines()
    {
        QFETCH(const QString, prefix);
        struct Step {
            const char* request;
            const char* name;
            int code;
            const char* line;
        };
        const std::vector<Step> steps{{"isinstall", "a.cnt", 2, "contents \"a.cnt\" not installed\n"},
                                      {"uninstall", "a.cnt", 2, "contents \"a.cnt\" not installed\n"},
                                      {"install", "a.cnt", 0, "contents \"a.cnt\" installed\n"},
                                      {"install", "./a.cnt", 2, "contents \"./a.cnt\" already installed\n"},
                                      {"isinstall", "a.cnt", 0, "contents \"a.cnt\" installed\n"},
                                      {"isinstall", "c.cnt", 1, "contents file \"c.cnt\" not found\n"},
                                      {"install", "c.cnt", 1, "contents file \"c.cnt\" not found\n"},
                                      {"uninstall", "", 1, "contents file \"\" not found\n"},
                                      {"uninstall", "a.cnt", 0, "contents \"a.cnt\" uninstalled\n"}};
        for (const auto& step : steps) {
            const auto answer = run({prefix + QString::fromUtf8(step.request), QString::fromUtf8(step.name)});
            QCOMPARE(answer.out, QByteArray(step.line));
            QCOMPARE(answer.code, step.code);
            QCOMPARE(answer.error, QByteArray());
        }
        QCOMPARE(stored(), QString());
    }

    /// A folder is there, so "not found" alone would be a riddle.
    void folderWithoutPages()
    {
        QVERIFY(QDir().mkpath(m_files->path(u"empty"_s)));
        const auto refused = run({u"--install"_s, u"empty"_s});
        QCOMPARE(refused.code, 1);
        QCOMPARE(refused.out, "contents file \"empty\" not found\n"_ba);
        QVERIFY(refused.error.contains("has no pages"));
        QVERIFY(run({u"--dump"_s, u"empty"_s}).out.contains("has no pages"));
        QCOMPARE(stored(), QString());
    }

    void nameByteForByte()
    {
        const QString script = uR"sh("$0" --install "$(printf 'caf\351%%d\t.cnt')")sh"_s;
        const auto missing = runShell(script);
        QCOMPARE(missing.out, "contents file \"caf\xE9%d\t.cnt\" not found\n"_ba);
        QCOMPARE(missing.code, 1);
        m_files->write(u"caf\u00E9%d\t.cnt"_s, {});
        const auto latin1 = runShell(script);
        QCOMPARE(latin1.out, "contents \"caf\xE9%d\t.cnt\" installed\n"_ba);
        QCOMPARE(latin1.code, 0);
    }

    void relativeName()
    {
        m_files->write(u"sub/x"_s, {});
        QCOMPARE(runShell(u"cd sub && \"$0\" --install ..//sub/../a.cnt"_s).code, 0);
        QCOMPARE(stored(), u"D/a.cnt"_s);
        QCOMPARE(runShell(u"cd sub && \"$0\" --isinstall a.cnt"_s).code, 1);
    }

    void unwritableStore()
    {
        // A file where a directory is needed stops root, too.
        m_files->write(u"config"_s, {});
        const auto answer = run({u"--install"_s, u"a.cnt"_s});
        QCOMPARE(answer.code, 0);
        QCOMPARE(answer.out, "contents \"a.cnt\" installed\n"_ba);
        QVERIFY2(answer.error.contains("config/Orvanel/Quenda.conf"), answer.error);
        QCOMPARE(run({u"--isinstall"_s, u"a.cnt"_s}).error, QByteArray());
    }

    void concurrentInstalls()
    {
        constexpr int count = 30;
        std::vector<std::unique_ptr<QProcess>> installers;
        installers.reserve(count);
        for (int i = 0; i < count; ++i) {
            installers.push_back(start({u"--install"_s, m_files->write(u"%1.cnt"_s.arg(i), ":title = T")}));
        }
        for (const auto& installer : installers) {
            QCOMPARE(finish(*installer).code, 0);
        }
        auto list = stored().split(u", "_s);
        QCOMPARE(list.size(), count);
        QCOMPARE(list.removeDuplicates(), 0);
    }

    /// Help text, man page, manual and README name the same options, and each of them does something.
    void everyOption()
    {
        const auto help = QString::fromUtf8(run({u"--help"_s}).out);
        const auto synopses = matches(help, u"^  (--[^\n]*)$"_s);
        const auto names = [](const QString& text, const QString& expression) {
            const auto found = matches(text, expression);
            return QSet(found.begin(), found.end());
        };
        const auto all = names(synopses.join(u' '), u"(--[a-z-]+)"_s);
        QCOMPARE(matches(sourceText("docs/manual/commands.html"), u"<code>quenda (--[^<]*)</code></td>"_s),
                 synopses);
        QCOMPARE(names(sourceText("data/quenda.1").replace(u" -"_s, u" --"_s), u"(?:Fl|\\|) (--[a-z-]+)"_s),
                 all);
        QVERIFY(all.contains(names(sourceText("README.md"), u"^    quenda (--[a-z-]+)"_s)));
        const QMap<QString, QStringList> tries{{u"--install"_s, {u"a.cnt"_s}},
                                               {u"--isinstall"_s, {u"a.cnt"_s}},
                                               {u"--uninstall"_s, {u"a.cnt"_s}},
                                               {u"--search"_s, {u"text"_s, u"a.cnt"_s}},
                                               {u"--index"_s, {u"a.cnt"_s}},
                                               {u"--dump"_s, {u"a.cnt"_s}},
                                               {u"--screenshot"_s, {u"a.png"_s, u"a.cnt"_s}},
                                               {u"--pdf"_s, {u"a.pdf"_s, u"a.html"_s}},
                                               {u"--png"_s, {u"b.png"_s, u"a.html"_s}},
                                               {u"--text"_s, {u"a.html"_s}},
                                               {u"--help"_s, {}},
                                               {u"--version"_s, {}}};
        m_files->write(u"a.cnt"_s, "page = a.html");
        m_files->write(u"a.html"_s, "text");
        for (const auto& synopsis : synopses) {
            const QString name = synopsis.section(u' ', 0, 0);
            if (name == u"--show") {
                continue; // opens a window
            }
            QVERIFY2(tries.contains(name), qUtf8Printable(name));
            const auto answer = run(QStringList{name} + tries[name]);
            QCOMPARE(answer.code, name == u"--isinstall" ? 2 : 0); // not any more
            QCOMPARE(answer.error, QByteArray());
            QVERIFY(!answer.out.isEmpty() || name == u"--index" ||
                    QFileInfo::exists(m_files->path(tries[name][0])));
            if (!name.endsWith(u"install") && !tries[name].isEmpty()) {
                const auto incomplete = run({name});
                QCOMPARE(incomplete.code, 2);
                QCOMPARE(incomplete.out, QByteArray());
                QCOMPARE(QString::fromUtf8(incomplete.error), u"quenda: usage: quenda "_s + synopsis + u'\n');
            }
        }
        QVERIFY(run({u"--version"_s}).out.startsWith("Quenda "));
    }

    void dump()
    {
        m_files->write(u"a.cnt"_s, ":index = a.idx\nintro = a.html\n:title = A\nbook\n   deep");
        m_files->write(u"b.cnt"_s, ":title = B\n:index = a.idx\nx = missing.cnt");
        m_files->write(u"c.cnt"_s, ":title =\ny = a.html");
        m_files->write(u"a.idx"_s, "k = a.html\n sub");
        m_files->write(u"a.html"_s, "x");
        const auto answer = run({u"--dump"_s, u"a.cnt"_s, u"./b.cnt"_s, u"c.cnt"_s});
        QCOMPARE(answer.code, 0);
        auto found = QJsonDocument::fromJson(answer.out).object();
        QJsonArray problems;
        for (const auto& value : found.value(u"problems").toArray()) {
            auto problem = value.toObject();
            QVERIFY(!problem.take(u"message").toString().isEmpty());
            problems += problem;
        }
        found.insert(u"problems"_s, problems);

        const QString expected = QString::fromUtf8(R"({
"files": [
  {"file": "D/a.cnt", "title": "A", "firstPage": "D/a.html"},
  {"file": "D/b.cnt", "title": "B", "firstPage": null},
  {"file": "D/c.cnt", "title": "", "firstPage": "D/a.html"}],
"contents": [
  {"title": "intro", "page": "D/a.html", "helpset": null, "children": []},
  {"title": "book", "page": "D/", "helpset": "A", "children": []},
  {"title": "y", "page": "D/a.html", "helpset": "", "children": []},
  {"title": "x", "page": "missing.cnt", "helpset": "B", "children": []}],
"index": [
  {"text": "k", "link": "D/a.html", "topics": [{"title": null, "link": "D/a.html"},
                                               {"title": "B", "link": "D/a.html"}]},
  {"text": "    sub", "link": "D/", "topics": [{"title": "B", "link": "D/"}]},
  {"text": "    sub", "link": "D/", "topics": [{"title": null, "link": "D/"}]}],
"problems": [
  {"file": "D/a.cnt", "line": 5, "severity": "error"},
  {"file": "D/b.cnt", "line": 3, "severity": "warning"}]})")
                                     .replace(u"D/"_s, m_files->path({}));
        const auto parsed = QJsonDocument::fromJson(expected.toUtf8()).object();
        for (const auto& key : parsed.keys()) {
            QCOMPARE(QJsonDocument(found.value(key).toArray()).toJson(),
                     QJsonDocument(parsed.value(key).toArray()).toJson());
        }
        QCOMPARE(found.keys(), parsed.keys());
    }

    void dumpOfMissingFiles()
    {
        m_files->write(u"d/x"_s, {});
        m_files->write(u"a.cnt"_s, "a");
        const auto answer = run({u"--dump"_s, u"no.cnt"_s, u"a.cnt"_s, u"d"_s});
        QCOMPARE(answer.code, 1);
        const auto found = QJsonDocument::fromJson(answer.out).object();
        QCOMPARE(found[u"files"].toArray().size(), 1);
        QCOMPARE(found[u"contents"].toArray().size(), 1);
        QCOMPARE(found[u"problems"].toArray().size(), 2);
        QCOMPARE(found[u"problems"][0][u"file"].toString(), m_files->path(u"no.cnt"_s));
        QCOMPARE(found[u"problems"][1][u"severity"].toString(), u"error"_s);
    }

    void renderedPages()
    {
        m_files->write(u"a.html"_s, "<style>x{}</style><nav>" +
                                        QByteArray("<a href=x>n</a><br>").repeated(50) + "</nav><p>a");
        const auto height = [&](const QStringList& options) {
            const auto answer =
                run(QStringList{u"--png"_s, u"out.png"_s} + options + QStringList{u"a.html"_s});
            return answer.code == 0 ? QImage(m_files->path(u"out.png"_s)).height() : -1;
        };
        QVERIFY(height({}) > 0);
        QVERIFY(height({}) * 5 < height({u"--as-written"_s}));
        QCOMPARE(height({u"--width"_s, u"300"_s, u"--as-written"_s}),
                 height({u"--as-written"_s, u"--width"_s, u"300"_s}));
        QCOMPARE(run({u"--pdf"_s, u"out.pdf"_s, u"--as-written"_s, u"a.html"_s}).code, 0);
        for (const auto& bad : {QStringList{u"--png"_s, u"o.png"_s},
                                QStringList{u"--png"_s, u"o.png"_s, u"--width"_s, u"0"_s, u"a.html"_s},
                                QStringList{u"--pdf"_s, u"o.pdf"_s, u"a.html"_s, u"b.html"_s}}) {
            QCOMPARE(run(bad).code, 2);
        }
        QVERIFY(!QFileInfo::exists(m_files->path(u"o.png"_s)));
    }

    void pageAsText()
    {
        m_files->write(u"a.html"_s, "<style>x{}</style><nav><a href=x>n</a></nav><h1>T\303\251</h1><p>" +
                                        QByteArray("word ").repeated(20) + "<a href=b.html#c>to</a>");
        const auto text = [&](const QStringList& options) {
            return QString::fromUtf8(run(QStringList{u"--text"_s} + options + QStringList{u"a.html"_s}).out);
        };
        QCOMPARE(text({}), u"Té\n==\n\n"_s + u"word "_s.repeated(16).trimmed() + u"\n" +
                               u"word "_s.repeated(4) + u"to\n");
        QVERIFY(text({u"--links"_s}).endsWith(u"to[1]\n\n[1] b.html#c\n"_s));
        QVERIFY(runShell(u"COLUMNS=24 \"$0\" --text a.html"_s).out.contains("word word word word\n"));
        const auto full = runShell(u"exec \"$0\" --text a.html >/dev/full"_s);
        QVERIFY(full.code == 1 && full.error.contains("cannot be written"));
        QCOMPARE(run({u"--text"_s, u"a.html"_s, u"b.html"_s}).code, 2);
        QCOMPARE(run({u"--text"_s, u"none.html"_s}).code, 1);
    }

    /// Of a page that takes long the beginning is taken, unless all of it is wanted.
    void pageThatTakesLong()
    {
        m_files->write(u"a.html"_s, "<p>begin " + QByteArray(70'000, 'x') + "<p>end");
        const auto beginning = run({u"--text"_s, u"a.html"_s});
        QVERIFY(beginning.code == 0 && beginning.error.contains("--whole"));
        QVERIFY(beginning.out.contains("begin") && !beginning.out.endsWith("end\n"));
        const auto whole = run({u"--text"_s, u"--whole"_s, u"a.html"_s});
        QVERIFY(whole.code == 0 && whole.error.isEmpty() && whole.out.endsWith("end\n"));
        const auto picture = run({u"--png"_s, u"out.png"_s, u"a.html"_s});
        QVERIFY(picture.code == 0 && picture.error.contains("--whole"));
    }

    void foreignName()
    {
        const auto answer = runShell(uR"sh(n=$(printf 'b\351.cnt'); : >"$n"; "$0" --dump "$n")sh"_s);
        QVERIFY(answer.code == 1 && answer.out.contains("encoding"));
    }

    void failedWrites()
    {
        const auto full = runShell(u"exec \"$0\" --dump a.cnt >/dev/full"_s);
        QVERIFY(full.code == 1 && full.error.contains("cannot be written"));
        const auto escape = runShell(uR"sh("$0" --pdf o.pdf "$(printf 'a\033[31m\233x')")sh"_s);
        QVERIFY(escape.code == 1 && escape.error.contains("a?[31m") && !escape.error.contains('\033'));
    }

    void dumpOddText()
    {
        const QString text = u"\uFEFFa \"\\/<&\u0001\u0000\u001F\u007F\u0085\u2028\uFFFE\U0001F600\u00E9"_s +
                             QChar(0xD800) + u'x' + QChar(0xDC00) + u'y';
        m_files->write(u"a.cnt"_s, QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2));
        const auto answer = run({u"--dump"_s, u"a.cnt"_s});
        QVERIFY(answer.out.isValidUtf8());
        for (const char c : answer.out.chopped(1)) {
            QVERIFY(uchar(c) >= 0x20 && c != 0x7F);
        }
        const auto found = QJsonDocument::fromJson(answer.out).object();
        QCOMPARE(found[u"contents"][0][u"title"].toString(), text.sliced(1));
    }

    void dumpDeepOutline()
    {
        constexpr int levels = 3000;
        QByteArray bytes;
        for (int i = 0; i < levels; ++i) {
            bytes += QByteArray(i, ' ') + "a\n";
        }
        m_files->write(u"a.cnt"_s, bytes + "b");
        const auto answer = run({u"--dump"_s, u"a.cnt"_s});
        QCOMPARE(answer.code, 0);
        QCOMPARE(answer.out.count('{'), answer.out.count('}'));
        QCOMPARE(answer.out.count('['), answer.out.count(']'));
        QVERIFY(answer.out.endsWith("],\"index\":[],\"problems\":[]}\n"));
        QCOMPARE(answer.out.count("\"children\":[{"), levels - 1);
        QCOMPARE(answer.out.count("\"title\":\"a\""), levels);
    }

private:
    /// Starts the program, or a shell script in which $0 is the program.
    [[nodiscard]] std::unique_ptr<QProcess> start(const QStringList& arguments) const
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s}) {
            environment.remove(name);
        }
        environment.insert(u"XDG_CONFIG_HOME"_s, m_files->path(u"config"_s));
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(m_files->path({}));
        if (arguments[0] == u"sh") {
            process->start(u"/bin/sh"_s, {u"-c"_s, arguments[1], testProgram()});
        } else {
            process->start(testProgram(), arguments);
        }
        return process;
    }

    [[nodiscard]] Answer run(const QStringList& arguments) const { return finish(*start(arguments)); }
    [[nodiscard]] Answer runShell(const QString& script) const { return run({u"sh"_s, script}); }

    [[nodiscard]] QString stored() const
    {
        QFile store(m_files->path(u"config/Orvanel/Quenda.conf"_s));
        const auto lines = store.open(QIODevice::ReadOnly) ? QString::fromUtf8(store.readAll()) : QString();
        return m_files->shortened(lines.section(u"contentsInstalled="_s, 1).section(u'\n', 0, 0));
    }

    std::unique_ptr<TemporaryFiles> m_files;
};

QTEST_GUILESS_MAIN(RequestsTest)
#include "tst_requests.moc"
