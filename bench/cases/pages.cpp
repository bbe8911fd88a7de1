// SPDX-License-Identifier: MIT
// Preparing a page of a generated help set for the reading view, and showing it, against rich text's own time
// for the page as it is written.
#include "browser/helpbrowser.h"
#include "library/helplibrary.h"
#include "pages/pagepreparation.h"
#include "pages/pagesheets.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTextDocument>

#include <benchmark/benchmark.h>

namespace {

constexpr qsizetype UsualSize = 100'000;   // bytes
constexpr qsizetype LargeSize = 1'000'000; // bytes
constexpr int ViewWidth = 700;             // pixels
constexpr int ViewHeight = 600;            // pixels

/// A section as documentation generators write it: a signature, text with code and links, a listing with
/// marked words, a note, a table.
const char* const Section =
    R"(<section id="part-%1"><h2>Part %1<a class="headerlink" href="#part-%1">¶</a></h2>
<dl class="py function"><dt class="sig sig-object py" id="module.function%1"><span class="sig-prename descclassname">
<span class="pre">module.</span></span><span class="sig-name descname"><span class="pre">function%1</span></span>
<span class="sig-paren">(</span><em class="sig-param"><span class="n"><span class="pre">value</span></span></em>
<span class="sig-paren">)</span><a class="headerlink" href="#module.function%1">¶</a></dt><dd>
<p>Returns what <em>value</em> was before the <a class="reference internal" href="other.html#part">last change</a>. If
<em>value</em> is <code class="docutils literal notranslate"><span class="pre">None</span></code> (the default), then
<a class="reference internal" href="#module.function"><code class="xref py"><span class="pre">function()</span></code></a>
looks it up among those that were set before, in the order in which they came, and raises an error without any.</p>
<div class="highlight"><pre><span></span><span class="gp">&gt;&gt;&gt; </span><span class="kn">import</span> <span class="nn">module</span>
<span class="gp">&gt;&gt;&gt; </span><span class="n">module</span><span class="o">.</span><span class="n">function</span><span class="p">(</span><span class="s1">&#39;text&#39;</span><span class="p">,</span> <span class="kc">None</span><span class="p">)</span>
<span class="go">[&quot;text&quot;]</span>
</pre></div>
<div class="admonition note"><p class="admonition-title">Note</p><p>This holds for all values but the empty one.</p></div>
<table class="docutils"><thead><tr><th><p>Name</p></th><th><p>Meaning</p></th></tr></thead><tbody>
<tr><td><p>first</p></td><td><p>what comes first</p></td></tr><tr><td><p>last</p></td><td><p>the rest</p></td></tr>
</tbody></table></dd></dl></section>)";

QString makePage(qsizetype size)
{
    QString navigation;
    QString content;
    for (int i = 0; content.size() + navigation.size() < size; ++i) {
        navigation +=
            QStringLiteral("<li><a class=\"reference internal\" href=\"#part-%1\">Part %1</a></li>").arg(i);
        content += QString::fromUtf8(Section).arg(i);
    }
    return QStringLiteral(
               "<!DOCTYPE html><html lang=\"en\"><head><title>Module</title>"
               "<link rel=\"stylesheet\" href=\"site.css\"><script src=\"site.js\"></script></head><body>"
               "<div class=\"sphinxsidebar\" role=\"navigation\"><ul>%1</ul></div>"
               "<div class=\"body\" role=\"main\"><h1>Module</h1>%2</div></body></html>")
        .arg(navigation, content);
}

void layOut(QTextDocument& document)
{
    document.setTextWidth(ViewWidth);
    benchmark::DoNotOptimize(document.documentLayout()->documentSize());
}

void preparationOurs(benchmark::State& state)
{
    const QString html = makePage(UsualSize);
    for (auto _ : state) {
        benchmark::DoNotOptimize(preparePage(html, {}, Presentation::Reading));
    }
}

void preparationFloor(benchmark::State& state)
{
    const QString html = makePage(UsualSize);
    for (auto _ : state) {
        QTextDocument document;
        document.setHtml(html);
        layOut(document);
    }
}

/// A style sheet of 80 KB as generators bring along, of which few rules mean the page, and some do.
QByteArray makeSheet()
{
    constexpr qsizetype sheetSize = 80'000; // bytes
    QByteArray sheet(":root{--line:#ccd;--code:#f4f4f8}body{font:16px/1.5 sans-serif;color:#222}"
                     "h2{border-bottom:1px solid var(--line)}dl.py>dt{background:#eef;padding:4px}"
                     ".sig-name,.descname{font-weight:bold}em.sig-param{font-style:normal}"
                     "div.highlight{background:var(--code);border:1px solid var(--line);padding:.5em 1em}"
                     ".highlight .kn{color:#008;font-weight:bold}.highlight .s1{color:#080}"
                     "div.note{background:#ffd;border-left:4px solid #cc8}table.docutils td{border:1px solid "
                     "var(--line);padding:.2em .5em}a{color:#06c;text-decoration:none}a:hover{color:red}");
    for (int i = 0; sheet.size() < sheetSize; ++i) {
        const QByteArray number = QByteArray::number(i);
        sheet +=
            ".site-" + number + " .menu > li a:not(.x),div.part-" + number +
            " p + ul li{margin:0 auto;padding:2px 4px;color:#345;display:block}@media (max-width:600px){.c-" +
            number + "{display:none}}";
    }
    return sheet;
}

/// A page of 50 KB with its sheet in a file, which is read anew, or known.
void preparationWithSheet(benchmark::State& state, bool isKnown)
{
    constexpr qsizetype size = 50'000; // bytes
    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("site.css")));
    if (!file.open(QIODevice::WriteOnly) || file.write(makeSheet()) <= 0) {
        qFatal("cannot write the style sheet");
    }
    file.close();
    const QString html = makePage(size);
    PageContext context;
    context.file = directory.filePath(QStringLiteral("page.html"));
    StyleSheets known;
    for (auto _ : state) {
        StyleSheets unknown;
        context.styleSheets = isKnown ? &known : &unknown;
        benchmark::DoNotOptimize(preparePage(html, context, Presentation::Reading));
    }
}

