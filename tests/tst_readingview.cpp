// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"
#include "browser/pagestyle.h"
#include "browser/selectedtext.h"
#include "library/helplibrary.h"
#include "pages/linkcode.h"
#include "testfiles.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QImage>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

/// A page with all that the reading view gives a look of its own.
const char* const AllLooks = R"(<html><head><style>x{}</style></head><body><h1 id="t">Title</h1>
<p>Text with <code>code</code>, <a href="a.html"><code>linked code</code></a>, <kbd>Ctrl</kbd>,
<a href="b.html">a link</a> and <img src="none.png" alt="no picture">.</p>
<pre><span class="k">if</span> <span class="s">'a'</span> <span class="c1"># why</span> b</pre>
<div class="note"><p class="title">Note</p><p><a href="c.html">n</a></p></div>
<div class="tip"><p class="title">Tip</p><p><a href="c.html">t</a></p></div>
<div class="warning"><p class="title">Warning</p><p><a href="c.html">w</a></p></div>
<div class="danger"><p class="title">Danger</p><p><a href="c.html">d</a></p></div>
<blockquote><p>Quotation</p></blockquote><h6>Small</h6>
<table><caption>Caption</caption><tr><th><a href="d">Head</a></th><th>Two</th></tr><tr><td>first</td><td>b</td></tr></table>
<dl><dt class="sig"><b class="sig-name">f</b>(<a href="e">x</a>)</dt><dd>Does.</dd></dl></body></html>)";

struct Fixture {
    explicit Fixture(const QByteArray& text) : files(text), browser(library, nullptr)
    {
        browser.resize(500, 400);
        browser.show();
    }
    void show(const char* name) { browser.setSource(files.path(QLatin1StringView(name))); }
    void setDark()
    {
        QPalette dark(QColor(0x30, 0x30, 0x30));
        dark.setColor(QPalette::Base, QColor(0x20, 0x22, 0x24));
        dark.setColor(QPalette::Text, QColor(0xee, 0xee, 0xee));
        dark.setColor(QPalette::Link, QColor(0x00, 0x00, 0xff));
        browser.setPalette(dark);
    }

    TemporaryFiles files;
    HelpLibrary library;
    HelpBrowser browser;
};

QColor groundOf(const QTextFormat& format, const QColor& behind)
{
    return format.hasProperty(QTextFormat::BackgroundBrush) ? format.background().color() : behind;
}

/// The texts whose contrast is too small, with their colours.
QStringList unreadable(const HelpBrowser& browser)
{
    QStringList found;
    const QPalette& palette = browser.palette();
    for (auto block = browser.document()->begin(); block.isValid(); block = block.next()) {
        QColor behind = palette.color(QPalette::Base);
        if (const auto* table = QTextCursor(block).currentTable()) {
            behind = groundOf(table->cellAt(block.position()).format(), behind);
        }
        behind = groundOf(block.blockFormat(), behind);
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const auto format = it.fragment().charFormat();
            const QColor ground = groundOf(format, behind);
            const QColor ink = format.hasProperty(QTextFormat::ForegroundBrush)
                                   ? format.foreground().color()
                                   : palette.color(QPalette::Text);
            if (contrast(ink, ground) < LeastContrast) {
                found += it.fragment().text() + u' ' + ink.name() + u" on " + ground.name();
            }
        }
    }
    return found;
}

/// The paragraphs of a document with all that decides how they look.
QStringList paragraphs(const QTextDocument& document)
{
    QStringList found;
    for (auto block = document.begin(); block.isValid(); block = block.next()) {
        const auto format = block.blockFormat();
        const auto* list = block.textList();
        QStringList words{block.text(),
                          QString::number(format.topMargin()),
                          QString::number(format.bottomMargin()),
                          QString::number(format.leftMargin()),
                          QString::number(format.lineHeight()),
                          QString::number(format.headingLevel()),
                          QString::number(list == nullptr ? -1 : list->itemNumber(block))};
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const auto text = it.fragment().charFormat();
            words << it.fragment().text() << text.anchorNames().join(u' ') << text.anchorHref()
                  << text.foreground().color().name() << QString::number(text.fontWeight());
        }
        found += words.join(u'|');
    }
    return found;
}

