// SPDX-License-Identifier: MIT
#include "jump/fuzzypattern.h"
#include "jump/jumpline.h"
#include "testfiles.h"
#include "windowuser.h"

#include <QLabel>
#include <QListView>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The texts that match, best first; ties are decided as in the line.
QStringList ranked(const QString& query, const QStringList& texts)
{
    const FuzzyPattern pattern(query);
    std::vector<std::pair<FuzzyPattern::Rank, QString>> found;
    for (const auto& text : texts) {
        const auto rank = pattern.rank(text);
        if (rank.has_value() != pattern.matches(text)) {
            return {u"rank() and matches() differ"_s};
        }
        if (rank) {
            found.emplace_back(*rank, text);
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? b.first < a.first : a.second.size() < b.second.size();
    });
    QStringList names;
    std::transform(found.begin(), found.end(), std::back_inserter(names),
                   [](const auto& pair) { return pair.second; });
    return names;
}

/// The text with the letters that count in brackets.
QString lettersOf(const QString& query, const QString& text)
{
    QString marked = text;
    const auto letters = FuzzyPattern(query).letters(text);
    std::for_each(letters.rbegin(), letters.rend(), [&marked](int letter) {
        marked.insert(letter + 1, u']');
        marked.insert(letter, u'[');
    });
    return marked;
}

/// A query and the texts that it finds, in the order that is wanted; those behind "-" must not match.
constexpr std::array<std::pair<const char*, const char*>, 64> Rankings = {{
    {"printf", "printf|printf()|printf_unlocked|fprintf|vfprintf"},
    {"print", "print|printf|Print Preview|Page Printing|Sprinting|-|pint"},
    {"open", "open|open()|os.open|webbrowser.open|reopen"},
    {"str", "str|str.join|The str type|abstract|-|sort"},
    {"new", "new|New Features|What's New|renew|-|view"},
    {"map", "map|map()|hash_map|bitmap"},
    {"size", "size|size()|font-size|resize|-|sine"},
    {"hashm", "HashMap|ConcurrentHashMap|hash table and map"},
    {"chm", "ConcurrentHashMap|Searching them|-|HashMap"},
    {"ftm", "findTopMost|fitment|-|form"},
    {"qsl", "QStringList|quick sort list|-|QString"},
    {"qstrl", "QStringList|QStringListModel"},
    {"gtkw", "GtkWidget|gtk_show_uri_on_window"},
    {"gw", "GtkWidget|gtk_widget|regrowth"},
    {"gws", "gtk_widget_show|GtkWidget:sensitive|-|GtkWidget"},
    {"osp", "ospf|os.path|os.path.join|-|os"},
    {"pathj", "path joining|os.path.join|-|path"},
    {"os.path", "os.path|os.path.join|The os.path module"},
    {"std::v", "std::visit|std::vector|std::vector<bool>"},
    {"vec", "vec|vector|std::vector|convection"},
    {"ce", "ce|cells|create_entry|replace"},
    {"fo", "fo|Fonts|Find Options|info"},
    {"fp", "fp|fprintf|file_path|Find in a page|-|if"},
    {"fip", "find_in_page|Flip|-|Find"},
    {"prev", "prev|Preview|Print Preview|Spreadview"},
    {"pp", "ppc|Print Preview|Application|-|Preview"},
    {"preview print", "Print Preview|Preview before printing|-|Preview"},
    {"join path", "path join|os.path.join|-|join"},
    {"con var", "con var|Context Variables|std::condition_variable|-|variables"},
    {"http error", "HTTP Error|HTTP status codes and errors|urllib.error.HTTPError|-|error"},
    {"sele where", "SELECT … WHERE|Selecting rows: the WHERE clause|-|SELECT"},
    {"hb", "hb|Home Base|hash_buckets|rhubarb"},
    {"xml", "xml|XMLReader|XML Parser|libxml|-|html"},
    {"xmlr", "XMLReader|xml.sax.xmlreader|-|XML"},
    {"io", "io|io.open|Input/Output|fio"},
    {"json", "json|json.dumps|JSON Functions|The json Module"},
    {"jd", "json.dumps|JSON Documents|adjusted|-|json"},
    {"async", "async|asyncio|async def|The async keyword"},
    {"aio", "aiofiles|asyncio|Aspect ratio"},
    {"utf8", "UTF8|Utf8Codec|utf8_encode|UTF-8|-|UTF-16"},
    {"8", "8|UTF-8|base8"},
    {"vacuum", "VACUUM|vacuumdb|VACUUM ANALYZE|Autovacuum|-|vacancy"},
    {"createidx", "CREATE INDEX|-|CREATE"},
    {"crin", "CRIN|Create Index|Creating a new table|-|CREATE"},
    {"ci", "ci|circle|Create Index|Social"},
    {"e", "e|end|Elephant|The end|the"},
    {"a", "a|as|Abstract|The a|Data"},
    {"été", "été|Été indien|complété"},
    {"ete", "été|Été indien|complété"},
    {"ubung", "Übung|Übungen|Die Übung"},
    {"ёлка", "елка|Новая ёлка|-|ель"},
    {"печать", "Печать|Печать страниц|Предварительная печать"},
    {"画像", "画像|画像の回転|ラスタ画像|-|画家"},
    {"__init__", "__init__|object.__init__|-|init"},
    {"op<<", "op<<|operator<<|-|operator"},
    {"--no", "--no-owner|pg_dump --no-owner|-|no"},
    {"git com", "git com|git-commit|git-commit-tree|-|commit"},
    {"gitst", "git-stash|git-status|Digital storage"},
    {"ios", "ios|iOS|basic_ios|audio stream"},
    {"iOS", "iOS|ios|basic_ios"},
    {"QList", "QList|QListView|qlist.h|qlistview.h"},
    {"Map", "Map|map|Map.of|map.of"},
    {"zzz", "-|zz|pizza"},
    {"longer than any", "-|longer"},
}};

