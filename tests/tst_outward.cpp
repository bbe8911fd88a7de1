// SPDX-License-Identifier: MIT
#include "testfiles.h"
#include "testprogram.h"

#include <QStandardPaths>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

/// What a help set may try in order to reach outside, all of it in vain. E is a directory that no file of the
/// set may be read from in these ways.
constexpr auto Sets = R"(== a.cnt
:title = <img src='E/title.png'>
:index = pipe
p = a.html
q = pipe
d = /dev/zero
h = file://host/E/page.html
include = /dev/ptmx
odd = javascript:start
== a.idx
k = a.html
== a.html
<base href='http://127.0.0.1:9/'><meta http-equiv=refresh content='0;url=http://127.0.0.1:9/a.html'>
<link rel=stylesheet href='http://127.0.0.1:9/a.css'><link rel=stylesheet href='file://host/E/sheet.css'>
<style>@import url(http://127.0.0.1:9/b.css); @font-face { src: url(E/font.ttf) } body { background: url(E/back.png) }</style>
<body onload='start' background='http://127.0.0.1:9/a.png'><a href='javascript:start'>first</a>
<img src='http://127.0.0.1:9/a.png'><img src='//127.0.0.1/a.png'><img src='file://host/E/a.png'>
<script src='E/script.js'></script><iframe src='E/frame.html'></iframe><object data='E/object.html'></object>
<embed src='E/embed.svg'><audio src='E/sound.wav' autoplay></audio><form action='http://127.0.0.1:9/'><input></form>
text
== b.cnt
:title = B
:index = b.idx
p = b.html
== b.idx
ab = b.html
== b.html
<a href='b2.html'>first</a><img src='a.svg'><img src='pipe'><img src='/dev/zero'><img src='data:image/png;base64,AAAA'>text
== b2.html
<frameset><frame src='http://127.0.0.1:9/'><frame src='/dev/zero'></frameset>
== a.svg
<?xml-stylesheet href='E/sheet.css'?><!DOCTYPE svg [<!ENTITY e SYSTEM 'E/entity'>]>
<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='9' height='9'>
<image xlink:href='E/picture.png' width='9' height='9'/><use xlink:href='E/use.svg#a'/><text>&lt;</text></svg>
)";

/// A system call that succeeded or is about to wait.
struct Call {
    QString name;
    QString path; ///< its first text
    QString line;
};

} // namespace

/// What a session asks the system for while it shows hostile help sets.
class OutwardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_strace = QStandardPaths::findExecutable(u"strace"_s);
        if (m_strace.isEmpty() ||
            QProcess::execute(m_strace, {u"-qq"_s, u"-o"_s, u"/dev/null"_s, u"true"_s}) != 0) {
            QSKIP("needs strace and the right to trace");
        }
        m_outside.write(u"picture.png"_s, "x");
        for (const auto* name :
             {"title.png", "page.html", "sheet.css", "font.ttf", "back.png", "a.png", "script.js",
              "frame.html", "object.html", "embed.svg", "sound.wav", "entity", "use.svg"}) {
            m_outside.write(QString::fromUtf8(name), "x");
        }
        m_sets =
            std::make_unique<TemporaryFiles>(QByteArray(Sets).replace("E/", m_outside.path({}).toUtf8()));
        QCOMPARE(::mkfifo(m_sets->path(u"pipe"_s).toUtf8(), S_IRUSR | S_IWUSR), 0);
    }

    void session_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        const QStringList sets{m_sets->path(u"a.cnt"_s), m_sets->path(u"b.cnt"_s)};
        const QString program = testProgram();
        QTest::newRow("clicks") << QCoreApplication::applicationDirPath() + u"/windowdriver"_s
                                << QStringList{u"text"_s} + sets;
        QTest::newRow("search") << program << QStringList{u"--search"_s, u"text"_s} + sets;
        QTest::newRow("picture") << program
                                 << QStringList{u"--screenshot"_s, m_sets->path(u"out.png"_s)} + sets;
        QTest::newRow("text") << program << QStringList{u"--dump"_s} + sets;
        QTest::newRow("request") << program << QStringList{u"--install"_s, sets[0]};
        QTest::newRow("page") << program
                              << QStringList{u"--png"_s, m_sets->path(u"out.png"_s),
                                             m_sets->path(u"a.html"_s)};
    }

    void session()
    {
        QFETCH(const QString, program);
        QFETCH(const QStringList, arguments);
        const auto calls = trace(program, arguments);
        QVERIFY(calls.size() > 10);
        int programs = 0;
        for (const auto& call : calls) {
            programs += call.name == u"execve" ? 1 : 0;
            QVERIFY2(!isOutward(call), qPrintable(call.line));
        }
        QCOMPARE(programs, 1);
    }

    void cleanup() { tellAfterFailure(); }

