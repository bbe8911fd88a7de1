// SPDX-License-Identifier: MIT
#include "pages/pagepreparation.h"
#include "pages/plainpage.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

/// What of a page is there to be read, for the reader and for the search.
class TestMainContent : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void furniture_data();
    void furniture();
    void words_data();
    void words();
    void termsInTerms();
};

namespace {

void row(const char* name, const char* html, const char* text)
{
    QTest::newRow(name) << QString::fromUtf8(html) << QString::fromUtf8(text);
}

QStringList wordsOf(const QString& text)
{
    return text.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
}

QString web(const QString& body)
{
    return u"<!DOCTYPE html><html><head><style>.gone{display:none}.side{position:fixed}</style></head><body>"_s +
           body + u"</body></html>"_s;
}

QString prepared(const QString& body)
{
    return preparePage(web(body), {}, Presentation::Reading).text;
}

/// What helps to use a page in a browser, told by what it is.
void addBrowserAids()
{
    row("mark of a heading", "<h1>T <a href='#t'>\u00A7</a></h1><h2>C <a href='#c'>#</a></h2>a", "T C a");
    row("mark of a paragraph", "<h1>T</h1><p id=p>a <a href='#p'>¶</a>", "T a");
    row("drawn mark of a heading", "<h1>T</h1><h2>C<a href='#c'><img src=x alt=Link></a></h2>a", "T C a");
    row("logo", "<p><a href=x><img src=x alt=Logo></a></p><h1>T</h1>a", "T a");
    row("picture with a link", "<h1>T</h1><p><a href=x><img src=x alt=Map></a></p>a", "T Map a");
    row("heading that leads to itself", "<h1><a href='#t'>T</a></h1>a", "T a");
    row("one letter that leads on", "<h1>T</h1><p>a <a href='#n'>1</a> <a href='#x'>*</a>", "T a 1 *");
    row("sign that leads elsewhere", "<h1>T <a href='x.html#t'>#</a></h1>a", "T # a");
    row("numbers of lines",
        "<h1>T</h1><table><tr><td><pre>7\n8\n9</pre><td><div><pre>a\nb\nc</pre></div></table>", "T a b c");
    row("marked numbers of lines", "<h1>T</h1><div><pre><i>1</i>\n<i>2</i>\n<i>3</i></pre><pre>a</pre></div>",
        "T a");
    row("numbers that count nothing", "<h1>T</h1><div><pre>1\n2\n4</pre><pre>a</pre></div>", "T 1 2 4 a");
    row("numbers beside no code", "<h1>T</h1><table><tr><td>1 2 3<td>a</table>", "T 1 2 3 a");
    row("way to other pages",
        "<ul><li><a accesskey=p href=a>Prev</a><li>The Book<li><a accesskey=n href=b>Next</a></ul><h2>T</h2>a"
        "<div><a rel=prev href=a>A</a> <a rel=next href=b>B</a></div>",
        "T a");
    row("links with one way on",
        "<h1>T</h1><p>a<div><a href=x>x</a> <a href=y>y</a> <a rel=next href=z>z</a></div>", "T a x y z");
    row("nothing but ways on", "<div><a rel=prev href=a>A</a> <a rel=next href=b>B</a></div>", "A B");
}

/// What is hidden, and what is opened.
void addHiddenParts()
{
    row("fixed bar", "<h1>T</h1><div class=side><a href=a>Next page</a></div>a", "T a");
    row("alternatives", "<p><span><i hidden class=MAC>Cmd</i> <i hidden id=default1>Ctrl</i></span>+A",
        "Ctrl+A");
    row("alternative for this system",
        "<p><i hidden class=WIN>a</i><i hidden class=UNIX>b</i><i hidden>c</i>", "b");
    row("first alternative", "<p><i hidden class=WIN>a</i><i hidden class=MAC>b</i>", "a");
    row("alternatives beside words", "<p>x<i hidden class=WIN>a</i><i hidden class=MAC>b</i>", "x");
    row("hidden part", "<p>a<b hidden>b</b><b class=gone>c</b><b style='display: none'>d</b>", "a");
    row("tabs", "<div role=tabpanel hidden>a</div><div role=tabpanel hidden>b</div>", "a b");
    row("opened by a field", "<input type=checkbox><label>L</label><div class=gone>a</div>", "L a");
    row("closed dialog", "<dialog>a</dialog><dialog open>b</dialog>", "b");
    row("details", "<details><summary>S</summary>a</details>", "S a");
    row("without scripts",
        "<noscript><p>Please use scripts</p></noscript><p>This page is about something else.",
        "This page is about something else.");
    row("only without scripts", "<div id=app></div><noscript><h1>T</h1><p>a</p></noscript>", "T a");
    row("frame of a script",
        "<p>a<iframe src='javascript:void(0)' name=results></iframe>"
        "<iframe src=b.html title=B></iframe>",
        "a B");
}

} // namespace

