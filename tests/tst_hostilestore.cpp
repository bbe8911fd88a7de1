// SPDX-License-Identifier: MIT
#include "testfiles.h"
#include "testprogram.h"

#include <QMap>
#include <QRandomGenerator>

#include <csignal>
#include <deque>
#include <fcntl.h>
#include <functional>
#include <linux/capability.h>
#include <memory>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

using Prepare = std::function<void()>; ///< runs in the process that becomes the program

constexpr int LongestTime = 10'000; // ms

/// Files do not grow beyond so many bytes, as on a full disk.
Prepare diskWithRoomFor(rlim_t bytes)
{
    return [bytes] {
        const rlimit size{bytes, bytes};
        ::setrlimit(RLIMIT_FSIZE, &size);
        std::signal(SIGXFSZ, SIG_IGN);
    };
}

} // namespace

/// Requests on a settings store that cannot be written, is damaged, or is used by many at once.
class HostileStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QFileInfo(testProgram()).isExecutable(), "QUENDA_PROGRAM has to name the program");
    }

    void init()
    {
        m_files = std::make_unique<TemporaryFiles>("== a.cnt\n:title = A\n== b.cnt\n:title = B\n");
        QCOMPARE(request("install", u"a.cnt"_s).code, 0);
    }

    void cleanup() { tellAfterFailure(); }

    void cannotBeWritten_data()
    {
        QTest::addColumn<rlim_t>("room");
        QTest::addColumn<int>("directory"); // permissions
        QTest::addColumn<int>("store");
        QTest::newRow("disk full") << rlim_t(0) << 0700 << 0600;
        QTest::newRow("disk nearly full") << rlim_t(40) << 0700 << 0600;
        QTest::newRow("read-only directory") << RLIM_INFINITY << 0500 << 0400;
        QTest::newRow("read-only directory, disk full") << rlim_t(40) << 0500 << 0600;
    }

    void cannotBeWritten()
    {
        QFETCH(const rlim_t, room);
        QFETCH(const int, directory);
        QFETCH(const int, store);
        if (directory == 0500 && ::geteuid() == 0 && ::prctl(PR_CAPBSET_READ, CAP_SETPCAP) != 1) {
            QSKIP("permissions do not bind root here");
        }
        const QByteArray before = bytes();
        ::chmod(storePath().toUtf8(), mode_t(store));
        ::chmod(directoryPath().toUtf8(), mode_t(directory));
        const auto prepare = [limit = diskWithRoomFor(room)] {
            limit();
            obeyPermissions();
        };
        const auto answer = request("install", u"b.cnt"_s, prepare);
        const auto left = QDir(directoryPath()).entryList(QDir::Files | QDir::Hidden);
        ::chmod(directoryPath().toUtf8(), 0700);
        QCOMPARE(answer.code, 0);
        QVERIFY2(answer.error.contains("cannot be written"), answer.error);
        QCOMPARE(bytes(), before);
        QCOMPARE(left, (QStringList{u"Quenda.conf"_s, u"Quenda.conf.rmw"_s}));
        QCOMPARE(request("isinstall", u"a.cnt"_s, prepare).code, 0);
        QCOMPARE(request("isinstall", u"b.cnt"_s, prepare).code, 2);
    }

    void leftOverLock_data()
    {
        QTest::addColumn<QByteArray>("lock");
        QTest::newRow("of a program that runs") << QByteArray::number(::getpid()) + "\ntst_hostilestore\n" +
                                                       QSysInfo::machineHostName().toUtf8() + "\n\n\n";
        QTest::newRow("of another machine") << "1\nquenda\nelsewhere\n\n\n"_ba;
        QTest::newRow("noise") << QByteArray(100, '\xff');
        QTest::newRow("a directory") << QByteArray();
    }

    void leftOverLock()
    {
        QFETCH(const QByteArray, lock);
        const QString path = storePath() + u".lock"_s;
        if (lock.isEmpty()) {
            QVERIFY(QDir().mkpath(path));
        } else {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(lock) == lock.size());
        }
        const auto answer = request("install", u"b.cnt"_s);
        QCOMPARE(answer.code, 0);
        QCOMPARE(answer.error, QByteArray());
        QCOMPARE(request("isinstall", u"b.cnt"_s).code, 0);
    }

    void damagedStore()
    {
        QFile store(storePath());
        QVERIFY(store.open(QIODevice::Append));
        store.write("no key\n[]\n=\n%%%\n[[x\n\0\xff\n\\x="_ba + QByteArray(1 << 20, '\x1'));
        store.close();
        QCOMPARE(request("install", u"b.cnt"_s).error, QByteArray());
        QCOMPARE(request("isinstall", u"a.cnt"_s).code, 0);
        QCOMPARE(request("isinstall", u"b.cnt"_s).code, 0);
    }

    /// One that was stopped, for instance.
    void heldByAnotherProgram()
    {
        const int fd = ::open((storePath() + u".rmw"_s).toUtf8(), O_RDWR | O_CLOEXEC);
        QVERIFY(::flock(fd, LOCK_EX) == 0);
        const QByteArray before = bytes();
        QCOMPARE(request("isinstall", u"a.cnt"_s).code, 0);
        const auto answer = request("install", u"b.cnt"_s);
        QVERIFY2(answer.error.contains("cannot be written"), answer.error);
        QCOMPARE(bytes(), before);
        ::close(fd);
        QCOMPARE(request("install", u"b.cnt"_s).error, QByteArray());
        QCOMPARE(request("isinstall", u"b.cnt"_s).code, 0);
    }

    void killedInMidWrite()
    {
        constexpr int rounds = 60;
        double life = 30; // ms; grows and shrinks until about half of the installs come through
        QRandomGenerator random(1);
        QSet<QString> expected{u"a.cnt"_s};
        int completed = 0;
        for (int i = 0; i < rounds; ++i) {
            const QString name = u"%1.cnt"_s.arg(i);
            m_files->write(name, {});
            const auto process = start("install", name);
            process->waitForFinished(int(random.bounded(2 * life)));
            process->kill();
            process->waitForFinished();
            const auto found = installed();
            life *= found.contains(name) ? 0.9 : 1.1; // NOLINT(*-magic-numbers)
            if (found.contains(name)) {
                expected += name;
                ++completed;
            }
            QCOMPARE(found, expected);
        }
        QVERIFY2(completed > rounds / 10 && completed < rounds * 9 / 10,
                 qPrintable(QString::number(completed)));
        QCOMPARE(request("install", u"b.cnt"_s).error, QByteArray());
        QCOMPARE(installed(), expected + QSet{u"b.cnt"_s});
    }

    void installsAndUninstallsAtOnce()
    {
        constexpr int requests = 500;
        constexpr size_t atOnce = 16;
        constexpr int names = 12;
        for (int i = 0; i < names; ++i) {
            m_files->write(u"%1.cnt"_s.arg(i), {});
        }
        struct Running {
            std::unique_ptr<QProcess> process;
            QString name;
            int change;
        };
        std::deque<Running> running;
        QMap<QString, int> expected{{u"a.cnt"_s, 1}}; // how often it stands in the list
        QRandomGenerator random(2);
        const auto finishFirst = [&] {
            auto& first = running.front();
            const auto answer = finish(*first.process, LongestTime);
            QVERIFY2(answer.code == 0 || answer.code == 2, answer.error);
            QCOMPARE(answer.error, QByteArray());
            expected[first.name] += answer.code == 0 ? first.change : 0;
            running.pop_front();
        };
        for (int i = 0; i < requests; ++i) {
            const QString name = u"%1.cnt"_s.arg(random.bounded(names));
            const bool isInstall = random.bounded(2) == 0;
            running.push_back({start(isInstall ? "install" : "uninstall", name), name, isInstall ? 1 : -1});
            if (running.size() == atOnce) {
                finishFirst();
            }
        }
        while (!running.empty()) {
            finishFirst();
        }
        QSet<QString> claimed;
        for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
            QVERIFY2(it.value() == 0 || it.value() == 1, qPrintable(it.key()));
            if (it.value() == 1) {
                claimed += it.key();
            }
        }
        QCOMPARE(installed(), claimed);
    }

