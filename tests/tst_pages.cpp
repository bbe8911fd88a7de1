// SPDX-License-Identifier: MIT
#include "pages/builtinpage.h"
#include "pages/links.h"
#include "pages/pagedecoding.h"
#include "pages/pagefile.h"

#include "testfiles.h"

#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class PagesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void decodePage_data();
    void decodePage();
    void locatePage_data();
    void locatePage();
    void resolveLink_data();
    void resolveLink();
    void resolveOtherLinks_data();
    void resolveOtherLinks();
    void remoteNames_data();
    void remoteNames();
    void foreignSchemes_data();
    void foreignSchemes();
    void readPage_data();
    void readPage();
    void unreadablePage();
    void builtinPage();
    void builtinPageWithManyLinks();
};

void PagesTest::decodePage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected"); // the end of the text
    const QByteArray far = "<!--" + QByteArray(3000, ' ') + "--><meta charset=\"windows-1251\">\xCF\xF0";
    QTest::newRow("none declared, UTF-8") << QByteArray("<p>\xC3\xA9") << u"<p>\u00E9"_s;
    QTest::newRow("none declared, Latin-1") << QByteArray("<p>\xE9") << u"<p>\u00E9"_s;
    QTest::newRow("UTF-8 declared falsely") << QByteArray("<META CharSet=UTF-8>\xE9") << u">\u00E9"_s;
    QTest::newRow("short form") << QByteArray("<meta charset='windows-1251'>\xCF\xF0") << u">\u041F\u0440"_s;
    QTest::newRow("long form")
        << QByteArray("<meta http-equiv=\"Content-Type\"\n content=\"text/html; charset=KOI8-R\">\xD0")
        << u">\u043F"_s;
    QTest::newRow("far behind") << far << u">\u041F\u0440"_s;
    QTest::newRow("XML") << QByteArray("<?xml version='1.0' encoding=\"ISO-8859-2\"?>\xB1") << u">\u0105"_s;
    QTest::newRow("unknown charset") << QByteArray("<meta charset=x-no>\xC3\xA9") << u">\u00E9"_s;
    QTest::newRow("UTF-16 declared in bytes") << QByteArray("<meta charset=utf-16>\xC3\xA9") << u">\u00E9"_s;
    QTest::newRow("mark before declaration") << QByteArray("\xEF\xBB\xBF<meta charset=windows-1251>\xC3\xA9")
                                             << u"<meta charset=windows-1251>\u00E9"_s;
    QTest::newRow("UTF-16 mark") << QByteArray::fromHex("feff003c041f") << u"<\u041F"_s;
}

void PagesTest::decodePage()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, expected);
    const QString text = ::decodePage(bytes);
    QCOMPARE(text.right(expected.size()), expected);
    QVERIFY(text.startsWith(u'<'));
}

void PagesTest::locatePage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("whole page") << u"a.html"_s << u"a.html"_s;
    QTest::newRow("anchor") << u"a.html#x"_s << u"a.html x"_s;
    QTest::newRow("anchor with number sign") << u"a.html#x#y"_s << u"a.html x#y"_s;
    QTest::newRow("number sign in the name") << u"c#.html"_s << u"c#.html"_s;
    QTest::newRow("and an anchor") << u"c#.html#x"_s << u"c#.html x"_s;
    QTest::newRow("number sign in a directory") << u"d#/a.html#x"_s << u"d#/a.html x"_s;
    QTest::newRow("directory with index") << u"sub"_s << u"sub/index.html"_s;
    QTest::newRow("ending with a separator") << u"sub/"_s << u"sub/index.html"_s;
    QTest::newRow("directory and anchor") << u"sub#x"_s << u"sub/index.html x"_s;
    QTest::newRow("directory without index") << u"d#"_s << u"d#"_s;
    QTest::newRow("no such file") << u"no.html#x#y"_s << u"no.html x#y"_s;
    QTest::newRow("no such file below a number sign") << u"d#/no.html#x/y"_s << u"d#/no.html x/y"_s;
    QTest::newRow("nor such a directory") << u"no/a.html#x/y"_s << u"no/a.html x/y"_s;
}

