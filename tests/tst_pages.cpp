// SPDX-License-Identifier: MIT
#include "markup/pagedecoding.h"
#include "pages/builtinpage.h"
#include "pages/links.h"
#include "pages/pagefile.h"

#include "testfiles.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class PagesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void decodePage_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected"); // the end of the text
        const QByteArray far = "<!--" + QByteArray(3000, ' ') + "--><meta charset=\"windows-1251\">\xCF\xF0";
        addRow("none declared, UTF-8", "<p>\xC3\xA9"_ba, "<p>\u00E9");
        addRow("none declared, Latin-1", "<p>\xE9"_ba, "<p>\u00E9");
        addRow("UTF-8 declared falsely", "<META CharSet=UTF-8>\xE9"_ba, ">\u00E9");
        addRow("short form", "<meta charset='windows-1251'>\xCF\xF0"_ba, ">\u041F\u0440");
        addRow("long form",
               "<meta http-equiv=\"Content-Type\"\n content=\"text/html; charset=KOI8-R\">\xD0"_ba,
               ">\u043F");
        addRow("far behind", far, ">\u041F\u0440");
        addRow("XML", "<?xml version='1.0' encoding=\"ISO-8859-2\"?>\xB1"_ba, ">\u0105");
        addRow("unknown charset", "<meta charset=x-no>\xC3\xA9"_ba, ">\u00E9");
        addRow("UTF-16 declared in bytes", "<meta charset=utf-16>\xC3\xA9"_ba, ">\u00E9");
        addRow("mark before declaration", "\xEF\xBB\xBF<meta charset=windows-1251>\xC3\xA9"_ba,
               "<meta charset=windows-1251>\u00E9");
        addRow("UTF-16 mark", QByteArray::fromHex("feff003c041f"), "<\u041F");
    }

    void decodePage()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, expected);
        const QString text = ::decodePage(bytes);
        QCOMPARE(text.right(expected.size()), expected);
        QVERIFY(text.startsWith(u'<'));
    }

    void locatePage_data()
    {
        addTexts("name", "expected");
        addRow("whole page", "a.html", "a.html");
        addRow("anchor", "a.html#x", "a.html x");
        addRow("anchor with number sign", "a.html#x#y", "a.html x#y");
        addRow("number sign in the name", "c#.html", "c#.html");
        addRow("and an anchor", "c#.html#x", "c#.html x");
        addRow("number sign in a directory", "d#/a.html#x", "d#/a.html x");
        addRow("directory with index", "sub", "sub/index.html");
        addRow("ending with a separator", "sub/", "sub/index.html");
        addRow("directory and anchor", "sub#x", "sub/index.html x");
        addRow("directory without index", "d#", "d#");
        addRow("no such file", "no.html#x#y", "no.html x#y");
        addRow("no such file below a number sign", "d#/no.html#x/y", "d#/no.html x/y");
        addRow("nor such a directory", "no/a.html#x/y", "no/a.html x/y");
    }

    void locatePage()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, expected);
        const TemporaryFiles files("== a.html\n== c#.html\n== d#/a.html\n== sub/index.html\n");
        const auto found = ::locatePage(files.path(name));
        const QString text = found.anchor.isEmpty() ? found.file : found.file + u' ' + found.anchor;
        QCOMPARE(files.shortened(text), u"D/"_s + expected);
    }

    void resolveLink_data()
    {
        addTexts("href", "expected");
        addRow("neighbour", "b.html", "D/s/b.html");
        addRow("dot steps", ".././x//../b.html#a", "D/b.html#a");
        addRow("blanks around it", "\n b.html\t", "D/s/b.html");
        addRow("percent escapes", "a%20b%C3%A9.html#x%20y", "D/s/a b\u00E9.html#x y");
        addRow("a file with a percent sign", "p%20q.html", "D/s/p%20q.html");
        addRow("escaped number sign", "c%23.html#x", "D/s/c#.html#x");
        addRow("query", "b.html?v=1#x", "D/s/b.html#x");
        addRow("a file with a question mark", "q.html?v=1#x", "D/s/q.html?v=1#x");
        addRow("place in the page", " #x", "D/s/page.html#x");
        addRow("file of this machine", "file://localhost/x%23.html#y", "/x#.html#y");
        addRow("the page", "", "D/s/page.html");
        addRow("a file that looks like a scheme", "std::list.html#x", "D/s/std::list.html#x");
        addRow("mail", "mailto:a@b.c?subject=x%20y", "mailto:a@b.c?subject=x%20y");
        addRow("script", "javascript:go('a.html')", "javascript:go('a.html')");
        addRow("web", "http://h/a%20b?c#d", "http://h/a%20b?c#d");
        addRow("web in capitals", "HTTP://h/a", "HTTP://h/a");
        addRow("scheme of the page", "//h/a", "https://h/a");
        addRow("absolute", "/x/../y/a%20b", "/y/a b");
        addRow("file", "file:///x/./a%20b.html#c%20d", "/x/a b.html#c d");
        addRow("file in capitals, no slashes", "FILE:/x/a", "/x/a");
        addRow("file of another host", "file://h/a", "file://h/a");
    }

    void resolveLink()
    {
        QFETCH(const QString, href);
        QFETCH(const QString, expected);
        const TemporaryFiles files(
            "== s/page.html\n== s/p%20q.html\n== s/p q.html.x\n== s/q.html?v=1\n== s/q.html\n"
            "== s/std::list.html\n== s/b.html\n");
        QCOMPARE(files.shortened(::resolveLink(files.first(), href)), expected);
    }

    void filesOfReferences()
    {
        const QString page = u"/C#/v#1/page.html"_s;
        QCOMPARE(::resolveFile(page, u"i.png"_s), u"/C#/v#1/i.png"_s);
        QCOMPARE(::resolveFile(page, u"../i%23.png#x/y"_s), u"/C#/i#.png"_s);
        QCOMPARE(::resolveFile(page, u"#x"_s), page);
        for (const auto& href : {u""_s, u"http://x/i.png"_s, u"data:image/png;base64,AA"_s}) {
            QCOMPARE(::resolveFile(page, href), QString());
        }
    }

    void kinds_data()
    {
        addTexts("name", "scheme");
        QTest::addColumn<bool>("isRemote");
        addRow("http", " http://h", "", true);
        addRow("https", "https://h", "", true);
        addRow("ftp", "ftp://h", "", true);
        addRow("capital http", "HTTP://h", "http", false);
        addRow("one slash", "http:/h", "http", false);
        addRow("picture", "/a/b.png ", "", true);
        addRow("capital picture", "/a/b.PNG", "", false);
        addRow("other picture", "/a/b.jpeg", "", false);
        addRow("mail", " MailTo:a@b", "mailto", false);
        addRow("file", "File:/a", "", false);
        addRow("path", "/a:b", "", false);
        addRow("anchor", "a#b:c", "", false);
        addRow("drive letter", "c:/a", "", false);
    }

    void kinds()
    {
        QFETCH(const QString, name);
        QTEST(isRemoteName(name), "isRemote");
        QTEST(foreignScheme(name), "scheme");
    }

    void readPage_data()
    {
        addTexts("name");
        QTest::addColumn<QByteArray>("bytes");
        addTexts("expected");
        addRow("HTML by name", "a.HTM", "text"_ba, "html");
        addRow("HTML by content", "a.1", "\n<!DOCTYPE html>"_ba, "html");
        addRow("a tag in a text file", "a.txt", "<p>"_ba, "plain");
        addRow("text", "a.md", "a < b"_ba, "plain");
        addRow("source code", "a.cpp", "#include <vector>\nstd::vector<int> a;"_ba, "plain");
        addRow("text with a tag in front", "a.md", "<p align=center>Title</p>"_ba, "plain");
        addRow("usage", "README.1st", "copy <file> <b >"_ba, "plain");
        addRow("page of a server", "a.php", "<!-- saved -->\n<html lang=en>"_ba, "html");
        addRow("XHTML by content", "a.1", "<?xml version='1.0'?>\n<!DOCTYPE html>"_ba, "html");
        addRow("tag by content", "a.page", "<h1>Title</h1>"_ba, "html");
        addRow("empty", "a.html", QByteArray(), "empty");
        addRow("white space", "a.html", " \n\t"_ba, "empty");
        addRow("binary", "a.html", QByteArray("a\0b", 3), "not text");
        addRow("PDF", "a.html", "%PDF-1.7"_ba, "not text");
        addRow("UTF-16", "a.html", QByteArray::fromHex("fffe6100"), "html");
        addRow("missing", "no/a.html", QByteArray(), "missing");
        addRow("directory", "d", QByteArray(), "directory");
        addRow("pipe", "pipe", QByteArray(), "not regular");
        if (::geteuid() != 0) {
            addRow("no permission", "locked", QByteArray(), "unreadable");
        }
    }

    void readPage()
    {
        QFETCH(const QString, name);
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, expected);
        static const QHash<PageError, QString> errors{{PageError::Empty, u"empty"_s},
                                                      {PageError::NotText, u"not text"_s},
                                                      {PageError::NotFound, u"missing"_s},
                                                      {PageError::Directory, u"directory"_s},
                                                      {PageError::NotRegular, u"not regular"_s},
                                                      {PageError::Unreadable, u"unreadable"_s}};
        TemporaryFiles files("== d/x\n== locked\nx");
        QVERIFY(QFile::setPermissions(files.path(u"locked"_s), {}));
        QCOMPARE(::mkfifo(QFile::encodeName(files.path(u"pipe"_s)).constData(), 0600), 0);
        const auto page = ::readPage(name.contains(u'.') && expected != u"missing" ? files.write(name, bytes)
                                                                                   : files.path(name));
        QCOMPARE(page.ok() ? (page.value().isHtml ? u"html"_s : u"plain"_s) : errors.value(page.error()),
                 expected);
        QVERIFY(page.ok() || !describe(page.error()).isEmpty());
    }

    void builtinPage()
    {
        const BuiltinPage page{u"<T&>"_s,
                               u"<b>text</b> %1"_s,
                               {{u"<name>"_s, u"%2 \"/a/<i>\""_s}},
                               {{u"<u>%1"_s, u"<note>"_s}, {u"plain"_s, {}}}};
        const QString html = page.toHtml();
        for (const auto* raw : {u"<T&>", u"<b>text", u"<name>", u"<i>", u"<u>", u"<note>"}) {
            QVERIFY2(!html.contains(QStringView(raw)), qUtf8Printable(html));
        }
        for (const auto* part :
             {u"<title>&lt;T&amp;&gt;</title>", u"<p>&lt;b&gt;text&lt;/b&gt; %1</p>",
              u"%2 &quot;/a/&lt;i&gt;&quot;", u"<a href=\"item:0\">&lt;u&gt;%1</a> – &lt;note&gt;",
              u"<a href=\"item:1\">plain</a></li>"}) {
            QVERIFY2(html.contains(QStringView(part)), qUtf8Printable(html));
        }
    }

    void builtinPageWithManyLinks()
    {
        BuiltinPage page;
        page.links.assign(BuiltinPage::MaximumLinks, {u"x"_s, {}});
        QVERIFY(!page.toHtml().contains(u"2000"_s));
        page.links.push_back({u"y"_s, {}});
        const QString html = page.toHtml();
        QCOMPARE(html.count(u"<a "_s), qsizetype(BuiltinPage::MaximumLinks));
        QVERIFY(html.contains(u"2000"_s) && html.contains(u"2001"_s));
    }
};

QTEST_GUILESS_MAIN(PagesTest)
#include "tst_pages.moc"
