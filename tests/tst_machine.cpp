// SPDX-License-Identifier: MIT
#include "machine/machinecache.h"
#include "machine/machinesets.h"

#include "qchfiles.h"
#include "testfiles.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <array>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

/// What is found on a machine that has its documentation in a folder of the test.
class MachineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files = std::make_unique<TemporaryFiles>();
        m_places = {{m_files->path(u"share"_s)}, {}, m_files->path(u"cache/machine.json"_s)};
    }

    void sets_data()
    {
        QTest::addColumn<QStringList>("names"); // of pages, and of files that are made by their names
        QTest::addColumn<QString>("found");     // title, kind, pages, place
        const auto row = [](const char* what, const QStringList& names, const char* found) {
            QTest::newRow(what) << names << QString::fromLatin1(found);
        };
        row("nothing", {}, "");
        row("a package without pages", {u"doc/a/copyright"_s}, "");
        row("a folder of pages", {u"doc/a/html/index.html"_s, u"doc/a/html/sub/b.html"_s},
            "Page index.html|HTML|2|doc/a/html");
        row("pages beside what packages have", {u"doc/a/index.html"_s, u"doc/a/b.html"_s},
            "Page index.html|HTML|2|doc/a");
        row("a book, and the folder of its pages",
            {u"gtk-doc/html/b/b.devhelp2"_s, u"gtk-doc/html/b/index.html"_s},
            "The book|Devhelp Book|1|gtk-doc/html/b/b.devhelp2");
        row("a book that is elsewhere than its pages",
            {u"devhelp/books/b/base.devhelp2"_s, u"doc/based/html/index.html"_s,
             u"doc/other/html/index.html"_s},
            "Page index.html|HTML|1|doc/other/html\nThe book|Devhelp Book|1|devhelp/books/b/base.devhelp2");
        row("a package of Qt, and the folder with the same pages",
            {u"qt5/doc/q.qch"_s, u"qt5/doc/q/index.html"_s, u"doc-base/q"_s},
            "Guide 1.2|Qt Help|2|qt5/doc/q.qch");
        row("a registered document of a folder that is found, too",
            {u"doc-base/a"_s, u"doc/a/html/index.html"_s}, "Page index.html|HTML|1|doc/a/html");
        row("a page that passes on to a folder",
            {u"doc/a/index.html"_s, u"doc/a/html/index.html"_s, u"doc/a/stub"_s},
            "Page index.html|HTML|1|doc/a/html");
    }

    void sets()
    {
        QFETCH(const QStringList, names);
        QFETCH(const QString, found);
        for (const auto& name : names) {
            make(name);
        }
        QCOMPARE(find(), found);
        QCOMPARE(find(), found); // what is known by now
    }

    /// What was found out is used until its folder changes.
    void knownPlaces()
    {
        make(u"doc/a/html/index.html"_s);
        const QString before = u"Page index.html|HTML|1|doc/a/html"_s;
        QCOMPARE(find(), before);
        QVERIFY(QFileInfo::exists(m_places.cacheFile));
        m_files->write(u"share/doc/a/html/index.html"_s, titledPage("Changed"));
        QCOMPARE(find(), before);
        setTime(u"doc/a/html"_s, 1);
        QCOMPARE(find(), u"Changed|HTML|1|doc/a/html"_s);
        m_files->write(u"cache/machine.json"_s, R"({"format":1,"places":{"x":[],"y":7}} damaged)");
        QCOMPARE(find(), u"Changed|HTML|1|doc/a/html"_s);
        QVERIFY(QDir(m_files->path(u"share/doc/a"_s)).removeRecursively());
        QCOMPARE(find(), QString());
    }

    /// Who looks for a moment only does not lose what was found out before.
    void stoppedSearch() const
    {
        const QString cache = m_places.cacheFile;
        MachineCache before(cache);
        before.insert(u"/known"_s, {});
        before.save(true);
        MachineCache stopped(cache);
        stopped.insert(u"/new"_s, {});
        stopped.save(false);
        MachineCache after(cache);
        QVERIFY(after.find(u"/known"_s) && after.find(u"/new"_s));
        MachineCache whole(cache);
        whole.insert(u"/new"_s, {});
        whole.save(true);
        QVERIFY(!MachineCache(cache).find(u"/known"_s));
    }

    void unwritableCache()
    {
        make(u"doc/a/html/index.html"_s);
        m_files->write(u"file"_s, {});
        m_places.cacheFile = m_files->path(u"file/machine.json"_s);
        QCOMPARE(find(), u"Page index.html|HTML|1|doc/a/html"_s);
    }

    void foldersOfTheUser()
    {
        make(u"mine/a.cnt"_s);
        make(u"mine/sub/index.html"_s);
        m_places = {{}, {m_files->path(u"share/mine"_s)}, {}};
        QCOMPARE(find(), u"Native|Contents File|1|mine/a.cnt\nPage index.html|HTML|1|mine/sub"_s);
    }

private:
    void make(const QString& name)
    {
        const QString path = u"share/"_s + name;
        const QByteArray share = m_files->path(u"share/"_s).toUtf8();
        const QString file = name.section(u'/', -1);
        if (file.endsWith(u".qch")) {
            m_files->write(path, {});
            makeQch(m_files->path(path), "q");
        } else if (file.endsWith(u".devhelp2")) {
            const QByteArray base =
                file.startsWith(u"base") ? " base='" + share + "doc/based/html'" : QByteArray();
            m_files->write(path, "<book title='The book' link='index.html'" + base + "><chapters/></book>");
        } else if (name.startsWith(u"doc-base/")) {
            const QByteArray folder = name.endsWith(u'q') ? "qt5/doc/q" : "doc/a/html";
            m_files->write(path, "Document: a\nTitle: Registered\n\nFormat: html\nIndex: " + share + folder +
                                     "/index.html\nFiles: x\n");
        } else if (file == u"stub") {
            m_files->write(u"share/doc/a/index.html"_s,
                           "<meta http-equiv=refresh content='0; url=html/index.html'>");
        } else if (file.endsWith(u".cnt")) {
            m_files->write(path, ":title = Native\nA = a.html");
        } else {
            m_files->write(path, titledPage("Page " + file.toUtf8()));
        }
    }

    void setTime(const QString& folder, int secondsAhead) const
    {
        const QByteArray path = m_files->path(u"share/"_s + folder).toUtf8();
        const timespec time{QDateTime::currentSecsSinceEpoch() + secondsAhead, 0};
        const std::array times{time, time};
        QCOMPARE(::utimensat(AT_FDCWD, path.constData(), times.data(), 0), 0);
    }

    [[nodiscard]] QString find() const
    {
        QStringList lines;
        for (const auto& set : findMachineSets(m_places, {})) {
            lines += u"%1|%2|%3|%4"_s.arg(set.title, set.kind)
                         .arg(set.pages)
                         .arg(QString(set.name).remove(m_files->path(u"share/"_s)));
        }
        return lines.join(u'\n');
    }

    std::unique_ptr<TemporaryFiles> m_files;
    MachinePlaces m_places;
};

QTEST_GUILESS_MAIN(MachineTest)
#include "tst_machine.moc"
