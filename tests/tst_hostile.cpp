// SPDX-License-Identifier: MIT
#include "hostilesets.h"
#include "qchfiles.h"
#include "testprogram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

#ifdef QUENDA_SANITIZED
constexpr rlim_t MaximumMemory = RLIM_INFINITY;
constexpr rlim_t MaximumTime = 60; // seconds
#else
constexpr rlim_t MaximumMemory = 500 << 20; // bytes
constexpr rlim_t MaximumTime = 10;          // seconds
#endif
constexpr int Patience = 100'000; // ms; a program that waits for ever takes no time of the processor
constexpr int Many = 100'000;     // lines

constexpr int Unreadable = -1;
constexpr int TooDeep = -2; ///< for the toolkit's JSON reader

/// All but those about missing pages.
int ofReading(const QJsonArray& problems)
{
    return int(std::count_if(problems.begin(), problems.end(), [](const auto& problem) {
        return !problem.toObject().value(u"message").toString().endsWith(u"does not exist");
    }));
}

} // namespace

Q_DECLARE_METATYPE(Make)

/// The program as a process with limits on time and memory, on help sets that nobody should make.
class HostileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(QFileInfo(testProgram()).isExecutable(), "QUENDA_PROGRAM has to name the program");
        m_driver = QCoreApplication::applicationDirPath() + u"/windowdriver"_s;
    }

    void contents_data()
    {
        contentsColumns();
        addSet("empty", file(""), 0);
        addSet("only directives", file(":title = a\n:index\n:title\n:index"), 0);
        addSet("NUL bytes", file("a\0b = x\0.html\n\0\nc"_ba), 3);
        addSet("not UTF-8", file("\xff\xfe\xfd\xfc\n\x80 = \xc3(\n"), 1);
        addSet("UTF-16", file("\xff\xfe:\0t\0\n\0a\0\n\0b\0\n\0"_ba), 3);
        addSet("byte-order mark", file("\xef\xbb\xbf:title = a\nb"), 1);
        addSet("lone CR", file(":title = a\rb\rc"), 2);
        addSet("a line of 30 MB", file(QByteArray(30 << 20, 'x')), 1, 1);
        addSet("ten million blank lines", file(QByteArray(10'000'000, '\n') + "a"), 1);
        addSet("pipe", odd("pipe"), Unreadable, 1);
        addSet("socket", odd("socket"), Unreadable, 1);
        addSet("directory", odd("directory"), Unreadable, 1);
        addSet("endless device", odd("/dev/zero"), Unreadable, 1);
        addSet("terminal", odd("/dev/ptmx"), Unreadable, 1);
        addSet("link to itself", odd("a.cnt"), Unreadable, 1);
        addSet("dangling link", odd("none"), Unreadable, 1);
        addSet("over 1 GiB", odd("sparse"), Unreadable, 1);
        addSet("unreadable", odd("unreadable"), Unreadable, 1);

        addSet("10,000 levels",
               file(lines(10'000, [](int i) -> QByteArray { return QByteArray(i, ' ') + "a = a.html"; })),
               TooDeep);
        addSet("many siblings", file(QByteArray("a=b\n").repeated(Many)), Many);
        addSet("saw-tooth", file(QByteArray("a\n b\n  c\n   d\n").repeated(20'000)), 20'000);
        addSet("over-deep everywhere", file("a\n" + QByteArray("   b\n").repeated(500)), 1, 1);
        addSet("includes itself", file("x = a.cnt\ny = ./a.cnt\np = a.html"), 3, 2);
        addSet("include each other",
               with(file("x = b.cnt\np = a.html"), file("y = a.cnt\nq = b.html", "b.cnt")), 2, 1);
        addSet("includes itself by a link", with(file("x = b.cnt\np = a.html"), odd("a.cnt", "b.cnt")), 2, 1);
        addSet("diamond of 2^30", makeDiamond, 1, 3);
        addSet(
            "many missing includes",
            file(lines(Many, [](int i) -> QByteArray { return "a = b" + QByteArray::number(i) + ".cnt"; })),
            10'001, 10'001);
        addSet("blank lines included again and again",
               with(file(QByteArray("x = b.cnt\n").repeated(9'000)),
                    file(QByteArray(1'000'000, '\n') + "a", "b.cnt")),
               50, 1);
        addSet("keywords named again and again",
               with(file(QByteArray("x = b.cnt\n").repeated(9'000)),
                    with(file(":index = a.idx\na", "b.cnt"),
                         file(QByteArray("a=b\n").repeated(1'000), "a.idx"))),
               9'000, 1);
        addSet("names of nothing but signs of places",
               file(QByteArray("a = " + QByteArray(16'000, '#') + '\n').repeated(100)), 100);
        addSet("includes a pipe", with(file("x = b.cnt\np = a.html"), odd("pipe", "b.cnt")), 2, 1);
        addSet("includes a device", file("x = /dev/zero.cnt\ny = ../../../../../dev/zero\nz"), 3, 1);
    }

    void keywords_data()
    {
        contentsColumns();
        addSet("many equal keywords", index(QByteArray("a=b\n").repeated(Many)), 1);
        addSet("all case variants of a word", index(lines(1 << 16, caseVariant)), 1);
        addSet("many sub-keywords of one",
               index("a\n" +
                     lines(Many, [](int i) -> QByteArray { return " b" + QByteArray::number(i) + "=c"; })),
               1);
        addSet("orphans", index(" a = b\n\tc = d\n   e"), 1);
        addSet("the contents as index", file(":index = a.cnt\na"), 1);
        addSet("directory as index", file(":index = .\na"), 1, 1);
        addSet("device as index", file(":index = /dev/zero\na"), 1, 1);
        addSet("pipe as index", with(file(":index = a.idx\na"), odd("pipe", "a.idx")), 1, 1);
    }

    void keywords() { contents(); }

    void contents()
    {
        QFETCH(const Make, make);
        QFETCH(const int, entries);
        QFETCH(const int, problems);
        make(*m_files);
        run({u"--dump"_s, u"a.cnt"_s});
        QCOMPARE(m_code, entries == Unreadable ? 1 : 0);
        const auto found = QJsonDocument::fromJson(m_out).object();
        if (entries != TooDeep) {
            QCOMPARE(found[u"contents"].toArray().size(), std::max(0, entries));
            QCOMPARE(ofReading(found[u"problems"].toArray()), problems);
        }
        const auto seen = use();
        // The window opens nothing that is no text.
        const bool isOpened = qstrcmp(QTest::currentDataTag(), "NUL bytes") != 0;
        QCOMPARE(seen[u"rows"].toInt(), entries == TooDeep ? 1 : isOpened ? std::max(0, entries) : 0);
        QCOMPARE(seen[u"keywords"].toInt(), found[u"index"].toArray().size());
        QCOMPARE(seen[u"page"].toString().isEmpty(), entries <= 0 ? entries != TooDeep : !isOpened);
    }

    void otherKinds_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("page");   // shown in the window; empty for none
        QTest::addColumn<bool>("isProblem"); // whether something is said of the file
        addPackages();
        addPackageContents();
        addBooks();
        addFolders();
        const auto foreign = [](const char* what, const QByteArray& bytes) {
            addKind(what, file(bytes, "a.any"), "a.any", {}, true);
        };
        foreign("a picture", "\x89PNG\r\n\x1a\n\0\0\0"_ba);
        foreign("a printed document", "%PDF-1.4\n%\xe2\xe3");
        foreign("a program", "\x7f"
                             "ELF\2\1\1\0\0"_ba);
        addKind("a document of pipes and devices",
                with(file("Document: a\nTitle: a\n\nFormat: html\nIndex: /dev/zero\nFiles: /dev/*\n\n"
                          "Format: text\nFiles: /dev/* /proc/* /*/*\n",
                          "a.doc"),
                     odd("pipe", "p")),
                "a.doc", {}, true);
        addKind("a document of a million lines",
                file("Document: a\n" + QByteArray("Format: html\nIndex: /x\n").repeated(Many), "a.doc"),
                "a.doc", {}, true);
    }

    /// Whatever is damaged or made to harm is opened in the limits, or what is wrong is said with its name.
    void otherKinds()
    {
        QFETCH(const Make, make);
        QFETCH(const QString, name);
        QFETCH(const QString, page);
        QFETCH(const bool, isProblem);
        make(*m_files);
        run({u"--dump"_s, name});
        const auto problems = QJsonDocument::fromJson(m_out)[u"problems"].toArray();
        const bool isSaid = std::any_of(problems.begin(), problems.end(), [&](const auto& problem) {
            return problem.toObject().value(u"file").toString().contains(name);
        });
        QVERIFY2(!isProblem || isSaid, m_out.left(2000));
        const auto seen = use(name);
        QVERIFY2(seen[u"page"].toString().contains(page), qPrintable(seen[u"page"].toString().left(2000)));
    }

    void oddFiles_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const auto* kind : {"pipe", "directory", "socket", "sparse", "unreadable", "/dev/zero",
                                 "/dev/ptmx", "/dev/stdin", "none", "odd.cnt"}) {
            QTest::newRow(kind) << QByteArray(kind);
        }
    }

    /// Everything that a help set names is one.
    void oddFiles()
    {
        QFETCH(const QByteArray, kind);
        file(":index = odd.idx\nx = odd.cnt\np = odd.html\nq = a.html")(*m_files);
        file("<link rel=stylesheet href=odd.css><img src=odd.png><a href=odd.html>x</a>", "a.html")(*m_files);
        for (const auto* name : {"odd.idx", "odd.cnt", "odd.html", "odd.png", "odd.css"}) {
            odd(kind, name)(*m_files);
        }
        run({u"--dump"_s, u"a.cnt"_s});
        QCOMPARE(m_code, 0);
        QVERIFY(ofReading(QJsonDocument::fromJson(m_out)[u"problems"].toArray()) >= 2);
        QCOMPARE(use(u"a.cnt"_s, u"x"_s)[u"hits"].toInt(), 1);
    }

    void names_data()
    {
        QTest::addColumn<QString>("name");
        for (const auto* name : {"two words", "100%25", "%2e%2e", "a#b", "what?", R"('"a"')", "-a", "--help",
                                 ":a", "a;b&c", "a\\b", "two\nlines", "tab\tx", "\033[31m"}) {
            QTest::newRow(QByteArray(name).toPercentEncoding()) << QString::fromUtf8(name);
        }
        QTest::newRow("from right to left")
            << QString::fromUtf8(QByteArray::fromPercentEncoding("%C3%A9%E2%80%AE%F0%9F%98%80"));
    }

    /// All files of a help set are called alike; names that are no line's text lead nowhere else.
    void names()
    {
        QFETCH(const QString, name);
        const QByteArray text = name.toUtf8();
        const QByteArray html = "<img src=\"" + text.toPercentEncoding() + ".png\"><a href=\"" +
                                text.toPercentEncoding() + ".html\">x</a>";
        m_files->write(name + u".cnt"_s,
                       ":title = " + text + "\n:index = " + text + ".idx\np = " + text + ".html");
        m_files->write(name + u".idx"_s, "k = " + text + ".html");
        m_files->write(name + u".html"_s, html);
        run({u"--dump"_s, name + u".cnt"_s});
        QCOMPARE(m_code, 0);
        const auto found = QJsonDocument::fromJson(m_out);
        QCOMPARE(found[u"files"][0][u"file"].toString(), m_files->path(name + u".cnt"_s));
        if (!name.contains(u'\n')) {
            QCOMPARE(found[u"contents"][0][u"page"].toString(), m_files->path(name + u".html"_s));
            QCOMPARE(found[u"index"][0][u"link"].toString(), m_files->path(name + u".html"_s));
            QCOMPARE(found[u"problems"].toArray().size(), 0);
        }
        QCOMPARE(use(name + u".cnt"_s, u"x"_s)[u"hits"].toInt(), name.contains(u'\n') ? 0 : 1);
    }

    /// What another program does meanwhile must not hang or crash the reading of a file.
    void changesWhileRead()
    {
        constexpr int rounds = 25;
        const QByteArray path = m_files->path(u"a.cnt"_s).toUtf8();
        const QByteArray lines = QByteArray("a = a.cnt\nb = c.html\n").repeated(50'000);
        std::jthread writer([&](const std::stop_token& stop) {
            for (int i = 0; !stop.stop_requested(); ++i) {
                ::unlink(path);
                ::rmdir(path);
                if (i % 4 == 1) {
                    ::mkfifo(path, S_IRUSR | S_IWUSR);
                } else if (i % 4 == 2) {
                    ::mkdir(path, S_IRWXU);
                } else {
                    QFile changing(m_files->path(u"a.cnt"_s));
                    changing.open(QIODevice::WriteOnly);
                    changing.write(lines);
                    changing.resize(lines.size() / 2 + i % 2);
                }
            }
        });
        for (int i = 0; i < rounds; ++i) {
            run({u"--dump"_s, u"a.cnt"_s});
            QVERIFY(QJsonDocument::fromJson(m_out).isObject());
        }
        use();
    }

    void pages_data()
    {
        QTest::addColumn<Make>("make");
        addTexts("begin", "words"); // of the page shown; what the search finds it by
        addLargePages();
        addPicturePages();
        addOtherPages();
    }

    void pages()
    {
        QFETCH(const Make, make);
        QFETCH(const QString, begin);
        QFETCH(const QString, words);
        make(*m_files);
        const auto seen = use(u"a.cnt"_s, words.isEmpty() ? u"no such"_s : words);
        QVERIFY2(!begin.isEmpty() && seen[u"page"].toString().startsWith(begin),
                 qUtf8Printable(seen[u"page"].toString()));
        QCOMPARE(seen[u"hits"].toInt(), words.isEmpty() ? 0 : 1);
    }

    void cleanup() { tellAfterFailure(); }

    void init()
    {
        m_files = std::make_unique<TemporaryFiles>();
        // Whatever a help set could want to start.
        for (const char* program : {"netscape", "konqueror", "htmlview", "xdg-open"}) {
            const QString name =
                m_files->write(u"bin/"_s + QString::fromUtf8(program), "#!/bin/sh\n: >started\n");
            QFile(name).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        }
    }

private:
    static void contentsColumns()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<int>("entries"); // at the top
        QTest::addColumn<int>("problems");
    }

    static void addPage(const char* name, const Make& make, const char* begin = "", const char* words = "")
    {
        QTest::newRow(name) << make << QString::fromUtf8(begin) << QString::fromUtf8(words);
    }

    static void addLargePages()
    {
        const char* const beginning = "This is the beginning of a page that takes long to show.";
        const auto repeat = [](const char* html, int count) {
            return page(QByteArray(html).repeated(count));
        };
        addPage("50 MB", repeat("<p>word word word word word word word word word word</p>\n", 900'000),
                beginning, "word");
        addPage("10,000 nested tables", repeat("<table><tr><td>x", 10'000), beginning, "x");
        addPage("100,000 nested tags", repeat("<div><b><ul><li>x", 25'000), beginning, "x");
        addPage("huge colspan",
                page("<table><tr><td colspan=2147483648 rowspan=2147483647>x<td colspan=-1>y"), "x y", "x y");
        addPage("a million anchors", repeat("<a name=x></a>", 1'000'000), beginning);
        addPage("one paragraph of 5 MB", page("<p>" + QByteArray("word ").repeated(1 << 20)), beginning,
                "word");
        addPage("one word of 1 MB", page("<p>" + QByteArray(1 << 20, 'x')), beginning);
        addPage("20,000 missing pictures", repeat("<img src=none.png alt=x>", 20'000), "x x x");
    }

    static void addPicturePages()
    {
        const char* const nothing = "This page cannot be shown The page holds nothing that can be shown here";
        addPage(
            "bomb of a picture",
            with(page("<img src=a.bmp width=2147483647 height=2147483647><img src=a.svg>"),
                 with(file("BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x60\xea\0\0\x60\xea\0\0\1\0\x18\0"_ba +
                               QByteArray(24, '\0'),
                           "a.bmp"),
                      file(svgBomb(), "a.svg"))),
            nothing);
        addPage(
            "pictures that are no files",
            with(page("<img src=pipe.png><img src=/dev/zero><img src=.><link rel=stylesheet href=pipe.png>"
                      "<link rel=stylesheet href=/dev/zero><style>@import url(pipe.png);</style>"),
                 odd("pipe", "pipe.png")),
            nothing);
        addPage(
            "SVG pictures that lead on to a pipe",
            with(
                page("<img src=a.svg><img src=b.svg><img src=c.svg>"),
                with(odd("pipe", "pipe.png"),
                     with(file(svg("<?xml-stylesheet href='pipe.png'?>", "<image xlink:href='pipe.png'/>"),
                               "a.svg"),
                          with(file(svg({}, "<use xlink:href='pipe.png#a'/><image href='data:,pipe.png'/>"),
                                    "b.svg"),
                               file(svg({}, "<image xlink:href='data:image/png;base64," +
                                                svg({}, "<image xlink:href='pipe.png'/>").toBase64() + "'/>"),
                                    "c.svg"))))),
            "\uFFFC");
    }

    static void addOtherPages()
    {
        addPage(
            "references outward",
            page(
                "<base href=http://127.0.0.1:9/><meta http-equiv=refresh content='0;url=http://127.0.0.1:9/'>"
                "<link rel=stylesheet href=http://127.0.0.1:9/a.css><body onload=x "
                "background=http://127.0.0.1:9/b.png><a href=javascript:x>x</a>"
                "<img src=http://127.0.0.1:9/a.png><img src=//127.0.0.1/x.png><img src=file://host/x.png>"
                "<img src='data:image/png;base64,AAAA'><script>x</script><iframe "
                "src=http://127.0.0.1:9/></iframe>"
                "<form action=http://127.0.0.1:9/><input></form>text"),
            "x http://127.0.0.1:9/ text", "text");
        addPage("leads on to itself", page("<meta http-equiv=refresh content='0;url=a.html'>text"), "text",
                "text");
        addPage("leads on to a device", page("<meta http-equiv=refresh content='0;url=/dev/zero'>text"),
                "This page cannot be shown This is not a regular file.", "text");
        addPage("rich-text marker", page("<qt><p>text</qt>"), "text", "text");
        addPage("pipe as page", with(file("p = a.html"), odd("pipe", "a.html")),
                "This page cannot be shown This is not a regular file.");
        addPage("device as page", file("p = /dev/zero"), "This page cannot be shown There is no such file.");
    }

    static void addSet(const char* name, const Make& make, int entries, int problems = 0)
    {
        QTest::newRow(name) << make << entries << problems;
    }

    static void addKind(const char* name, const Make& make, const char* file, const QString& page,
                        bool isProblem)
    {
        QTest::newRow(name) << make << QString::fromLatin1(file) << page << isProblem;
    }

    static void addPackage(const char* what, const Make& make, const QString& page, bool isProblem)
    {
        addKind(what, make, "a.qch", page, isProblem);
    }

    [[nodiscard]] static QByteArray contentsOfOnePage()
    {
        QByteArray contents;
        appendRow(contents, 0, u"p.html"_s, u"P"_s);
        return contents;
    }

    static void addPackages()
    {
        const QByteArray contents = contentsOfOnePage();
        addPackage(
            "package of noise",
            [](auto& files) {
                makeQch(files.path(u"a.qch"_s), "a");
                QFile changed(files.path(u"a.qch"_s));
                QVERIFY(changed.open(QIODevice::ReadWrite));
                QByteArray bytes = changed.readAll();
                for (qsizetype i = 100; i < bytes.size(); i += 7) {
                    bytes[i] = char(i * 31);
                }
                changed.seek(0);
                changed.write(bytes);
            },
            {}, true);
        addPackage(
            "package cut off",
            [](auto& files) {
                makeQch(files.path(u"a.qch"_s), "a");
                QVERIFY(QFile::resize(files.path(u"a.qch"_s), 5000));
            },
            {}, true);
        addPackage(
            "package of endless views",
            [=](auto& files) {
                makeQch(files.path(u"a.qch"_s), "a", {{"p.html", qCompress(titledPage("P"))}}, contents,
                        "DROP TABLE FileNameTable; CREATE VIEW FileNameTable AS WITH RECURSIVE n(x) AS "
                        "(SELECT 1 UNION ALL "
                        "SELECT x + 1 FROM n) SELECT 1 AS FolderId, 'p.html' AS Name, x AS FileId FROM n");
            },
            {}, true);
        addPackage(
            "package with a page that grows without end",
            [=](auto& files) {
                makeQch(files.path(u"a.qch"_s), "a", {{"p.html", qCompress(QByteArray(100'000'000, 'x'))}},
                        contents);
            },
            u"cannot be shown"_s, false);
        addPackage(
            "package whose page says less than it is",
            [=](auto& files) {
                makeQch(files.path(u"a.qch"_s), "a",
                        {{"p.html", "\0\0\0\5"_ba + packed(QByteArray(1 << 20, 'x'))}}, contents);
            },
            u"cannot be shown"_s, false);
    }

    static void addPackageContents()
    {
        const QByteArray contents = contentsOfOnePage();
        addPackage(
            "package with contents that end anywhere",
            [=](auto& files) {
                makeQch(files.path(u"a.qch"_s), "a", {{"p.html", qCompress(titledPage("P"))}},
                        contents + "\0\0\0\1\x7f\xff\xff\xff"_ba);
            },
            {}, true);
        addPackage(
            "package with very deep contents",
            [](auto& files) {
                QByteArray deep;
                for (int i = 0; i < Many; ++i) {
                    appendRow(deep, quint32(i * 1000), u"p.html"_s, u"P"_s);
                }
                makeQch(files.path(u"a.qch"_s), "a", {{"p.html", qCompress("<title>P</title><p>shown")}},
                        deep);
            },
            u"shown"_s, false);
        addPackage(
            "package with pages outside",
            [](auto& files) {
                QByteArray outside;
                appendRow(outside, 0, u"../../../../../../../../../dev/zero"_s, u"Z"_s);
                makeQch(files.path(u"a.qch"_s), "../..", {{"../../x.html", qCompress("x")}}, outside);
            },
            u"cannot be shown"_s, false);
        addPackage("pipe as package", odd("pipe", "a.qch"), {}, true);
    }

    static void addBooks()
    {
        const auto add = [](const char* what, const QByteArray& bytes, bool isProblem,
                            const char* book = "a.devhelp2") {
            addKind(what, with(file(bytes, book), file("<p>shown", "p.html")), book, {}, isProblem);
        };
        QByteArray entities = "<!DOCTYPE book [<!ENTITY e0 'xxxxxxxxxx'>";
        for (int i = 1; i < 9; ++i) {
            entities += "<!ENTITY e" + QByteArray::number(i) + " '" +
                        QByteArray("&e" + QByteArray::number(i - 1) + ";").repeated(10) + "'>";
        }
        add("book of entities", entities + "]><book title='&e8;' link='p.html'><chapters/></book>", true);
        add("book with a file of its own",
            "<!DOCTYPE book [<!ENTITY x SYSTEM '/dev/zero'>]><book title='a' "
            "link='p.html'><chapters>&x;</chapters></book>",
            true);
        add("very deep book",
            "<book title='a' link='p.html'><chapters>" +
                QByteArray("<sub name='a' link='p.html'>").repeated(Many),
            true);
        add("book cut off", "<book title='a' link='p.html'><chapters><sub name='b'", true);
        add("old book cut off", "<book title='a' link='p.html'><functions><function name='b'", true,
            "a.devhelp");
        add("book that is something else", "<html><p>x", true);
        add("book of devices",
            "<book title='a' link='../../../../../dev/zero' base='/dev'><chapters><sub name='b' "
            "link='zero'/></chapters></book>",
            false);
        add("compressed book of nothing", "\x1f\x8b\x08 nothing", true, "a.devhelp2.gz");
        addKind(
            "compressed book without end",
            [](auto& files) { files.write(u"a.devhelp2.gz"_s, gzipped(QByteArray(200'000'000, ' '))); },
            "a.devhelp2.gz", {}, true);
    }

    static void addFolders()
    {
        const auto add = [](const char* what, const Make& make, const QString& page, bool isProblem = false) {
            addKind(what, with(make, file("x", "set/style.css")), "set", page, isProblem);
        };
        add("empty folder", file("x", "set/x"), {}, true);
        add("folder of links to itself",
            with(file("<title>T</title><p>shown<a href=loop/loop/b.html>x</a>", "set/index.html"),
                 odd(".", "set/loop")),
            u"shown"_s);
        add("folder of pipes and devices",
            with(file("<title>T</title><p>shown", "set/index.html"),
                 with(odd("pipe", "set/objects.inv"),
                      with(odd("/dev/zero", "set/navtreedata.js"), odd("pipe", "set/a.html")))),
            u"shown"_s);
        add("contents that lead to each other",
            with(file("<div class=toctree-wrapper><a href=a.html>a</a></div>shown", "set/index.html"),
                 with(file("<div class=toctree-wrapper><a href=b.html>b</a></div>", "set/a.html"),
                      file("<div class=toctree-wrapper><a href=a.html>a</a><a href=index.html>i</a></div>",
                           "set/b.html"))),
            u"shown"_s);
        add("inventory that grows without end",
            with(file("<p>shown", "set/index.html"),
                 file("# Sphinx inventory version 2\n#\n#\n# zlib\n" + packed(QByteArray(200'000'000, 'x')),
                      "set/objects.inv")),
            u"shown"_s);
        add("inventory of noise",
            with(file("<p>shown", "set/index.html"), file("#\n#\n#\n#\nnoise", "set/objects.inv")),
            u"shown"_s);
        add("tree that is its own branch",
            with(file("<p>shown", "set/index.html"),
                 with(file("var NAVTREE = [['a','index.html','b']]", "set/navtreedata.js"),
                      file("var b = [['b','index.html','b'],['c','../../dev/zero','../x']]", "set/b.js"))),
            u"shown"_s);
        add("lists that nest without end",
            with(file("<p>shown" + QByteArray("<ul><li><a href=a.html>a</a>").repeated(50'000),
                      "set/index.html"),
                 file("typeSearchIndex = " + QByteArray(Many, '['), "set/type-search-index.js")),
            u"shown"_s);
        add("page that passes on to itself",
            file("<meta http-equiv=refresh content='0;url=index.html'><p>shown", "set/index.html"),
            u"shown"_s);
        add("unreadable page", odd("unreadable", "set/index.html"), u"cannot be shown"_s);
    }

    /// Runs the program to its end, which must come within the limits.
    void run(const QStringList& arguments) { run(testProgram(), arguments); }

    void run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, m_files->path(u"config"_s));
        environment.insert(u"XDG_CACHE_HOME"_s, m_files->path(u"cache"_s));
        environment.insert(u"PATH"_s, m_files->path(u"bin"_s));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_files->path({}));
        process.setChildProcessModifier([] {
            const rlimit memory{MaximumMemory, MaximumMemory};
            ::setrlimit(RLIMIT_DATA, &memory);
            const rlimit time{MaximumTime, MaximumTime};
            ::setrlimit(RLIMIT_CPU, &time);
            obeyPermissions();
        });
        process.start(program, arguments);
        const auto answer = finish(process, Patience);
        m_code = answer.code;
        m_out = answer.out;
        QVERIFY(m_code >= 0);
        QVERIFY(!QFileInfo::exists(m_files->path(u"started"_s)));
    }

    /// Uses the help set in the window; what was seen there.
    QJsonObject use(const QString& name = u"a.cnt"_s, const QString& words = u"no such"_s)
    {
        run(m_driver, {words, name});
        auto seen = QJsonDocument::fromJson(m_out).object();
        if (m_code != 0 || !seen[u"readable"].toBool() || seen[u"hits"].toInt() < 0) {
            QTest::qFail(m_out, __FILE__, __LINE__);
        }
        return seen;
    }

    QString m_driver;
    std::unique_ptr<TemporaryFiles> m_files;
    int m_code = -1;
    QByteArray m_out;
};

QTEST_GUILESS_MAIN(HostileTest)
#include "tst_hostile.moc"