/// Long enough to be shown in several parts.
QByteArray longPage()
{
    const QByteArray looks(AllLooks);
    const qsizetype begin = looks.indexOf("<h1");
    const qsizetype end = looks.indexOf("</body>");
    QByteArray page = looks.first(begin);
    for (int i = 0; i < 100; ++i) {
        const QByteArray name = "id=\"t" + QByteArray::number(i) + '"';
        page += "<div>" + looks.sliced(begin, end - begin).replace(R"(id="t")", name);
        page += "<ul><li>one<li>two</ul><hr><p>Last words</p></div>stray text";
    }
    return page + "</body></html>";
}

} // namespace

class TestReadingView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void contrasts_data();
    void contrasts();
    void looks();
    void measure();
    void switching();
    void anchors_data();
    void anchors();
    void coloursOfSheets();
    void placesOfSheets_data();
    void placesOfSheets();
    void looksOfSheets_data();
    void looksOfSheets();
    void linksOfSheets();
    void widthOfLines();
    void zoomByTouchpad();
    void pictures();
    void copy_data();
    void copy();
    void passingOn();
    void base();
    void partsOfALongPage();
    void placesInALongPage();
    void stoppingALongPage();
    void beyondTheBeginning();
    void beginnings_data();
    void beginnings();
};

void TestReadingView::contrasts_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void TestReadingView::contrasts()
{
    QFETCH(bool, isDark);
    Fixture f(AllLooks);
    if (isDark) {
        f.setDark();
    }
    f.show("a.cnt");
    QVERIFY(f.browser.page().prepared.isReading);
    QCOMPARE(unreadable(f.browser), QStringList());
    // The other palette, while the page is shown.
    isDark ? f.browser.setPalette(QPalette(Qt::white)) : f.setDark();
    QCOMPARE(unreadable(f.browser), QStringList());
}

/// What the style sheet does to the classes that prepared pages use.
void TestReadingView::looks()
{
    Fixture f(AllLooks);
    f.show("a.cnt");
    const auto formatOf = [&](const char* text) {
        const auto cursor =
            f.browser.document()->find(QLatin1StringView(text), 0, QTextDocument::FindCaseSensitively);
        if (cursor.isNull()) {
            qFatal("no text %s", text);
        }
        return cursor;
    };
    const auto cellOf = [&](const char* text) {
        const auto cursor = formatOf(text);
        return cursor.currentTable()->cellAt(cursor).format().toTableCellFormat();
    };
    QVERIFY(formatOf("Text with").blockFormat().lineHeight() > 100);
    QCOMPARE(formatOf("code").charFormat().fontFamilies().toStringList(),
             QStringList(f.browser.getFontFixedFamily()));
    QVERIFY(cellOf("if").hasProperty(QTextFormat::BackgroundBrush));
    QCOMPARE(cellOf("Note").leftBorder(), 4.0);
    QVERIFY(cellOf("Note").leftBorderBrush().color() != cellOf("Warning").leftBorderBrush().color());
    QVERIFY(cellOf("Head").hasProperty(QTextFormat::BackgroundBrush));
    QVERIFY(!cellOf("first").hasProperty(QTextFormat::BackgroundBrush));
    QVERIFY(formatOf("no picture").charFormat().fontItalic());
    // Code wraps, so that it never makes the page wider than the view.
    QVERIFY(!formatOf("# why").blockFormat().nonBreakableLines());
}

/// Lines are short enough to read in any window.
void TestReadingView::measure()
{
    Fixture f("== w.html\n<style></style><p>" + QByteArray("word ").repeated(500) +
              "\n== h.html\n<p>By hand.");
    const auto textWidth = [&] {
        const auto format = f.browser.document()->rootFrame()->frameFormat();
        return f.browser.viewport()->width() - int(format.leftMargin() + format.rightMargin());
    };
    f.show("w.html");
    QVERIFY(textWidth() > f.browser.viewport()->width() - 60);
    f.browser.resize(3000, 400);
    QVERIFY(textWidth() < 1500);
    f.show("h.html");
    QVERIFY(textWidth() > 2900);
}