void PagesTest::locatePage()
{
    QFETCH(const QString, name);
    QFETCH(const QString, expected);
    const TemporaryFiles files("== a.html\n== c#.html\n== d#/a.html\n== sub/index.html\n");
    const auto found = ::locatePage(files.path(name));
    const QString text = found.anchor.isEmpty() ? found.file : found.file + u' ' + found.anchor;
    QCOMPARE(files.shortened(text), u"D/"_s + expected);
}

void PagesTest::resolveLink_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<QString>("expected");
    QTest::newRow("neighbour") << u"b.html"_s << u"D/s/b.html"_s;
    QTest::newRow("dot steps") << u".././x//../b.html#a"_s << u"D/b.html#a"_s;
    QTest::newRow("blanks around it") << u"\n b.html\t"_s << u"D/s/b.html"_s;
    QTest::newRow("percent escapes") << u"a%20b%C3%A9.html#x%20y"_s << u"D/s/a b\u00E9.html#x y"_s;
    QTest::newRow("a file with a percent sign") << u"p%20q.html"_s << u"D/s/p%20q.html"_s;
    QTest::newRow("escaped number sign") << u"c%23.html#x"_s << u"D/s/c#.html#x"_s;
    QTest::newRow("query") << u"b.html?v=1#x"_s << u"D/s/b.html#x"_s;
    QTest::newRow("a file with a question mark") << u"q.html?v=1#x"_s << u"D/s/q.html?v=1#x"_s;
    QTest::newRow("place in the page") << u" #x"_s << u"D/s/page.html#x"_s;
    QTest::newRow("the page") << u""_s << u"D/s/page.html"_s;
    QTest::newRow("a file that looks like a scheme") << u"std::list.html#x"_s << u"D/s/std::list.html#x"_s;
}

void PagesTest::resolveLink()
{
    QFETCH(const QString, href);
    QFETCH(const QString, expected);
    const TemporaryFiles files(
        "== s/page.html\n== s/p%20q.html\n== s/p q.html.x\n== s/q.html?v=1\n== s/q.html\n"
        "== s/std::list.html\n== s/b.html\n");
    QCOMPARE(files.shortened(::resolveLink(files.first(), href)), expected);
}

void PagesTest::resolveOtherLinks_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<QString>("expected");
    QTest::newRow("mail") << u"mailto:a@b.c?subject=x%20y"_s << u"mailto:a@b.c?subject=x%20y"_s;
    QTest::newRow("script") << u"javascript:go('a.html')"_s << u"javascript:go('a.html')"_s;
    QTest::newRow("web") << u"http://h/a%20b?c#d"_s << u"http://h/a%20b?c#d"_s;
    QTest::newRow("web in capitals") << u"HTTP://h/a"_s << u"HTTP://h/a"_s;
    QTest::newRow("scheme of the page") << u"//h/a"_s << u"https://h/a"_s;
    QTest::newRow("absolute") << u"/x/../y/a%20b"_s << u"/y/a b"_s;
    QTest::newRow("file") << u"file:///x/./a%20b.html#c%20d"_s << u"/x/a b.html#c d"_s;
    QTest::newRow("file in capitals, no slashes") << u"FILE:/x/a"_s << u"/x/a"_s;
    QTest::newRow("file of another host") << u"file://h/a"_s << u"file://h/a"_s;
}

void PagesTest::resolveOtherLinks()
{
    QFETCH(const QString, href);
    QTEST(::resolveLink(u"/nowhere/page.html"_s, href), "expected");
}

void PagesTest::remoteNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");
    QTest::newRow("http") << u" http://h"_s << true;
    QTest::newRow("https") << u"https://h"_s << true;
    QTest::newRow("ftp") << u"ftp://h"_s << true;
    QTest::newRow("capitals") << u"HTTP://h"_s << false;
    QTest::newRow("one slash") << u"http:/h"_s << false;
    QTest::newRow("picture") << u"/a/b.png "_s << true;
    QTest::newRow("picture in capitals") << u"/a/b.PNG"_s << false;
    QTest::newRow("other picture") << u"/a/b.jpeg"_s << false;
    QTest::newRow("mail") << u"mailto:a@b"_s << false;
}

void PagesTest::remoteNames()
{
    QFETCH(const QString, name);
    QTEST(isRemoteName(name), "expected");
}