constexpr auto Sets = R"(== a.cnt
:title=First
:index=a.idx
Start=a1.html
Printing=book.html
 Paper Sizes=a2.html
 Preview=a3.html
Spelling=a4.html
== a.idx
printf()=a2.html
shared=a1.html#one
envelope=a3.html
== b.cnt
:title=Second
:index=b.idx
Overview=b1.html
 Paper Sizes=b2.html
== b.idx
shared=b1.html
== a1.html
<h1>Start</h1><h2 id="one">Quick brown fox</h2><p>text</p>
== a2.html
<p>sizes</p>
== a3.html
<p>preview</p>
== a4.html
<p>spelling</p>
== book.html
<p>book</p>
== b1.html
<p>b1</p>
== b2.html
<p>b2</p>
)";

struct Fixture : WindowUser {
    Fixture()
    {
        for (const auto& name : {u"a.cnt"_s, u"b.cnt"_s}) {
            window().insertContents(files.path(name));
        }
        window().gotoFirstPage();
        waitUntilLoaded();
    }

    QListView& jump(const QString& query)
    {
        trigger("goJumpAction");
        QTest::keyClicks(the<JumpLine>().focusProxy(), query);
        return *the<JumpLine>().findChild<QListView*>();
    }
    QStringList jumpTexts(const QString& query)
    {
        const auto& list = jump(query);
        QStringList texts;
        for (int i = 0; i < list.model()->rowCount(); ++i) {
            texts.append(list.model()->index(i, 0).data(Qt::AccessibleTextRole).toString());
        }
        return texts;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(the<JumpLine>().focusProxy(), key, modifiers);
    }
    QString page()
    {
        return browser().getCurrentLink() == nullptr ? QString()
                                                     : browser().getCurrentLink()->page().section(u'/', -1);
    }

    TemporaryFiles files{Sets};
};

} // namespace

class TestJump : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ranking_data();
    void ranking();
    void letters_data();
    void letters();
    void narrower_data();
    void narrower();
    void listed_data();
    void listed();
    void enterOpens();
    void keywordsWithSeveralTopics();
    void escapeGoesBack();
    void readLately();
    void removedUnderIt();
    void loadedUnderIt();
    void isNeverCut();
};