/// Switching the view keeps the place, names what is shown, and concerns later pages as well.
void TestReadingView::switching()
{
    QByteArray html = "== w.html\n<script></script><nav>" +
                      QByteArray("<a href='x'>furniture</a><br>").repeated(90) + "<h4>Site</h4></nav>";
    for (int i = 0; i < 60; ++i) {
        html +=
            "<h2 id='h" + QByteArray::number(i) + "'>Chapter " + QByteArray::number(i) + "</h2><p>Text.</p>";
    }
    Fixture f(html);
    f.show("w.html");
    QVERIFY(!f.browser.toPlainText().contains(u"furniture"_s));
    f.browser.scrollTo(u"h30"_s);
    const auto isAtChapter = [&] {
        return f.browser.cursorForPosition(QPoint(40, 8)).block().text().startsWith(u"Chapter 30"_s);
    };
    QVERIFY(isAtChapter());
    const QSignalSpy changed(&f.browser, &PageView::pageChanged);
    f.browser.setReadingView(false);
    QVERIFY(f.browser.toPlainText().contains(u"furniture"_s));
    QVERIFY(isAtChapter());
    f.browser.setReadingView(true);
    QVERIFY(!f.browser.toPlainText().contains(u"furniture"_s));
    QVERIFY(isAtChapter());
    QCOMPARE(changed.count(), 2);
    QCOMPARE(f.browser.page().prepared.headings.size(), size_t(60));
    f.browser.scrollTo(f.browser.page().prepared.headings[10].anchor);
    QVERIFY(f.browser.cursorForPosition(QPoint(40, 8)).block().text().startsWith(u"Chapter 10"_s));
}

/// Names lead to places wherever they stand.
void TestReadingView::anchors_data()
{
    addTexts("html", "shown");
    addRow("heading", "<h2 id='x'>here</h2>", "here");
    addRow("section", "<div id='x'><p>here</p></div>", "here");
    addRow("table", "<table id='x'><tr><td>here</td></tr></table>", "here");
    addRow("code", "<pre id='x'>here</pre>", "here");
    addRow("note", "<div class='note' id='x'><p>here</p></div>", "here");
    addRow("link", "<p><a id='x' href='y'>here</a></p>", "here");
    addRow("within a link", "<p>here <a href='y'><b id='x'>z</b></a></p>", "here z");
    addRow("before furniture", "<div class='navheader'><a id='x' href='y'>no</a></div><p>here</p>", "here");
}

void TestReadingView::anchors()
{
    QFETCH(QString, html);
    const QByteArray filler = QByteArray("<p>filler</p>").repeated(60);
    Fixture f("== a.html\n<style></style>" + filler + html.toUtf8() + filler);
    f.show("a.html#x");
    QTEST(f.browser.cursorForPosition(QPoint(40, 8)).block().text(), "shown");
}

/// Colours that a sheet gives are readable on the desktop's, also when it turns dark while the page is shown.
void TestReadingView::coloursOfSheets()
{
    Fixture f("== p.html\n<style>b{color:#000080}</style><p>text <b>word</b>");
    f.show("p.html");
    const auto color = [&] {
        return f.browser.document()->find(u"word"_s).charFormat().foreground().color();
    };
    QCOMPARE(color(), QColor(0, 0, 0x80));
    QPalette dark = f.browser.palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, Qt::white);
    f.browser.setPalette(dark);
    QVERIFY2(contrast(color(), QColor(30, 30, 30)) >= LeastContrast, qPrintable(color().name()));
    QVERIFY(color().blue() > color().red());
}

void TestReadingView::placesOfSheets_data()
{
    addTexts("css", "html", "place");
    const char* const three = "<div class=g><div>one</div><div>two</div><div>three</div></div>";
    addRow("no columns", ".g{color:red}", three, "below");
    addRow("grid", ".g{display:grid;grid-template-columns:1fr auto}", three, "beside");
    addRow("repeated columns", ".g{display:grid;grid-template-columns:repeat(3,minmax(0,1fr))}", three,
           "beside");
    addRow("as many as there is room for",
           ".g{display:grid;grid-template-columns:repeat(auto-fill,minmax(9em,1fr))}", three, "beside");
    addRow("one column", ".g{display:grid;grid-template-columns:100%}", three, "below");
    addRow("over all columns", ".g{display:grid;grid-template-columns:1fr 1fr}.g>*{grid-column:1/-1}", three,
           "below");
    addRow("second column", ".g{display:grid;grid-template-columns:1fr 1fr}.g>*{grid-column:2}", three,
           "below");
    addRow("flexible row", ".g{display:flex}", three, "beside");
    addRow("flexible column", ".g{display:flex;flex-direction:column}", three, "below");
    addRow("wrapping", ".g{display:flex;flex-wrap:wrap}.g>*{width:90%;height:9em}", three, "below");
    addRow("cells", ".g{display:table}.g>*{display:table-cell}", three, "beside");
    addRow("rows", ".g{display:table}.g>*{display:table-row}.g span{display:table-cell}",
           "<div class=g><div><span>one</span><span>two</span></div><div><span>three</span></div></div>",
           "beside");
    addRow("columns of text", ".g{columns:2}", three, "below");
    addRow("columns of a list", "ul{column-count:2}", "<ul><li>one<li>two</ul>", "beside");
    addRow("terms that float", "dt{float:left}", "<dl><dt>one<dd>two<dt>three<dd>four</dl>", "beside");
    addRow("figures", "figure{float:left;width:45%}", "<figure><p>one</figure><figure><p>two</figure>",
           "beside");
    addRow("as if it were not there",
           ".g{display:grid;grid-template-columns:1fr 1fr}section{display:contents}",
           "<div class=g><section><p>one</section><section><p>two</section></div>", "beside");
    addRow("loose cells", ".x{display:table-cell;width:900px}",
           "<div><div class=x>one</div><div class=x>two</div></div>", "beside");
    addRow("aside of a heading", ".x{float:right}",
           "<div><span class=x>two</span><a href=y></a><h4>one</h4></div>", "beside");
    addRow("items in a line", "li{display:inline}", "<ul><li>one<li>two</ul>", "beside");
    addRow("text that is a part", ".g{display:flex}", "<div class=g>one<b>two</b></div>", "beside");
}