private:
    [[nodiscard]] std::unique_ptr<QProcess> start(const char* what, const QString& name,
                                                  const Prepare& prepare = {}) const
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, m_files->path(u"config"_s));
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(m_files->path({}));
        process->setChildProcessModifier(prepare);
        process->start(testProgram(), {u"--"_s + QLatin1StringView(what), name});
        return process;
    }

    [[nodiscard]] Answer request(const char* what, const QString& name, const Prepare& prepare = {}) const
    {
        return finish(*start(what, name, prepare), LongestTime);
    }

    [[nodiscard]] QString directoryPath() const { return m_files->path(u"config/Orvanel"_s); }
    [[nodiscard]] QString storePath() const { return directoryPath() + u"/Quenda.conf"_s; }
    [[nodiscard]] QByteArray bytes() const
    {
        QFile store(storePath());
        return store.open(QIODevice::ReadOnly) ? store.readAll() : QByteArray();
    }
    /// Base names in the stored list, where none may stand twice.
    [[nodiscard]] QSet<QString> installed() const
    {
        QStringList names;
        const QString line =
            QString::fromUtf8(bytes()).section(u"contentsInstalled="_s, 1).section(u'\n', 0, 0);
        for (const auto& path : line.split(u", "_s, Qt::SkipEmptyParts)) {
            names += QFileInfo(path).fileName();
        }
        return names.removeDuplicates() == 0 ? QSet(names.begin(), names.end()) : QSet<QString>{u"twice"_s};
    }

    std::unique_ptr<TemporaryFiles> m_files;
};

QTEST_GUILESS_MAIN(HostileStoreTest)
#include "tst_hostilestore.moc"
