// SPDX-License-Identifier: MIT
#include "markup/htmltree.h"
#include "styles/csscolor.h"
#include "styles/pagestyles.h"
#include "testfiles.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// With the element of StylesTest::selectors().
constexpr const char* Matching[]{"b",
                                 "B",
                                 "*",
                                 "#x",
                                 ".one",
                                 ".one.two",
                                 "b.two#x",
                                 "p b",
                                 "div b",
                                 "div > p > b",
                                 "i + b",
                                 "i ~ b",
                                 "em ~ b",
                                 "[title]",
                                 "[title='a b']",
                                 "[title~=b]",
                                 "[lang|=en]",
                                 "[title^=a]",
                                 "[title$=b]",
                                 "[title*=' ']",
                                 "b:nth-child(3)",
                                 "b:nth-child(odd)",
                                 ":nth-child(2n+1)",
                                 ":nth-child(-n+3)",
                                 ":last-child",
                                 "b:only-of-type",
                                 "b:first-of-type",
                                 ":nth-last-child(1)",
                                 ":not(i)",
                                 ":not(i, u)",
                                 ":is(i, b)",
                                 ":where(.one)",
                                 "html b",
                                 "body :is(p, i) > b",
                                 "i, b",
                                 "u,b",
                                 ":root b",
                                 ".a\\:b",
                                 "div /* c */ b"};
constexpr const char* NotMatching[]{"i",
                                    "#y",
                                    ".three",
                                    ".one.three",
                                    "div > b",
                                    "b + i",
                                    "em + b",
                                    "b ~ i",
                                    "[title=a]",
                                    "[title^=b]",
                                    "[title^='']",
                                    ":first-child",
                                    ":nth-child(2)",
                                    ":nth-child(2n)",
                                    ":empty",
                                    "b:hover",
                                    "a:link",
                                    ":not(b)",
                                    ":is(i, u)",
                                    "b::before",
                                    "b:unknown",
                                    "b >",
                                    "> b",
                                    "b!",
                                    "",
                                    "..one",
                                    "b[",
                                    "[=x]",
                                    ":not(:not(i))",
                                    "p > div b"};

/// Each element has a style of its own.
QString manyLooks()
{
    QString html;
    for (int i = 0; i < 60'000; ++i) {
        html += u"<b style='margin-top:%1px'>"_s.arg(i) + u"</b>"_s;
    }
    return html;
}

/// Computes the styles of a page; keeps those of its elements with an id of "x".
class StyledPage {
public:
    StyledPage(const QString& css, const QString& html, const Medium& medium = {})
        : m_tree(html), m_styles(medium)
    {
        m_styles.add(std::make_shared<const StyleSheet>(readStyleSheet(css.toStdString())));
        std::vector<const ComputedStyle*> open; // by depth
        walk(
            *m_tree.root(),
            [&](const HtmlNode& node) {
                if (!isElement(node)) {
                    return false;
                }
                open.push_back(&m_styles.compute(node, open.empty() ? nullptr : open.back()));
                m_wanted = attribute(node, "id") == "x" ? open.back() : m_wanted;
                return true;
            },
            [&](const HtmlNode& /*node*/) { open.pop_back(); });
    }

    [[nodiscard]] QString look() const
    {
        QStringList words;
        const auto add = [&words](bool isSet, const QString& word) {
            if (isSet) {
                words += word;
            }
        };
        add(m_wanted->isHidden(), u"hidden"_s);
        add(m_wanted->isBold, u"bold"_s);
        add(m_wanted->isItalic, u"italic"_s);
        add(m_wanted->isFixedPitch, u"fixed"_s);
        add(m_wanted->isUnderlined, u"line"_s);
        add(m_wanted->isStruckOut, u"struck"_s);
        add(m_wanted->isFixed, u"stays"_s);
        if (m_wanted->color) {
            words += QString::number(*m_wanted->color, 16);
        }
        return words.join(u' ');
    }

private:
    HtmlTree m_tree;
    PageStyles m_styles;
    const ComputedStyle* m_wanted = nullptr;
};

} // namespace

class StylesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void selectors_data()
    {
        addTexts("selector");
        QTest::addColumn<bool>("matches");
        for (const auto* selector : Matching) {
            addRow(selector, selector, true);
        }
        for (const auto* selector : NotMatching) {
            addRow(selector, selector, false);
        }
    }

    void selectors()
    {
        QFETCH(const QString, selector);
        QFETCH(const bool, matches);
        const StyledPage page(
            selector + u"{position:fixed}"_s,
            u"<div><p><em>e</em><i>i</i><b id=x class='one two a:b' title='a b' lang=en-GB>t</b></p></div>"_s);
        QCOMPARE(page.look(), matches ? u"bold stays"_s : u"bold"_s);
    }

    void cascade_data()
    {
        addTexts("css", "html", "look");
        const char* const page = "<div class=o><p class=a id=x>t";
        addRow("later rule", "p{color:red}p{color:blue}", page, "ff");
        addRow("more specific", "p.a{color:red}p{color:blue}", page, "ff0000");
        addRow("id", "#x{color:red}p.a.a{color:blue}", page, "ff0000");
        addRow("important", "p{color:red!important}#x{color:blue}", page, "ff0000");
        addRow("own style", "p{color:red}", "<p id=x style='color:blue'>t", "ff");
        addRow("important before own style", "p{color:red ! IMPORTANT}", "<p id=x style='color:blue'>t",
               "ff0000");
        addRow("handed down", ".o{color:red;font-weight:700;font-style:italic;font-family:'X', Monospace}",
               page, "bold italic fixed ff0000");
        addRow("taken back", ".o{font-weight:bold}p{font-weight:normal}", page, "");
        addRow("inherit", "p{color:red}.o p{color:inherit}.o{color:blue}", page, "ff");
        addRow("hidden parent", ".o{visibility:hidden}", page, "hidden");
        addRow("shown again", ".o{visibility:hidden}p{visibility:visible}", page, "");
        addRow("not displayed", "p{display:none}", page, "hidden");
        addRow("displayed again", "p{display:none}.a{display:block}", page, "");
        addRow("far away", "p{position:absolute;left:-9999px}", page, "hidden");
        addRow("cut off", "p{clip:rect(0 0 0 0)}", page, "hidden");
        addRow("a point", "p{overflow:hidden;width:1px;height:1px}", page, "hidden");
        addRow("low", "p{overflow:hidden;height:0}", page, "");
        addRow("stays", "p{position:sticky}", page, "stays");
        addRow("lines", "p{text-decoration:underline dotted}.o{text-decoration-line:line-through}", page,
               "line struck");
        addRow("font", "p{font:italic bold 12px/1.5 Courier, serif}", page, "bold italic fixed");
        addRow("font takes back", ".o{font-weight:bold}p{font:12px serif}", page, "");
        addRow("variable", ":root{--c:red;--d:var(--c)}p{color:var(--d)}", page, "ff0000");
        addRow("variable with fallback", "p{color:var(--none, blue)}", page, "ff");
        addRow("variables in a circle",
               ":root{--c:var(--d);--d:var(--c)}p{color:red;font-weight:bold;color:var(--c)}", page, "bold");
        addRow("variable of an element around", ":root{--c:red}.o{--c:blue}p{color:var(--c)}", page, "ff");
        addRow("variable of a neighbour", "i{--c:red}p{color:var(--c,blue)}", "<i>u</i><p id=x>t", "ff");
        addRow("variable within another's fallback", "p{color:var(--a,var(--b,blue))}", page, "ff");
        addRow("no numbers", "p{color:red;margin:nanpx;font-size:infem;position:fixed;color:rgb(nan,0,0)}",
               page, "stays");
        addRow("comments", "/* } */p{/*;*/color/**/:/**/red/**/}", page, "ff0000");
        addRow("strings", "p::x{content:\"}{;\"}p{color:red}", page, "ff0000");
        addRow("what makes no sense", "p{color;:red;color:{};}p{color:red}", page, "ff0000");
        addRow("unclosed", "p{color:red", page, "ff0000");
        addRow("one bad selector of a list", "p:unknown, p{color:red}", page, "ff0000");
        addRow("screen", "@media screen{p{color:red}}@media print{p{color:blue}}", page, "ff0000");
        addRow("width",
               "@media (min-width:40em) and (max-width: 2000px){p{color:red}}@media "
               "(width<600px){p{color:blue}}",
               page, "ff0000");
        addRow("conditions in each other",
               "@media screen{@media (max-width:9px){p{color:blue}}@supports (x:y){p{color:red}}}", page,
               "ff0000");
        addRow("not and or", "@media not print, print{p{color:red}}@media not screen{p{color:blue}}", page,
               "ff0000");
        addRow("dark", "@media (prefers-color-scheme: dark){p{color:red}}", page, "");
        addRow("other blocks", "@font-face{color:red}@keyframes p{from{color:red}}@layer x{p{color:blue}}",
               page, "ff");
        addRow("HTML's own", "", "<b><i><code><u><s id=x>t", "bold italic fixed line struck");
    }

    void cascade()
    {
        QFETCH(const QString, css);
        QFETCH(const QString, html);
        QTEST(StyledPage(css, html).look(), "look");
    }

    void colors_data()
    {
        addTexts("value", "color");
        addRow("short", "#a1f", "aa11ff");
        addRow("long", "#0a0B0c", "a0b0c");
        addRow("half transparent", "#00000080", "7f7f7f");
        addRow("transparent", "#0000", "none");
        addRow("numbers", "rgb(1, 2,3)", "10203");
        addRow("per cent", "rgb(100% 0% 50%)", "ff0080");
        addRow("with opacity", "rgba(255,0,0,.5)", "ff8080");
        addRow("hue", "hsl(120, 100%, 25%)", "8000");
        addRow("hue of blue", "hsla(240 100% 50% / 1)", "ff");
        addRow("grey", "hsl(0 0% 50%)", "808080");
        addRow("name", "rebeccapurple-", "none");
        addRow("known name", "navy", "80");
        addRow("too short", "#12", "none");
        addRow("no number", "#ggg", "none");
        addRow("nothing in it", "rgb()", "none");
        addRow("unfinished", "rgb(1,2,3", "none");
        addRow("keyword", "currentcolor", "none");
    }

    void colors()
    {
        QFETCH(const QString, value);
        const auto color = readColor(value.toStdString());
        QTEST(color ? QString::number(*color, 16) : u"none"_s, "color");
    }

    void hostile_data()
    {
        addTexts("css", "html");
        const auto repeated = [](const char* text, int count) {
            return QString::fromUtf8(text).repeated(count);
        };
        const QString nested = repeated("<div>", 5000) + u"<p id=x>t"_s;
        addRow("many rules", QString(repeated("p{color:red}", 200'000)), "<p id=x>t");
        addRow("all match all", QString(repeated("* * * *{color:red}", 2000)), nested);
        addRow("siblings", QString(repeated("i ~ i ~ i ~ i ~ b{color:red}", 500)),
               QString(repeated("<i></i>", 5000) + u"<p id=x>t"_s));
        addRow("positions", "i:nth-child(99999){color:red}",
               QString(repeated("<i></i>", 20'000) + u"<p id=x>t"_s));
        addRow("brackets", QString(repeated("(", 1'000'000)), "<p id=x>t");
        addRow("blocks", QString(repeated("@media all{", 100'000)), "<p id=x>t");
        addRow("inner selectors", QString(repeated(":not(", 100'000)), "<p id=x>t");
        addRow("compounds", QString(repeated("p ", 100'000) + u"{color:red}"_s), "<p id=x>t");
        addRow("many looks", "p{color:red}", QString(manyLooks() + u"<p id=x>t"_s));
        addRow("variables on every level", "div{--a:var(--b) 1;--b:var(--a) 2}p{color:var(--a)}", nested);
        addRow("texts on every level",
               "div::before{content:counters(n,'-') attr(x)}div{counter-reset:n 999999999}", nested);
        addRow("columns without end",
               "p{grid-template-columns:repeat(999999,repeat(999999,1fr) repeat(99,1px))}", "<p id=x>t");
        addRow("growing variables",
               ":root{--a:var(--b)var(--b);--b:var(--c)var(--c);--c:var(--a)var(--a)}p{color:var(--a)}",
               "<p id=x>t");
    }

    /// Bounded, whatever a sheet holds.
    void hostile()
    {
        QFETCH(const QString, css);
        QFETCH(const QString, html);
        QVERIFY(!StyledPage(css, html).look().contains(u"hidden"));
    }
};

QTEST_APPLESS_MAIN(StylesTest)
#include "tst_styles.moc"
