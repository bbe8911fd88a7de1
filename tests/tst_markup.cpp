// SPDX-License-Identifier: MIT
#include "markup/htmltree.h"
#include "markup/tags.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The tree that is made of a page, as HTML 5 reads it.
class TestMarkup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void trees_data();
    void trees();
    void pages_data();
    void pages();
    void hostile_data();
    void hostile();
};

namespace {

void row(const char* name, const char* html, const char* tree)
{
    QTest::newRow(name) << QString::fromUtf8(html) << QString::fromUtf8(tree);
}

/// An element as "name[attributes](content)", texts one after another.
QString described(const HtmlNode& top)
{
    QString text;
    walk(
        top,
        [&text](const HtmlNode& node) {
            if (isText(node)) {
                text += toQString(node.content).replace(u'\n', u'~');
                return false;
            }
            text += toQString(node.name);
            for (const auto* found = node.attributes; found != nullptr; found = found->next) {
                text += u'[' + toQString(found->name) + u'=' + toQString(found->value) + u']';
            }
            text += u'(';
            return true;
        },
        [&text](const HtmlNode&) { text += u')'; });
    return text;
}

QString bodyOf(const HtmlTree& tree)
{
    const auto* body = tree.first("body");
    QString text = body == nullptr ? QString() : described(*body);
    return text.isEmpty() ? text : text.mid(5).chopped(1);
}

QByteArray many(const char* text, int count = 100'000)
{
    return QByteArray(text).repeated(count);
}

} // namespace

/// Bodies.
void TestMarkup::trees_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("tree");
    row("void", "core::<wbr>mem<br>a<img src=x>b<hr>c<embed>d",
        "core::wbr()membr()aimg[src=x]()bhr()cembed()d");
    row("void of media", "<video><source src=a><track>x</video>", "video(source[src=a]()track()x)");
    row("end of a void", "a</br>b</wbr>c", "abr()bc");
    row("unknown", "<x-tab A=1>a<my:el>b</my:el></x-tab>c", "x-tab[a=1](amy:el(b))c");
    row("no end of its own", "<div/>a<x-a/>b", "div(ax-a(b))");
    row("paragraphs", "<p>a<p>b<div>c</div>d</p>e<ul><p>f<li>g</ul>", "p(a)p(b)div(c)dp()eul(p(f)li(g))");
    row("items", "<ul><li>a<li><b>b<ul><li>c</ul><li>d</ul>", "ul(li(a)li(b(bul(li(c))))li(b(d)))");
    row("terms", "<dl><dt>a<dd>b<p>c<dt>d</dl>e", "dl(dt(a)dd(bp(c))dt(d))e");
    row("headings", "<h1>a<h2>b</h3>c", "h1(a)h2(b)c");
    row("options", "<select><option>a<option>b<optgroup label=x><option>c</select>d<b>",
        "select(option(a)option(b)optgroup[label=x](option(c)))db()");
    row("cells", "<table><tr><td>a<td>b<tr><th>c</table>", "table(tbody(tr(td(a)td(b))tr(th(c))))");
    row("columns", "<table><caption>a<col><thead><tr><th>b<tbody><tr><td>c</table>",
        "table(caption(a)colgroup(col())thead(tr(th(b)))tbody(tr(td(c))))");
    row("table in a cell", "<table><td><table><td>a</table>b</table>c",
        "table(tbody(tr(td(table(tbody(tr(td(a))))b))))c");
    row("text in a table", "<table>a<tr>b<td>c</td>d</table>", "abdtable(tbody(tr(td(c))))");
    row("element in a table", "<table><p>a<tr><td>b</table>c", "p(a)table(tbody(tr(td(b))))c");
    row("table in a paragraph", "<p>a<table><td>b</table>c", "p(a)table(tbody(tr(td(b))))c");
    row("misnested", "<b>a<i>b</b>c</i>d", "b(ai(b))i(c)d");
    row("misnested over a block", "<b>a<p>b</b>c", "b(a)p(b(b)c)");
    row("formats go on", "<p><b>a<p>b</b>c", "p(b(a))p(b(b)c)");
    row("formats end with a cell", "<table><td><b>a<td>b</table>c", "table(tbody(tr(td(b(a))td(b))))c");
    row("link in a link", "<a href=1>a<a href=2>b</a>c", "a[href=1](a)a[href=2](b)c");
    row("end of nothing", "a</div></p>b</span>c", "ap()bc");
    row("end behind others", "<div><span>a</div>b", "div(span(a))b");
    row("form in a form", "<form>a<form>b</form>c</form>d", "form(ab)cd");
    row("button in a button", "<button>a<button>b", "button(a)button(b)");
    row("ruby", "<ruby>a<rt>b<rp>c</ruby>d", "ruby(art(b)rp(c))d");
    row("template", "a<template><tr><td>b</template>c", "atemplate(tr(td(b)))c");
    row("without scripts", "<noscript><b>a</b></noscript>b", "noscript(b(a))b");
    row("drawing", "<svg viewBox=x><path/><a><text>t</text></a><title><b>c</b></title></svg>d",
        "svg[viewbox=x](path()a(text(t))title(b(c)))d");
    row("end of a drawing", "<svg><g>a<p>b", "svg(g(a))p(b)");
    row("formula", "<math><mi>x<b>y</b></mi><mo/>z</math>a", "math(mi(xb(y))mo()z)a");
    row("page in a formula", "<math><annotation-xml encoding=text/HTML><p>a</p></annotation-xml></math>b",
        "math(annotation-xml[encoding=text/HTML](p(a)))b");
    row("section", "<![CDATA[a]]><svg><text><![CDATA[<b>]]></text></svg>", "svg(text(<b>))");
    row("line ends", "<pre>\n\na</pre><textarea>\nb</textarea>", "pre(~a)textarea(b)");
    row("kinds of line ends", "<pre>a\r\nb\rc</pre>", "pre(a~b~c)");
    row("texts of their own", "<xmp><b>&amp;</xmp><textarea><b>&amp;</textarea><iframe><p></iframe>",
        "xmp(<b>&amp;)textarea(<b>&)iframe(<p>)");
    row("plain", "<plaintext>a</plaintext><b>", "plaintext(a</plaintext><b>)");
    row("script", "<script>a<!-- <script></script> --></b></script>c",
        "script(a<!-- <script></script> --></b>)c");
    row("script in a comment", "<script><!-- a </script>b", "script(<!-- a )b");
    row("comments", "a<!-->b<!--->c<!-- > -- -->d<!-- --!>e<!x>f<?y?>g</ z>h<!---->i", "abcdefghi");
    row("unfinished comment", "a<!-- b", "a");
    row("unfinished tag", "a<b class='x", "a");
    row("no tags", "a < b <3 <> </> & &x; c<", "a < b <3 <>  & &x; c<");
    row("attributes", R"(<p A=1 a=2 b='x"y' c=d/e f g= h ="&lt;&ltx&amp" "i"=j>)",
        R"(p[a=1][b=x"y][c=d/e][f=][g=h][="&lt;&ltx&amp"=]["i"=j]())");
    row("references", "&lt&gt;&eacute;&notit;&notin;&NotEqualTilde;&#65;&#x41;&#x80;&#0;&bogus;&copy2",
        "<>é¬it;∉≂̸AA€\uFFFD&bogus;©2");
    row("references in attributes", "<a href='?a=b&copy=c&lt;&copy;&copy'>x", "a[href=?a=b&copy=c<©©](x)");
}