/// Where the second word is shown.
void TestReadingView::placesOfSheets()
{
    QFETCH(const QString, css);
    QFETCH(const QString, html);
    Fixture f("== p.html\n<style>" + css.toUtf8() + "</style><h1>Title of the page</h1>" + html.toUtf8());
    f.show("p.html");
    const auto placeOf = [&f](const QString& word) {
        return f.browser.cursorRect(f.browser.document()->find(word)).center();
    };
    const QPoint one = placeOf(u"one"_s);
    const QPoint two = placeOf(u"two"_s);
    const bool isBeside = qAbs(one.y() - two.y()) < f.browser.fontMetrics().height() && two.x() > one.x();
    QTEST(isBeside ? u"beside"_s : two.y() > one.y() ? u"below"_s : u"elsewhere"_s, "place");
}

void TestReadingView::looksOfSheets_data()
{
    addTexts("css", "html", "look");
    const char* const word = "<p>text of the page<p class=x>a word";
    addRow("plain", "b{color:red}", word, "");
    addRow("bold", ".x{font-weight:700}", word, "bold");
    addRow("large", ".x{font-size:150%}", word, "size2");
    addRow("a little larger", ".x{font-size:1.2em}", word, "size1");
    addRow("beside a long foot", "body{font-size:12px}.f{font-size:9px}",
           "<p>a word<div class=f>small print at the foot of the page</div>", "");
    addRow("calculated", ".x{font-size:calc(2em - (4px + 2px * 2))}", word, "size2");
    addRow("no calculation", ".x{font-size:calc(2em - (4px);margin-left:calc(9px / 0)}", word, "");
    addRow("numbers that are no lengths", ".x{font-size:calc(7 * 9);margin-left:calc(20px + 1)}", word, "");
    addRow("small", ".x{font-size:.7em}", word, "size-1");
    addRow("capitals", ".x{text-transform:uppercase}", word, "upper");
    addRow("small capitals", ".x{font-variant:small-caps}", word, "small");
    addRow("at the right", ".x{text-align:right}", word, "right");
    addRow("in the middle", ".x{text-align:center}", word, "center");
    addRow("indented", ".x{margin-left:20px}", word, "indent20");
    addRow("indented too far", ".x{margin-left:400px}", word, "indent40");
    addRow("from right to left", ".x{direction:rtl}", word, "rtl");
    addRow("ground of a word", ".x span{background:#ff8}", "<p>text<p class=x>a <span>word</span>",
           "ground#ffff88");
    addRow("box", ".x{background:#eef;border-left:3px solid #00f;padding:5px}", word,
           "cell#eeeeff bar3#0000ff padding8");
    addRow("frame", ".x{border:1px solid red}", word, "bar1#ff0000 padding8");
    addRow("beside the text", ".x{float:right;width:30%}", "<p class=x>a word<p>text of the page",
           "floats padding12");
    addRow("alone at the side", ".x{float:right;width:30%}", word, "");
    addRow("of the page", "body,.x{background:#eef}", word, "");
    addRow("cell", "td{background:#eef;border-left:2px solid red}",
           "<p>text of<p>the page<table><tr><td>word</table>", "cell#eeeeff bar2#ff0000 padding4");
    addRow("row", "tr{background:#eef}", "<p>text of<p>the page<table><tr><td>word</table>",
           "cell#eeeeff padding4");
    addRow("head of a table", "b{color:red}", "<p>text of<p>the page<table><tr><th>word</table>",
           "bold center padding4");
    addRow("attributes", "b{color:red}",
           "<p>text of<p>the page<p align=right><font size=5 color=#0000c0>word</font>",
           "size2 right #0000c0");
    addRow("heading of a low rank", "b{color:red}",
           "<h1>Page</h1><h2>a</h2><h3>b</h3><h4>c</h4><h5>word</h5>", "bold size1");
    addRow("highest heading", "b{color:red}", "<h3>word</h3><p>text of the page", "bold size2");
    addRow("mark in a heading", "b{color:red}", "<h1>a</h1><h2>b</h2><h3>c <i>word</i></h3>",
           "bold italic size1");
    addRow("link in a heading of a low rank", "b{color:red}",
           "<h1>a</h1><h2>b</h2><h3>c</h3><h4><a href=x>word</a>", "bold size1 #0000ff");
    addRow("term", "b{color:red}", "<p>text of the page<dl><dt>word<dd>x</dl>", "");
    addRow("list without marks", "ul{list-style:none;padding:0}", "<p>text of the page<ul><li>word</ul>", "");
    addRow("list", "b{color:red}", "<p>text of the page<ul><li>word</ul>", "list-1");
    addRow("numbers of a list", "ol{list-style-type:upper-roman}", "<p>text of the page<ol><li>word</ol>",
           "list-8");
    addRow("before", ".x::before{content:'» ';font-weight:bold}.x{font-style:italic}", word,
           "italic text» a word");
    addRow("attribute", ".x::after{content:' (' attr(title) ')'}", "<p>text<p class=x title=t>a word",
           "texta word (t)");
    addRow("counter",
           "body{counter-reset:n}p{counter-increment:n}p::before{content:counter(n,lower-roman) '. '}", word,
           "textii. a word");
    addRow("signs of a font of its own", ".x::before{content:'\\f105'}", word, "");
}