void TestMainContent::furniture_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("text");
    row("site above the title",
        "<div><a href=i><b>S</b></a><div>Small. Fast.</div><ul><li><a href=a>About us</a><li><a href=b>News "
        "of "
        "today</a></ul></div><h1>T</h1><p>a",
        "T a");
    row("pictures above the title",
        "<div><a href=i><img src=logo alt=Logo></a>Small. Fast. <a href=a>About us</a></div><h1>T</h1>a",
        "T a");
    row("figure above the title", "<div><img src=figure alt=Figure><a href=a>Larger</a></div><h1>T</h1>a",
        "Figure Larger T a");
    row("name of a site",
        "<div><h1><a href=i>Site</a></h1><a href=a>Home</a> | <a href=b>Index</a></div><h1>T</h1>a", "T a");
    row("outline above the title",
        "<div><h3>Contents</h3><ul><li><a href=#a>First part</a><li><a href=#b>Second "
        "part</a></ul></div><h1>T</h1><h2 id=a>First part</h2>x",
        "T First part x");
    row("contents in the page", "<h1>T</h1><div><ul><li><a href=a>First part</a></ul></div><h2>U</h2>x",
        "T First part U x");
    row("words above the title",
        "<div>This page says what nobody has ever said, and nobody will say again in all "
        "times to come. <a href=a>More</a></div><h1>T</h1>x",
        "This page says what nobody has ever said, and nobody will say again in all times to come. More T x");
    row("page of links", "<div><a href=a>First</a> <a href=b>Second</a></div>", "First Second");
    row("header of the page",
        "<header><a href=a>Site</a><button>Menu</button></header><main><header><p>By "
        "me</header>a</main>",
        "By me a");
    row("header with the title", "<header><h1>T</h1><a href=a>Site</a></header><p>a", "T Site a");
    row("aside of the page",
        "<aside><label>Contents</label><div></div></aside><h1>T</h1><aside>By the way, this is "
        "longer than a label.</aside>",
        "T By the way, this is longer than a label.");
    row("search", "<h1>T</h1><form>Search <input type=search><input type=submit value=Go></form><p>a", "T a");
    row("choice",
        "<h1>T</h1><form><select><option>in this manual<option>in all manuals of the world</select>"
        "<input name=q></form><p>a",
        "T a");
    row("form that is read",
        "<h1>T</h1><form><p>Fill in what you know of yourself and of all others, please.</p>"
        "<input value=x></form>",
        "T Fill in what you know of yourself and of all others, please. x");
    addBrowserAids();
    addHiddenParts();
}

void TestMainContent::furniture()
{
    QFETCH(QString, html);
    QTEST(wordsOf(prepared(html)).join(u' '), "text");
}

void TestMainContent::words_data()
{
    furniture_data();
    row("marked", "<p>half<mark>word</mark>s", "");
    row("inline", "<p>a<b>b</b>c<abbr>d</abbr><span>e</span><time>f</time><bdi>g</bdi><data>h</data><u>i</u>",
        "");
    row("code", "<p>a<code>b</code>c<kbd>d</kbd><samp>e</samp><var>f</var><tt>g</tt>h<q>i</q>", "");
    row("places to break", "<p>a<wbr>b&shy;c&#8203;d", "");
    row("unknown", "<p>a<x-y>b</x-y>c<font>d</font><nobr>e</nobr><ruby>f<rt>g</ruby>", "");
    row("blocks", "<div>a</div>b<section>c</section>d<article>e</article><p>f<address>g</address>h", "");
    row("lists", "<ul><li>a<li>b</ul>c<ol><li>d</ol><dl><dt>e<dd>f</dl>g<menu><li>h</menu>", "");
    row("tables", "x<table><caption>a</caption><tr><th>b<td>c<tr><td>d</table>e", "");
    row("lines", "<p>a<br>b<hr>c<pre>d\ne  f</pre>g", "");
    row("figures", "<figure>a<figcaption>b</figcaption></figure>c<img alt=d src=none>e", "");
    row("fields",
        "<p>a<input value=b>c<select><option>d<option>e</select>f<textarea>g</textarea>h<button>i</button>",
        "");
    row("formula", "<p>a<math><mi>b</mi><mo>+</mo><mfrac><mn>1</mn><mn>2</mn></mfrac></math>c", "");
    row("drawing", "<p>a<svg><text>b</text><text>c</text></svg>d", "");
    row("links", "<p>a<a href=x>b</a>c<a name=y>d</a>e", "");
    row("details", "<details><summary>a<b>b</b></summary>c</details>d", "");
    row("media", "<video>a<source src=x>b</video>c<audio>d</audio>e<canvas>f</canvas>g<object>h</object>i",
        "");
}

/// The words that the search finds are those that the page shows: what divides words is the same for both.
void TestMainContent::words()
{
    QFETCH(QString, html);
    const auto plain = readPlainPage(web(html), {});
    const auto letters = [](QString text) {
        return text.replace(u'/', u' ').remove(QRegularExpression(u"[^\\w\\s+]"_s));
    };
    QCOMPARE(wordsOf(letters(QString::fromStdString(plain.text))), wordsOf(letters(prepared(html))));
}

/// What stands in many terms, one in another, is written once; sections have the order of the page.
void TestMainContent::termsInTerms()
{
    const QString html = web(u"<dl><dt id=x>a "_s.repeated(3000));
    const auto plain = readPlainPage(html, {}, PlainParts::TextAndSections);
    QVERIFY(plain.headings.size() <= plain.text.size() + 1);
    QCOMPARE(plain.sections.size(), 3000U);
    QVERIFY(std::is_sorted(plain.sections.begin(), plain.sections.end(),
                           [](const auto& a, const auto& b) { return a.begin < b.begin; }));
}

QTEST_GUILESS_MAIN(TestMainContent)
#include "tst_maincontent.moc"