void TestJump::ranking_data()
{
    QTest::addColumn<QStringList>("texts");
    for (const auto& [query, texts] : Rankings) {
        QTest::newRow(query) << QString::fromUtf8(texts).split(u'|');
    }
}

void TestJump::ranking()
{
    QFETCH(QStringList, texts);
    const qsizetype end = texts.indexOf(u"-"_s);
    const QStringList expected = end < 0 ? texts : texts.first(end);
    std::reverse(texts.begin(), texts.end());
    QCOMPARE(ranked(QString::fromUtf8(QTest::currentDataTag()), texts), expected);
}

void TestJump::letters_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("marked");
    QTest::newRow("run") << u"int"_s << u"Pr[i][n][t]ing"_s;
    QTest::newRow("beginnings") << u"pp"_s << u"[P]rint [P]review"_s;
    QTest::newRow("humps") << u"chm"_s << u"[C]oncurrent[H]ash[M]ap"_s;
    QTest::newRow("word, not the first letters") << u"map"_s << u"a main [m][a][p]"_s;
    QTest::newRow("words in any order") << u"pre pri"_s << u"[P][r][i]nt [P][r][e]view"_s;
    QTest::newRow("signs") << u"a.b"_s << u"x[a][.][b]"_s;
    QTest::newRow("capitals in a row") << u"hp"_s << u"[H]TTP[P]arser"_s;
}

void TestJump::letters()
{
    QFETCH(QString, query);
    QFETCH(QString, marked);
    QCOMPARE(lettersOf(query, QString(marked).remove(u'[').remove(u']')), marked);
}

void TestJump::narrower_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("now");
    QTest::addColumn<bool>("isNarrower");
    QTest::newRow("one more letter") << u"pri"_s << u"prin"_s << true;
    QTest::newRow("one more word") << u"pri"_s << u"pri e"_s << true;
    QTest::newRow("one less letter") << u"pri"_s << u"pr"_s << false;
    QTest::newRow("another letter") << u"pri"_s << u"pra"_s << false;
    QTest::newRow("one less word") << u"pri e"_s << u"pri"_s << false;
}

void TestJump::narrower()
{
    QFETCH(QString, before);
    QFETCH(QString, now);
    QTEST(FuzzyPattern(now).narrows(FuzzyPattern(before)), "isNarrower");
}

void TestJump::listed_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("pap") << QStringList{u"Paper Sizes, First › Printing"_s,
                                        u"Paper Sizes, Second › Overview"_s};
    QTest::newRow("printf") << QStringList{u"printf(), Keyword · First › Paper Sizes"_s};
    QTest::newRow("shar") << QStringList{u"shared, Keyword · 2 topic(s)"_s};
    QTest::newRow("qbf") << QStringList{u"Quick brown fox, On this page"_s};
    QTest::newRow("nothing like this") << QStringList();
}

void TestJump::listed()
{
    Fixture fixture;
    QTEST(fixture.jumpTexts(QString::fromUtf8(QTest::currentDataTag())), "texts");
}

void TestJump::enterOpens()
{
    Fixture fixture;
    fixture.jump(u"paper"_s);
    fixture.press(Qt::Key_Down);
    fixture.press(Qt::Key_Return);
    QCOMPARE(fixture.page(), u"b2.html"_s);
    QVERIFY(fixture.the<JumpLine>().isHidden());
    QVERIFY(fixture.browser().hasFocus());

    fixture.trigger("viewFollowAction"); // the tree stays where it is unless it is asked to show the row
    auto& tree = fixture.the<HelpContentsListView>();
    const auto before = tree.currentIndex();
    fixture.jump(u"spel"_s);
    fixture.press(Qt::Key_Return);
    QCOMPARE(fixture.page(), u"a4.html"_s);
    QCOMPARE(tree.currentIndex(), before);
    fixture.jump(u"previ"_s);
    fixture.press(Qt::Key_Return, Qt::AltModifier);
    QCOMPARE(tree.currentIndex().data().toString(), u"Preview"_s);
}