void TestReadingView::looksOfSheets()
{
    QFETCH(const QString, css);
    QFETCH(const QString, html);
    QFETCH(const QString, look);
    Fixture f("== p.html\n<style>" + css.toUtf8() + "</style>" + html.toUtf8());
    f.show("p.html");
    const auto cursor = f.browser.document()->find(u"word"_s);
    QVERIFY(!cursor.isNull());
    QStringList words;
    const auto add = [&words](bool isSo, const QString& word) {
        if (isSo) {
            words += word;
        }
    };
    const auto text = cursor.charFormat();
    const auto block = cursor.blockFormat();
    add(text.fontWeight() > QFont::Normal, u"bold"_s);
    add(text.fontItalic(), u"italic"_s);
    const int size = text.intProperty(QTextFormat::FontSizeAdjustment);
    add(size != 0, u"size"_s + QString::number(size));
    add(text.fontCapitalization() == QFont::AllUppercase, u"upper"_s);
    add(text.fontCapitalization() == QFont::SmallCaps, u"small"_s);
    add((block.alignment() & Qt::AlignRight) != 0, u"right"_s);
    add((block.alignment() & Qt::AlignHCenter) != 0, u"center"_s);
    add(block.leftMargin() > 0, u"indent"_s + QString::number(block.leftMargin()));
    add(block.layoutDirection() == Qt::RightToLeft, u"rtl"_s);
    add(text.hasProperty(QTextFormat::ForegroundBrush), text.foreground().color().name());
    add(text.hasProperty(QTextFormat::BackgroundBrush) && cursor.currentTable() == nullptr,
        u"ground"_s + text.background().color().name());
    if (auto* table = cursor.currentTable()) {
        const auto cell = table->cellAt(cursor).format().toTableCellFormat();
        add(table->format().position() == QTextFrameFormat::FloatRight, u"floats"_s);
        add(cell.hasProperty(QTextFormat::BackgroundBrush), u"cell"_s + cell.background().color().name());
        add(cell.leftBorder() > 0,
            u"bar"_s + QString::number(cell.leftBorder()) + cell.leftBorderBrush().color().name());
        add(cell.leftPadding() > 0, u"padding"_s + QString::number(cell.leftPadding()));
    }
    add(cursor.currentList() != nullptr,
        u"list"_s +
            QString::number(cursor.currentList() == nullptr ? 0 : cursor.currentList()->format().style()));
    add(look.contains(u"text"), u"text"_s + cursor.block().text());
    QCOMPARE(words.join(u' '), look);
}