void PagesTest::foreignSchemes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("mail") << u" MailTo:a@b"_s << u"mailto"_s;
    QTest::newRow("capital web") << u"HTTP://h"_s << u"http"_s;
    QTest::newRow("web") << u"http://h"_s << u""_s;
    QTest::newRow("file") << u"File:/a"_s << u""_s;
    QTest::newRow("path") << u"/a:b"_s << u""_s;
    QTest::newRow("anchor") << u"a#b:c"_s << u""_s;
    QTest::newRow("drive letter") << u"c:/a"_s << u""_s;
}

void PagesTest::foreignSchemes()
{
    QFETCH(const QString, name);
    QTEST(foreignScheme(name), "expected");
}

void PagesTest::readPage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("HTML by name") << u"a.HTM"_s << QByteArray("text") << u"html"_s;
    QTest::newRow("HTML by content") << u"a"_s << QByteArray("\n<!DOCTYPE html>") << u"html"_s;
    QTest::newRow("a tag in a text file") << u"a.txt"_s << QByteArray("<p>") << u"plain"_s;
    QTest::newRow("text") << u"README"_s << QByteArray("a < b") << u"plain"_s;
    QTest::newRow("empty") << u"a.html"_s << QByteArray() << u"empty"_s;
    QTest::newRow("white space") << u"a.html"_s << QByteArray(" \n\t") << u"empty"_s;
    QTest::newRow("binary") << u"a.html"_s << QByteArray("a\0b", 3) << u"not text"_s;
    QTest::newRow("PDF") << u"a.html"_s << QByteArray("%PDF-1.7") << u"not text"_s;
    QTest::newRow("UTF-16") << u"a.html"_s << QByteArray::fromHex("fffe6100") << u"html"_s;
    QTest::newRow("missing") << u"no/a.html"_s << QByteArray() << u"missing"_s;
    QTest::newRow("directory") << u"d"_s << QByteArray() << u"directory"_s;
    QTest::newRow("pipe") << u"pipe"_s << QByteArray() << u"not regular"_s;
}

void PagesTest::readPage()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, expected);
    static const QHash<PageError, QString> errors{{PageError::Empty, u"empty"_s},
                                                  {PageError::NotText, u"not text"_s},
                                                  {PageError::NotFound, u"missing"_s},
                                                  {PageError::Directory, u"directory"_s},
                                                  {PageError::NotRegular, u"not regular"_s}};
    TemporaryFiles files("== d/x\n");
    QCOMPARE(::mkfifo(QFile::encodeName(files.path(u"pipe"_s)).constData(), 0600), 0);
    const bool isFile =
        expected == u"html" || expected == u"plain" || !bytes.isEmpty() || expected == u"empty";
    const auto page = ::readPage(isFile ? files.write(name, bytes) : files.path(name));
    QCOMPARE(page.ok() ? (page.value().isHtml ? u"html"_s : u"plain"_s) : errors.value(page.error()),
             expected);
    QVERIFY(page.ok() || !describe(page.error()).isEmpty());
}

void PagesTest::unreadablePage()
{
    if (::geteuid() == 0) {
        QSKIP("root may read every file");
    }
    const TemporaryFiles files("== a.html\nx");
    QVERIFY(QFile::setPermissions(files.first(), {}));
    QVERIFY(::readPage(files.first()).error() == PageError::Unreadable);
}

void PagesTest::builtinPage()
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

void PagesTest::builtinPageWithManyLinks()
{
    BuiltinPage page;
    page.links.assign(BuiltinPage::MaximumLinks, {u"x"_s, {}});
    QCOMPARE(page.toHtml().count(u"<a "_s), qsizetype(BuiltinPage::MaximumLinks));
    QVERIFY(!page.toHtml().contains(u"2000"_s));
    page.links.push_back({u"y"_s, {}});
    QCOMPARE(page.toHtml().count(u"<a "_s), qsizetype(BuiltinPage::MaximumLinks));
    QVERIFY(page.toHtml().contains(u"2000"_s) && page.toHtml().contains(u"2001"_s));
}

QTEST_GUILESS_MAIN(PagesTest)
#include "tst_pages.moc"