void TestJump::keywordsWithSeveralTopics()
{
    Fixture fixture;
    fixture.leaveDialogsOpen();
    fixture.jump(u"shared"_s);
    fixture.press(Qt::Key_Return);
    auto* dialog = Fixture::openDialog<QDialog>();
    QVERIFY(dialog != nullptr);
    QCOMPARE(dialog->windowTitle(), u"Found topics"_s);
    dialog->close();
    fixture.jump(u"envel"_s);
    fixture.press(Qt::Key_Return);
    QCOMPARE(fixture.page(), u"a3.html"_s);
}

void TestJump::escapeGoesBack()
{
    Fixture fixture;
    fixture.the<HelpContentsListView>().setFocus();
    fixture.jump(u"spel"_s);
    fixture.press(Qt::Key_Escape);
    QVERIFY(fixture.the<JumpLine>().isHidden());
    QVERIFY(fixture.the<HelpContentsListView>().hasFocus());
    QCOMPARE(fixture.page(), u"a1.html"_s);
}

void TestJump::readLately()
{
    Fixture fixture;
    for (const auto& query : {u"spel"_s, u"envel"_s}) {
        fixture.jump(query);
        fixture.press(Qt::Key_Return);
    }
    QCOMPARE(fixture.jumpTexts({}),
             (QStringList{u"Spelling, Read lately · First"_s, u"Start, Read lately · First"_s,
                          u"Overview, Read lately · Second"_s}));
    fixture.press(Qt::Key_Return);
    QCOMPARE(fixture.page(), u"a4.html"_s);
}

void TestJump::removedUnderIt()
{
    Fixture fixture;
    fixture.jump(u"paper"_s);
    const auto roots = fixture.library().roots();
    fixture.window().removeContents(roots.front()->menuId);
    QVERIFY(fixture.the<JumpLine>().isHidden());
    QCOMPARE(fixture.jumpTexts(u"pap"_s), QStringList{u"Paper Sizes, Second › Overview"_s});
}

/// What comes while one types is found, too; the row that was chosen stays so.
void TestJump::loadedUnderIt()
{
    Fixture fixture;
    fixture.files.write(u"c.cnt"_s, ":title=Third\n:index=c.idx\nPaper Money=c.html\n");
    fixture.files.write(u"c.idx"_s, "paper=c.html\npapyrus=c.html\n");
    fixture.files.write(u"c.html"_s, "<p>c");
    auto& list = fixture.jump(u"pap"_s);
    fixture.press(Qt::Key_Down);
    fixture.window().insertContents(fixture.files.path(u"c.cnt"_s));
    fixture.waitUntilLoaded();
    QCOMPARE(list.model()->rowCount(), 5);
    QCOMPARE(list.currentIndex().data(Qt::AccessibleTextRole).toString(),
             u"Paper Sizes, Second › Overview"_s);
    QTest::keyClicks(fixture.the<JumpLine>().focusProxy(), u"y"_s);
    fixture.press(Qt::Key_Return);
    QCOMPARE(fixture.page(), u"c.html"_s);
}

void TestJump::isNeverCut()
{
    Fixture fixture;
    for (const auto& size : {QSize(360, 400), QSize(900, 620), QSize(2560, 1400)}) {
        fixture.window().resize(size);
        for (const auto& query : {QString(), u"p"_s, u"nothing like this"_s}) {
            fixture.jump(query);
            const auto& line = fixture.the<JumpLine>();
            QVERIFY(fixture.window().rect().contains(line.geometry()));
            for (const auto* part : line.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                QVERIFY(part->isHidden() || line.rect().contains(part->geometry()));
            }
            const auto* hint = line.findChild<QLabel*>();
            QVERIFY(hint->isHidden() || hint->height() >= hint->heightForWidth(hint->width()));
            fixture.press(Qt::Key_Escape);
        }
    }
}

QTEST_MAIN(TestJump)
#include "tst_jump.moc"