private:
    [[nodiscard]] QList<Call> trace(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, m_sets->path(u"config"_s));
        environment.insert(u"XDG_CACHE_HOME"_s, m_sets->path(u"cache"_s));
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + m_outside.path(u"bus"_s));
        environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s); // looks at itself as a debugger does
        for (const auto& desktop :
             {u"XDG_CURRENT_DESKTOP"_s, u"DESKTOP_SESSION"_s, u"QT_QPA_PLATFORMTHEME"_s}) {
            environment.remove(desktop); // its theme reads more
        }
        process.setProcessEnvironment(environment);
        const QString log = m_sets->path(u"log"_s);
        process.start(m_strace, QStringList{u"-f"_s, u"-qq"_s, u"-s"_s, u"4096"_s, u"-e"_s, u"signal=none"_s,
                                            u"-e"_s, u"trace=%network,execve,open,openat,openat2,creat"_s,
                                            u"-o"_s, log, program} +
                                    arguments);
        if (finish(process, 60'000).code != 0) {
            return {};
        }
        QFile file(log);
        file.open(QIODevice::ReadOnly);
        QList<Call> calls;
        for (const auto& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
            // Calls that a signal or another thread interrupts take two lines; the first tells all. What does
            // not exist tells nothing: any program looks for its libraries in several places.
            const QString call = line.section(u' ', 1, -1, QString::SectionSkipEmpty);
            if (call.contains(u'(') && !call.startsWith(u'<') && !call.contains(u" = -1 ENOENT"_s)) {
                calls.push_back({call.section(u'(', 0, 0), call.section(u'"', 1, 1), line});
            }
        }
        return calls;
    }

    [[nodiscard]] bool isOutward(const Call& call) const
    {
        if (call.name == u"execve" || call.name == u"sendfile") {
            return false; // counted; copies files as well
        }
        if (!call.name.startsWith(u"open") && call.name != u"creat") {
            return true; // about sockets
        }
        if (call.path.startsWith(m_sets->path({}))) {
            return call.path == m_sets->path(u"pipe"_s);
        }
        // The toolkit's, the C library's and the fonts' own.
        static const QStringList own{u"/usr/"_s,
                                     u"/lib/"_s,
                                     u"/lib64/"_s,
                                     u"/etc/ld.so."_s,
                                     u"/etc/fonts"_s,
                                     u"/etc/localtime"_s,
                                     u"/etc/machine-id"_s,
                                     u"/etc/xdg/"_s,
                                     u"/var/cache/fontconfig"_s,
                                     u"/var/lib/dbus/machine-id"_s,
                                     u"/proc/self/"_s,
                                     u"/proc/sys/kernel/"_s,
                                     u"/proc/meminfo"_s,
                                     u"/proc/cpuinfo"_s,
                                     u"/sys/devices/system/"_s,
                                     u"/dev/urandom"_s,
                                     u"/dev/null"_s,
                                     qEnvironmentVariable("HOME") + u'/',
                                     QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/.."_s) +
                                         u'/'};
        return std::none_of(own.begin(), own.end(),
                            [&](const QString& begin) { return call.path.startsWith(begin); });
    }

    QString m_strace;
    TemporaryFiles m_outside;
    std::unique_ptr<TemporaryFiles> m_sets;
};

QTEST_GUILESS_MAIN(OutwardTest)
#include "tst_outward.moc"