/// Two files with the same page, so that each showing is one of another page.
struct Pages {
    Pages()
    {
        const QByteArray html = makePage(LargeSize).toUtf8();
        for (const auto& name : names) {
            QFile file(name);
            if (!file.open(QIODevice::WriteOnly) || file.write(html) != html.size()) {
                qFatal("cannot write %s", qUtf8Printable(name));
            }
        }
    }
    QTemporaryDir directory;
    QStringList names{directory.filePath(QStringLiteral("a.html")),
                      directory.filePath(QStringLiteral("b.html"))};
};

void firstScreenOurs(benchmark::State& state)
{
    const Pages pages;
    HelpLibrary library;
    HelpBrowser browser(library, nullptr);
    browser.resize(ViewWidth, ViewHeight);
    browser.show();
    qsizetype next = 0;
    for (auto _ : state) {
        browser.setSource(pages.names[next++ % 2]);
        benchmark::DoNotOptimize(browser.viewport()->grab());
    }
}

void firstScreenFloor(benchmark::State& state)
{
    const Pages pages;
    QTextBrowser browser;
    browser.resize(ViewWidth, ViewHeight);
    browser.show();
    qsizetype next = 0;
    for (auto _ : state) {
        browser.setSource(QUrl::fromLocalFile(pages.names[next++ % 2]));
        benchmark::DoNotOptimize(browser.viewport()->grab());
    }
}

} // namespace

BENCHMARK(preparationOurs)->Name("preparation/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(preparationFloor)->Name("preparation/floor")->Unit(benchmark::kMillisecond);
BENCHMARK(firstScreenOurs)->Name("first screen/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(firstScreenFloor)->Name("first screen/floor")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(preparationWithSheet, first, false)
    ->Name("preparation with sheets/first")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(preparationWithSheet, again, true)
    ->Name("preparation with sheets/again")
    ->Unit(benchmark::kMillisecond);