void TestMarkup::trees()
{
    QFETCH(QString, html);
    QTEST(bodyOf(HtmlTree(u"<!DOCTYPE html><body>"_s + html)), "tree");
}

/// Whole pages.
void TestMarkup::pages_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("tree");
    row("blank", " \n", "");
    row("text", " a\n", "html(head()body(a~))");
    row("head by what is in it", "<title>a&amp;<b></title><meta charset=x>b",
        "html(head(title(a&<b>)meta[charset=x]())body(b))");
    row("head that ends early", "<head><p>a</head><link rel=x>", "html(head()body(p(alink[rel=x]())))");
    row("head without scripts", "<head><noscript><link rel=x></noscript><title>a</title>",
        "html(head(noscript(link[rel=x]())title(a))body())");
    row("text without scripts in the head", "<head><noscript>a</noscript><title>b</title>",
        "html(head(noscript())body(atitle(b)))");
    row("behind the end", "<html lang=x><body id=y>a</body></html>b<html lang=z class=c><body id=w class=d>",
        "html[class=c][lang=x](head()body[class=d][id=y](ab))");
    row("frames", "<frameset cols=1><frame src=a><noframes><p>b</noframes></frameset>c",
        "html(head()frameset[cols=1](frame[src=a]()noframes(<p>b)))");
    row("frames behind text", "a<frameset><frame src=b>", "html(head()body(a))");
    row("template in the head", "<head><template><p>a</template><title>b</title>",
        "html(head(template(p(a))title(b))body())");
}