/// What a person chose goes before what a page says.
void TestReadingView::linksOfSheets()
{
    Fixture f("== p.html\n<style>a{color:#c00000;text-decoration:none}</style><p>text <a href=x>word</a>");
    f.show("p.html");
    const auto format = [&f] { return f.browser.document()->find(u"word"_s).charFormat(); };
    QCOMPARE(format().foreground().color(), QColor(0xc0, 0, 0));
    QVERIFY(!format().fontUnderline());
    f.browser.setLinkColor(Qt::darkGreen);
    f.browser.setLinkUnderline(true);
    QCOMPARE(format().foreground().color(), QColor(Qt::darkGreen));
    QVERIFY(format().fontUnderline());
}

/// Lines have a hundred characters whatever their size.
void TestReadingView::widthOfLines()
{
    Fixture f("== p.html\n<style></style><p>" + QByteArray("word ").repeated(100));
    f.browser.resize(1500, 300);
    f.show("p.html");
    for (const int step : {1, 1, 1, -1, -1, -1, -1}) {
        step > 0 ? f.browser.zoomIn() : f.browser.zoomOut();
        const auto margins = f.browser.document()->rootFrame()->frameFormat();
        const int width = f.browser.viewport()->width() - int(margins.leftMargin() + margins.rightMargin());
        QVERIFY(qAbs(width - 100 * f.browser.fontMetrics().averageCharWidth()) <= 2);
    }
}

