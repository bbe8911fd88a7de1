// SPDX-License-Identifier: MIT
#include "browser/documenttext.h"
#include "browser/textgrid.h"
#include "pages/pagepreparation.h"

#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>

using namespace Qt::StringLiterals;

/// Pages as plain text.
class TestDocumentText : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void words_data();
    void words();
    void grid_data();
    void grid();
    void deepTables();
};

namespace {

void row(const char* name, const char* html, const char* text)
{
    QTest::newRow(name) << QString::fromUtf8(html) << QString::fromUtf8(text);
}

struct Shown {
    PreparedPage page;
    QTextDocument document;

    explicit Shown(const QString& body)
        : page(
              preparePage(u"<html><head><style>p{}</style></head><body>"_s + body, {}, Presentation::Reading))
    {
        document.setHtml(page.html);
    }
};

/// The words, without what is drawn around them.
QStringList wordsOf(const QString& text)
{
    QStringList words = text.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
    words.removeIf([](const QString& word) {
        static const QRegularExpression drawn(u"^(•|=+|-{2,}|─+|\\w+\\.|\\[\\d+\\])$"_s);
        return drawn.match(word).hasMatch();
    });
    return words;
}

} // namespace

/// Of 30 columns.
void TestDocumentText::texts_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("text");
    row("lines", "<p>The quick brown fox jumps over the lazy dog.",
        "The quick brown fox jumps over|the lazy dog.");
    row("long word", "<p>a abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz b",
        "a|abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz|b");
    row("headings", "<h1>One</h1><p>a</p><h2>Two</h2><p>b", "One|===||a||Two|---||b");
    row("lists", "<ul><li>a<li>b<ul><li>c</ul></ul><ol><li>d<li>e</ol>", "• a|• b|  • c|1. d|2. e");
    row("item of several lines", "<ul><li>The quick brown fox jumps over</ul>",
        "• The quick brown fox jumps|  over");
    row("line end", "<p>a<br>b", "a|b");
    row("code", "<pre>int  a;\n  b;\n</pre>", "  int  a;|    b;");
    row("columns", "<table><tr><td>a<td>bcd<tr><td>The quick brown fox<td>e</table>",
        "a                    bcd|The quick brown fox  e");
    row("narrow columns", "<table><tr><td>one two three four five six<td>a b c d e f g h i j k l m</table>",
        "one two three   a b c d e f g|four five six   h i j k l m");
    row("wide cell", "<table><tr><td colspan=2>abcdef<td>x<tr><td>a<td>b<td>c</table>",
        "abcdef  x|a  b    c");
    row("tall cell", "<table><tr><td rowspan=2>a<td>b<tr><td>c</table>", "a  b|   c");
    row("commands for terminals", "<p>a&#27;[31m\u009b", "a?[31m?");
    row("ideographs", "<p>漢字漢字漢字漢字漢字漢字漢字漢字", "漢字漢字漢字漢字漢字漢字漢字漢|字");
}

void TestDocumentText::texts()
{
    QFETCH(QString, html);
    Shown shown(html);
    QTEST(DocumentText(nullptr).write(shown.document, 30).chopped(1).replace(u'\n', u'|'), "text");
}

void TestDocumentText::words_data()
{
    texts_data();
    row("links", "<p>a <a href=x>b c</a> <a href='y z'>d</a>, <a href=x>e</a>",
        "a b c[1] d[2], e[1]||[1] x|[2] y z");
    row("links in a table", "<table><tr><td colspan=2><a href=x>a</a><tr><td><a href=y>b</a><td>c</table>",
        "a[1]|b[2]  c||[1] x|[2] y");
    row("boxes", "<div class=note><p class=title>N</p><p>a<pre>b</pre></div><blockquote>c</blockquote>", "");
    row("tables in tables", "<table><tr><td>a<table><tr><td>b<td>c</table><td>d</table>e", "");
    row("terms", "<dl><dt>a<dd>b<dt>c<dd><p>d<p>e</dl>f<hr>g", "");
    row("marks", "<p>half<mark>word</mark>s and <b>bo</b>ld", "");
}

/// However narrow, no word of the view is lost and none is added, and what has no columns keeps their order.
void TestDocumentText::words()
{
    QFETCH(QString, html);
    Shown shown(html);
    QString seen;
    for (auto block = shown.document.begin(); block.isValid(); block = block.next()) {
        seen += block.text()
                    .remove(QChar::ObjectReplacementCharacter)
                    .replace(QChar::LineSeparator, u' ')
                    .replace(QChar(27), u'?')
                    .replace(QChar(0x9b), u'?') +
                u'\n';
    }
    const QStringList expected = wordsOf(seen);
    if (!html.contains(u"<table"_s)) {
        QCOMPARE(wordsOf(DocumentText(nullptr).write(shown.document, 1000)), expected);
    }
    const auto sorted = [](QStringList words) {
        words.sort();
        return words;
    };
    const int width = html.contains(u"\u6f22"_s) ? 1000 : 20; // of ideographs, a line is a word here
    QCOMPARE(sorted(wordsOf(DocumentText(nullptr).write(shown.document, width))), sorted(expected));
    if (html.contains(u"href"_s)) {
        QTEST(DocumentText(&shown.page.links).write(shown.document, 1000).chopped(1).replace(u'\n', u'|'),
              "text");
    }
}

void TestDocumentText::grid_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::newRow("letters") << u"abc"_s << 3;
    QTest::newRow("wide letters") << u"a漢字"_s << 5;
    QTest::newRow("marks above letters") << u"e\u0301"_s << 1;
    QTest::newRow("pictures") << u"\U0001F600"_s << 2;
    QTest::newRow("nothing to see") << u"a\u200bb\u00adc"_s << 3;
}

void TestDocumentText::grid()
{
    QFETCH(QString, text);
    QTEST(TextGrid::columns(text), "columns");
}

/// Each table is measured once, not once for each table around it.
void TestDocumentText::deepTables()
{
    QString html = u"x"_s;
    for (int depth = 0; depth < 24; ++depth) {
        html = u"<table><tr><td>a</td><td>"_s + html + u"</td></tr></table>"_s;
    }
    QTextDocument document;
    document.setHtml(html);
    QCOMPARE(DocumentText(nullptr).write(document, 1000).count(u'a'), 24);
}

QTEST_MAIN(TestDocumentText)
#include "tst_documenttext.moc"