void TestMarkup::pages()
{
    QFETCH(QString, html);
    const HtmlTree tree(html);
    QTEST(tree.root() == nullptr ? QString() : described(*tree.root()), "tree");
}

/// Pages that let readers take forever, or memory without end.
void TestMarkup::hostile_data()
{
    QTest::addColumn<QByteArray>("html");
    QTest::newRow("deep") << many("<div>") + "x";
    QTest::newRow("deep paragraphs") << "<p><svg><desc>" + many("<div><p>") + "x";
    QTest::newRow("deep formats") << many("<b><i a=1><u>") + "x";
    QTest::newRow("formats that go on")
        << many("<font a=1><font b=2><font c=3><font d=4>", 20) + many("<p>y") + "x";
    QTest::newRow("different formats") << []() -> QByteArray {
        QByteArray html;
        for (int i = 0; i < 100'000; ++i) {
            html += "<font a=" + QByteArray::number(i) + "><p>";
        }
        return html + 'x';
    }();
    QTest::newRow("misnested") << many("<b><p></b>") + "x";
    QTest::newRow("misnested tables") << many("<table><b><td></b>", 20'000) + "x";
    QTest::newRow("links") << many("<a><div>") + "x";
    QTest::newRow("ends") << many("<div>", 1000) + many("</p></b></h1></span>") + "x";
    QTest::newRow("attributes") << []() -> QByteArray {
        QByteArray html = "<p";
        for (int i = 0; i < 100'000; ++i) {
            html += " a" + QByteArray::number(i);
        }
        return html + ">x";
    }();
    QTest::newRow("drawings") << many("<svg><desc>") + "x";
    QTest::newRow("templates") << many("<template>") + "</template>x";
    QTest::newRow("selects") << many("<table><tr><select>") + "x";
    QTest::newRow("unfinished") << many("<!--<script>&amp") + "--" + many("x>");
    QTest::newRow("less than") << many("< ") + "x";
}

/// The text stays, and is in what was made.
void TestMarkup::hostile()
{
    QFETCH(QByteArray, html);
    const HtmlTree tree(QString::fromLatin1(html));
    QVERIFY(tree.root() != nullptr);
    bool isFound = false;
    size_t nodes = 0;
    for (const HtmlNode* node = tree.root(); node != nullptr; node = nextNode(node, tree.root())) {
        isFound = isFound || node->content.find('x') != std::string_view::npos;
        ++nodes;
    }
    QCOMPARE(isFound, !html.startsWith("<!--"));
    QVERIFY(nodes < 2'500'000);
}

QTEST_GUILESS_MAIN(TestMarkup)
#include "tst_markup.moc"