/// A touchpad sends a notch of the wheel in pieces.
void TestReadingView::zoomByTouchpad()
{
    Fixture f("== p.html\n<p>text");
    f.show("p.html");
    const int size = f.browser.getFontSize();
    const auto turn = [&](int angle) {
        QWheelEvent event({9, 9}, f.browser.viewport()->mapToGlobal(QPointF(9, 9)), {}, {0, angle},
                          Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(f.browser.viewport(), &event);
        return f.browser.getFontSize() - size;
    };
    for (int i = 0; i < 7; ++i) {
        QCOMPARE(turn(15), 0);
    }
    QCOMPARE(turn(15), 1);
    QCOMPARE(turn(240), 3);
    QCOMPARE(turn(-60), 3);
    QCOMPARE(turn(-60), 2);
}

/// A wide picture is made to fit; a click shows it at its size.
void TestReadingView::pictures()
{
    Fixture f("== p.html\n<style></style><p>Text <img src='wide.png'> text</p><p><a href='x'><img "
              "src='wide.png'></a></p>");
    QImage wide(2000, 100, QImage::Format_RGB32);
    wide.fill(Qt::red);
    QVERIFY(wide.save(f.files.path(u"wide.png"_s)));
    f.show("p.html");
    QVERIFY(f.browser.document()->size().width() <= f.browser.viewport()->width());
    const QImage shown = f.browser.viewport()->grab().toImage();
    int red = 0;
    for (int y = 0; y < shown.height(); ++y) {
        red += shown.pixelColor(shown.width() / 2, y) == QColor(Qt::red) ? 1 : 0;
    }
    QVERIFY(red > 30 && red < 70);
    const auto nextPicture = [&shown](int y) {
        while (y < shown.height() && shown.pixelColor(100, y) != QColor(Qt::red)) {
            ++y;
        }
        return QPoint(100, y + 4);
    };
    const QPoint place = nextPicture(0);
    const QPoint linked = nextPicture(place.y() + 60);
    // One can be clicked as it is reduced, the other as it is a link.
    for (const auto& [point, shape] :
         {std::pair(place, Qt::PointingHandCursor), std::pair(linked, Qt::PointingHandCursor),
          std::pair(place, Qt::PointingHandCursor), std::pair(QPoint(1, 1), Qt::ArrowCursor)}) {
        QTest::mouseMove(f.browser.viewport(), point);
        QTRY_COMPARE(f.browser.viewport()->cursor().shape(), shape);
    }
    const QSignalSpy activated(&f.browser, &PageView::pictureActivated);
    f.browser.disconnect(&f.browser, &PageView::pictureActivated, &f.browser, nullptr);
    QTest::mouseClick(f.browser.viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(activated.at(0).at(0).toString(), f.files.path(u"wide.png"_s));
}

void TestReadingView::copy_data()
{
    addTexts("html", "text");
    addRow("code", "<p>a</p><pre>int x;\n\n  y;</pre><p>b</p>", "a\nint x;\n\n  y;\nb");
    addRow("table", "<table><tr><th>A</th><th>B</th></tr><tr><td>c</td><td>d</td></tr></table><p>e</p>",
           "A\tB\nc\td\ne");
    addRow("note", "<p>a</p><div class='tip'><p class='title'>Tip</p><p>b</p></div><p>c</p>", "a\nTip\nb\nc");
    const QString rows = u"<tr><td>1</td><td>2</td></tr>"_s.repeated(2000);
    addRow("long table", QString(u"<table>"_s + rows + u"</table><p>a"),
           QString(u"1\t2\n"_s.repeated(2000) + u"a"));
    addRow("picture", "<p>a <img src='no.png' alt='map'> b</p>", "a map b");
    addRow("blanks", "<p>a&nbsp;b<br>c</p>", "a b\nc");
    addRow("list", "<ul><li>a</li><li>b</li></ul>", "a\nb");
}

void TestReadingView::copy()
{
    QFETCH(QString, html);
    Fixture f("== c.html\n<style></style>" + html.toUtf8());
    f.show("c.html");
    f.browser.completePage();
    f.browser.selectAll();

    QTEST(selectedText(f.browser.textCursor()), "text");
    auto part = f.browser.document()->find(html.contains(u"int x"_s) ? u"int x"_s : u"a"_s);
    QCOMPARE(selectedText(part), part.selectedText());
}

/// A page that passes its readers on is the page of its record all the same; two of them end.
void TestReadingView::passingOn()
{
    Fixture f("== from.html\n<meta http-equiv=refresh content='0;url=to.html#x'><p>moved\n== to.html\n"
              "<meta http-equiv=refresh content='0;url=from.html'><p>arrived");
    QString notice;
    connect(&f.browser, &PageView::noticed, [&](const QString& text) { notice = text; });
    f.show("from.html");
    QCOMPARE(f.browser.toPlainText(), u"arrived"_s);
    QVERIFY(notice.contains(f.files.path(u"from.html"_s)));
    QCOMPARE(f.browser.getCurrentLink()->page(), f.files.path(u"from.html"_s));
}

/// Links and pictures start from the base that a page names; places within the page do not.
void TestReadingView::base()
{
    Fixture f("== p.html\n<base href='sub/'><p><a href='q.html'>q</a> <a href='#x'>x</a> <img src='i.png' "
              "alt='none'>\n"
              "== sub/q.html\n<p>q");
    QVERIFY(QImage(8, 8, QImage::Format_RGB32).save(f.files.path(u"sub/i.png"_s)));
    f.show("p.html");
    QVERIFY(!f.browser.toPlainText().contains(u"none"_s));
    QString hovered;
    connect(&f.browser, &PageView::linkHovered, [&](const QString& target) { hovered = target; });
    Q_EMIT f.browser.highlighted(QUrl(linkCode(0)));
    QCOMPARE(hovered, f.files.path(u"sub/q.html"_s));
    Q_EMIT f.browser.highlighted(QUrl(linkCode(1)));
    QCOMPARE(hovered, f.files.path(u"p.html#x"_s));
}

void TestReadingView::partsOfALongPage()
{
    Fixture f(longPage());
    f.show("a.cnt");
    const qsizetype first = f.browser.document()->blockCount();
    QTextDocument whole;
    whole.setDefaultStyleSheet(f.browser.document()->defaultStyleSheet());
    whole.setHtml(f.browser.page().prepared.html);
    QVERIFY(whole.blockCount() > 2 * first);
    QTRY_COMPARE(f.browser.document()->blockCount(), whole.blockCount());
    QCOMPARE(paragraphs(*f.browser.document()), paragraphs(whole));
}

/// Going to a place brings what is missing up to there.
void TestReadingView::placesInALongPage()
{
    Fixture f(longPage());
    f.show("a.cnt#t70");
    QTRY_VERIFY(f.browser.isVisible());
    const auto atTop = [&f] {
        return QTextCursor(f.browser.cursorForPosition(QPoint(30, 5))).block().text();
    };
    QCOMPARE(atTop(), u"Title"_s);
    const int left = f.browser.place();
    f.files.write(u"other.html"_s, "other");
    f.show("other.html");
    f.browser.backward();
    QCOMPARE(f.browser.place(), left);
    f.show("a.cnt");
    f.browser.setReadingView(false);
    f.browser.setReadingView(true);
    QTest::keyClick(&f.browser, Qt::Key_End, Qt::ControlModifier);
    QVERIFY(f.browser.toPlainText().endsWith(u"stray text"));
}

void TestReadingView::stoppingALongPage()
{
    Fixture f(longPage());
    f.show("a.cnt");
    const qsizetype length = f.browser.toPlainText().size();
    f.browser.stopFilling();
    QTest::qWait(50);
    QCOMPARE_LT(f.browser.toPlainText().size(), length + 100);
    // Other settings set the text again, as much of it as there is.
    f.browser.setLinkColor(Qt::red);
    QCOMPARE_LT(f.browser.toPlainText().size(), length + 100);
    QTest::qWait(50);
    QVERIFY(!f.browser.isFilling());
    QCOMPARE_LT(f.browser.toPlainText().size(), length + 100);
    QTest::keyClick(&f.browser, Qt::Key_Backtab);
    QTest::keyClick(&f.browser, Qt::Key_Return);
    f.browser.completePage();
    QVERIFY(f.browser.toPlainText().endsWith(u"stray text"));
}

void TestReadingView::beginnings_data()
{
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<bool>("isCut");
    const QByteArray word(70'000, 'x');
    const QByteArray text = QByteArray("word ").repeated(300'000);
    const QByteArray chinese = QByteArray("\xe4\xb8\xad").repeated(70'000);
    QTest::newRow("word") << "<p>begin " + word + "<p>end" << true;
    QTest::newRow("word in pieces") << "<p>begin " + QByteArray(word).replace("xx", "<b>x</b>x") + "<p>end"
                                    << true;
    QTest::newRow("plain word") << "begin " + word + " end" << true;
    QTest::newRow("paragraph") << "<p>begin " + text + "<p>end" << true;
    QTest::newRow("lines") << "<pre>begin " + QByteArray("word\n").repeated(20'000) + "</pre>end" << false;
    QTest::newRow("too many lines") << "<pre>begin " + QByteArray("word\n").repeated(100'000) + "</pre>end"
                                    << true;
    QTest::newRow("cells") << "<p>begin<table>" + QByteArray("<tr><td>1<td>2").repeated(10'000) +
                                  "</table>end"
                           << false;
    QTest::newRow("cells that hang together")
        << "<p>begin<table><tr><td rowspan=2>0<td>1" + QByteArray("<tr><td>1<td>2").repeated(10'000) +
               "</table>end"
        << true;
    QTest::newRow("items") << "<p>begin<ul>" + QByteArray("<li>1").repeated(30'000) + "</ul>end" << false;
    QTest::newRow("ideographs and a word")
        << "<p>begin " + chinese + "<b>GNOME</b>" + chinese + "<i>GNOME</i><p>end" << false;
    QTest::newRow("no blanks needed") << "<p>begin " + chinese + "<p>end" << false;
    QTest::newRow("inlined picture") << "<p>begin <img src=\"data:image/png;base64," + word + "\"><p>end"
                                     << false;
    QTest::newRow("script") << "<p>begin <script>" + word + "</script><p>end" << false;
}

/// What is not in the beginning of a page that is shown may be in the rest.
void TestReadingView::beyondTheBeginning()
{
    Fixture f("<p>begin " + QByteArray(70'000, 'x') + "<p><a name=end>end</a>" +
              QByteArray("<p>more").repeated(99));
    QString notice;
    connect(&f.browser, &PageView::noticed, [&](const QString& text) { notice = text; });
    f.show("a.cnt#end");
    QVERIFY2(notice.contains(u"not in the part"), qPrintable(notice));
    f.browser.scrollTo(u"none"_s);
    QVERIFY2(notice.contains(u"no place named"), qPrintable(notice));
    f.browser.scrollTo(u"end"_s);
    QTest::keyClick(&f.browser, Qt::Key_Tab);
    QTest::keyClick(&f.browser, Qt::Key_Return);
    QVERIFY(!f.browser.page().prepared.isBeginning);
    QCOMPARE(f.browser.cursorForPosition(QPoint(40, 8)).block().text(), u"end");
}

/// What makes a page take long is its text, not its source.
void TestReadingView::beginnings()
{
    QFETCH(QByteArray, page);
    QFETCH(bool, isCut);
    Fixture f(page);
    f.show("a.cnt");
    QCOMPARE(f.browser.page().prepared.isBeginning, isCut);
    QVERIFY(f.browser.toPlainText().contains(u"begin"));
    f.browser.completePage();
    QCOMPARE(f.browser.toPlainText().trimmed().endsWith(u"end"), !isCut);
}

QTEST_MAIN(TestReadingView)
#include "tst_readingview.moc"
