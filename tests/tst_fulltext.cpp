// SPDX-License-Identifier: MIT
#include "fulltext/helpsetindex.h"
#include "fulltext/indexfile.h"
#include "fulltext/matchranges.h"
#include "fulltext/searchcache.h"
#include "fulltext/searchengine.h"
#include "fulltext/searchservice.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "pages/pagepreparation.h"
#include "pages/plainpage.h"
#include "search/searchsources.h"
#include "system/filelock.h"

#include "testfiles.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>

#include <sqlite3.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Patience = 60'000; // ms; indexes are made with the lowest priority

SearchSource sourceOf(const QString& contentsFile)
{
    HelpLibrary library;
    const auto loaded = library.loadContents(contentsFile, nullptr);
    return makeSearchSource(library.helpSet(*loaded.root));
}

/// Help sets on disk with a cache of their own.
class Searched {
public:
    explicit Searched(const QByteArray& files) : m_files(files)
    {
        qputenv("XDG_CACHE_HOME", m_files.path(u"cache"_s).toUtf8());
    }

    IndexingResult update(const QString& contentsFile = u"a.cnt"_s)
    {
        const auto source = std::make_shared<SearchSource>(sourceOf(m_files.path(contentsFile)));
        return indexHelpSet(
            source, {}, [](qint64, qint64) {},
            [this](const SearchableSet& set) {
                m_set = set;
                m_engine.add(set);
            });
    }
    SearchAnswer search(const QString& query, bool isTyping = false, const QStringList& languages = {})
    {
        return m_engine.search({query, {}, 50, isTyping, languages}, {}).value_or(SearchAnswer{});
    }
    /// Names of the pages found, best first.
    QString pages(const QString& query, bool isTyping = false, const QStringList& languages = {})
    {
        QStringList names;
        for (const auto& hit : search(query, isTyping, languages).hits) {
            names += QFileInfo(hit.page).fileName().remove(u".html"_s);
        }
        return names.join(u' ');
    }
    [[nodiscard]] QString database() const
    {
        QDirIterator files(m_files.path(u"cache"_s), {u"*.search"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        return files.hasNext() ? files.next() : QString();
    }
    [[nodiscard]] TemporaryFiles& files() { return m_files; }
    [[nodiscard]] bool isInMemory() const { return m_set.inMemory != nullptr; }
    /// What update() led to last.
    [[nodiscard]] const SearchableSet& set() const { return m_set; }

private:
    TemporaryFiles m_files;
    SearchEngine m_engine;
    SearchableSet m_set;
};

/// A help set with one page.
QByteArray onePage(const QString& html)
{
    return "== a.cnt\n:title = A\nPage = a.html\n== a.html\n" + html.toUtf8();
}

QString marked(const QString& text, const std::vector<TextRange>& ranges)
{
    QString result;
    qsizetype end = 0;
    for (const auto& range : ranges) {
        result += text.mid(end, range.start - end);
        end = range.start + range.length;
        result += u'[' + text.mid(range.start, range.length) + u']';
    }
    return result + text.mid(end);
}

QStringList wordsOf(const QString& text)
{
    return text.split(QRegularExpression(u"\\W+"_s, QRegularExpression::UseUnicodePropertiesOption),
                      Qt::SkipEmptyParts);
}

} // namespace

class FulltextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void relevance_data()
    {
        addTexts("query", "first");
        addRow("title beats body", "painting", "title");
        addRow("keyword beats heading", "cutting", "keyword");
        addRow("heading beats body", "gluing", "heading");
        addRow("phrase beats words", "paper boat", "phrase");
        addRow("rare beats common", "common rarity", "rare");
        addRow("exact title beats longer ones", "fold", "fold");
        addRow("place in a page", "valley crease", "keyword.html#valley");
    }

    void relevance()
    {
        QFETCH(const QString, query);
        QFETCH(const QString, first);
        Searched searched(
            "== a.cnt\n:title = Paper\n:index = a.idx\nBook\n Painting = title.html\n"
            " Work = keyword.html\n  Valley crease = keyword.html#valley\n Work = heading.html\n"
            " Work = phrase.html\n Work = words.html\n Work = rare.html\n Fold = fold.html\n"
            " How to fold and fold = long.html\n"
            "== a.idx\ncutting = keyword.html\n"
            "== title.html\n<p>a common text\n"
            "== keyword.html\n<p>a valley crease, a common text about painting painting\n"
            "== heading.html\n<h2>Cutting and gluing</h2><p>a common text about cutting\n"
            "== phrase.html\n<p>a common text: a paper boat, gluing gluing gluing\n"
            "== words.html\n<p>a common boat of any paper, paper, paper and valley boat, boat\n"
            "== rare.html\n<p>rarity\n"
            "== fold.html\n<p>fold\n"
            "== long.html\n<p>fold fold fold fold crease crease valley\n");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const auto pages = searched.pages(query);
        QVERIFY2(pages.startsWith(first.section(u'.', 0, 0)), qPrintable(pages));
        const auto hit = searched.search(query).hits.front();
        QVERIFY(hit.page.endsWith(first) || !first.contains(u'.'));
        QCOMPARE(hit.helpSet, u"Paper"_s);
        QCOMPARE(hit.path, QStringList(u"Book"_s));
    }

    void found_data()
    {
        addTexts("text", "queries", "others"); // separated by " / "
        addRow("letter case and accents", "Caf\u00E9 NA\u00CFVE stra\u00DFe \u0395\u03BB\u03BB\u03AC\u03C2",
               "cafe / CAFE\u0301 / na\u00EFve / strasse / \u03B5\u03BB\u03BB\u03B1\u03C3", "cafes");
        addRow("word forms", "the managers of windows are running with the cities and that is for them",
               "manager / managing / window / run / city",
               R"(wind / managerial / cit / "window" / "manager")");
        addRow("no word forms elsewhere", "<html lang=de>die Fenster der Windows", "fenster / windows",
               "window");
        addRow("names", "QTextBrowser set_encoding std::vector os.path.join() __init__ utf8",
               "QTextBrowser / qtextbrowser / browser / \"text browser\" / set_encoding / encoding / "
               "std::vector / "
               "vector / os.path.join / path / join() / __init__ / init / utf8",
               "set_encode / std::list / tex / \"browser text\"");
        addRow("signs", "use C++ or operator= with --install and -x, F# too; a-b",
               "C++ / operator= / --install / install / F# / a-b", "C# / operator+ / --instal");
        addRow("Chinese, Japanese, Korean",
               "\u6211\u5011\u5B78\u7FD2\u4E2D\u6587\u3002\u65E5\u672C\u8A9E\u306E \uD55C\uAD6D\uC5B4",
               "\u5B78\u7FD2 / \u4E2D / \u5B78\u7FD2\u4E2D\u6587 / \u672C\u8A9E / \uAD6D\uC5B4",
               "\u5B78\u4E2D / \u6587\u65E5 / \u8A9E\uD55C");
        addRow("text in words only", "a<b>b</b>c<p>d</p>e", "abc / d / e", "b / cd");
        addRow(
            "not indexed",
            "<style>x1{}</style><script>x2()</script><p hidden>x3<p>x4<nav><a href=q>x5</a></nav><!-- x6 -->",
            "x4", "x1 / x2 / x3 / x5 / x6");
        addRow("phrases", "one two three two one", R"("two three" / "two one" / "one two three two one")",
               R"("one three" / "three one")");
        addRow("excluded", "one two three", "one -four / -four one / one -\"two one\"",
               "one -two / one -\"two three\" / -two one");
        addRow("alternatives and beginnings", "one twofold three",
               "one OR four / four | three / two* / tw* one / one OR",
               "two / four OR five / one fou* / fold");
        addRow("signs of other syntaxes", "one two AND NOT near a:b",
               "( one / one) / {one} two / one AND two / a:b / ^one / one+two / * one / one ** / "
               "one ; two / 'one' / one\\ / title:one OR one / \"two / one -- two / OR one / one - two",
               "near/2 / near(one two) / one^2 / column:three / one -two -near / NOT: x");
        addRow("nothing to look for", "one", "one",
               "\" / \"\" / - / * / OR / ( / -- / | / -\" / \u0301 / ** / \"*\"");
    }

    void found()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, queries);
        QFETCH(const QString, others);
        Searched searched(onePage(u"<meta charset=utf-8>"_s + text));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        for (const auto& query : queries.split(u" / "_s)) {
            QVERIFY2(searched.search(query).total == 1, qPrintable(query));
        }
        for (const auto& query : others.split(u" / "_s)) {
            QVERIFY2(searched.search(query).total == 0, qPrintable(query));
        }
    }

    /// What a query means is what its reader would mean; the first page found is the one wanted.
    void meaning_data()
    {
        addTexts("set", "query", "first");
        const QString signs = u"== a.cnt\nArrow = a.html\nFormat = b.html\nOther = c.html\n"
                              "== a.html\n<p>The operator ->> gives text, ls -l lists. a->b x--y\n"
                              "== b.html\n<p>Use %s or println!(x) with s, l and ls. The #include line\n"
                              "== c.html\n<p>println and include s l list ls ls ls"_s;
        addRow("an operator", signs, u"->>"_s, u"a"_s);
        addRow("a sign before a name", signs, u"%s"_s, u"b"_s);
        addRow("a sign behind a name", signs, u"println!"_s, u"b"_s);
        addRow("a directive", signs, u"#include"_s, u"b"_s);
        addRow("signs that no page has", signs, u"@include"_s, u"c b"_s);
        addRow("an option", signs, u"ls -l"_s, u"a"_s);
        addRow("excluding all the same", signs, u"ls -\"lists\""_s, u"c b"_s);
        addRow("no option", signs, u"ls -gives"_s, u"c b"_s);
        addRow("between names", signs, u"\"->\""_s, u""_s);
        const QString names = u"== a.cnt\n:index = a.idx\nThread = t.html\nTimer = o.html\nHashMap = h.html\n"
                              "ConcurrentHashMap = c.html\n5.2. Write-Ahead Logging = w.html\n"
                              "std::box<T, A> = x.html\nstd::box<T, A>::box = y.html\n== a.idx\n"
                              "sleep(long) - Method in class java.lang.Thread = t.html#sleep\n"
                              "sleep(int) - Method in class Timer = o.html#sleep\n"
                              "== t.html\n<p>threads\n== o.html\n<p>Thread.sleep Thread.sleep thread sleep\n"
                              "== h.html\n<p>maps\n== c.html\n<p>hash map, hash map, hash map\n"
                              "== w.html\n<p>logs\n== x.html\n<p>a box\n== y.html\n<p>box box makes a box"_s;
        addRow("a member of a class", names, u"Thread.sleep"_s, u"t.html#sleep o.html#sleep"_s);
        addRow("a member with arguments", names, u"Thread.sleep(long)"_s, u"t.html#sleep"_s);
        addRow("a name without blanks", names, u"hash map"_s, u"h c"_s);
        addRow("initials", names, u"WAL"_s, u"w"_s);
        addRow("what it belongs to before a member", names, u"box"_s, u"x y"_s);
        const QString languages =
            u"== a.cnt\nA = a.html\nB = b.html\nC = c.html\nD = d.html\n"
            "== a.html\n<html lang=ru><p>\u0441\u043B\u043E\u0438 \u0438 \u043C\u0430\u0441\u043A\u0438\n"
            "== b.html\n<html lang=de><p>die H\u00E4user der Ebenen\n"
            "== c.html\n<html lang=ja><p>\u753B\u50CF\u3092\u56DE\u8EE2 \u30DC\u30BF\u30F3\n"
            "== d.html\n<html lang=ja><p>\u30DB\u30C6\u30EB \u753B\u50CF"_s;
        addRow("Russian forms", languages, u"\u043C\u0430\u0441\u043A\u0430"_s, u"a"_s);
        addRow("German forms", languages, u"Ebene"_s, u"b"_s);
        const QString related = u"== a.cnt\nInstallation of parts = a.html\nOther = b.html\n"
                                "== a.html\n<html lang=en><p>How it is done.\n"
                                "== b.html\n<html lang=en><p>The installer asks.\n"_s;
        addRow("a title of the same origin", related, u"installer"_s, u"a b"_s);
        const QString near =
            u"== a.cnt\nA = a.html\nB = b.html\n== a.html\n<p>merge one two three four five six "
            "seven into this branch\n== b.html\n<p>branch to merge, one two three four five six"
            " seven eight\n"_s;
        addRow("words near each other", near, u"merge branch"_s, u"b a"_s);
        addRow("a Japanese compound", languages, u"\u753B\u50CF\u306E\u56DE\u8EE2"_s, u"c"_s);
        addRow("four characters, two words", languages, u"\u753B\u50CF\u56DE\u8EE2"_s, u"c"_s);
        addRow("half width", languages, u"\uFF8E\uFF9E\uFF80\uFF9D"_s, u"c"_s);
        addRow("voiced is not unvoiced", languages, u"\u30DB"_s, u"d"_s);
    }

    /// Names are looked for where pages and places have them, whatever their texts say.
    void names_data()
    {
        addTexts("set", "query", "first");
        const QString members =
            u"== a.cnt\n:index = a.idx\nBuilt-in Types = types.html\nos.path \u2014 names = os.html\n"
            "HashMap = maps.html\nQueries = query.html\n== a.idx\nget() (dict method) = types.html#dict.get\n"
            "get() (list method) = types.html#list.get\njoin() (in module os.path) = os.html#os.path.join\n"
            "compute(K) = maps.html#compute\nfilter() (Set method) = query.html#x1\n"
            ":\uFF1D (colon equals) = query.html#walrus\n"
            "== types.html\n<p>kinds\n== os.html\n<p>paths\n== maps.html\n<p>maps\n"
            "== query.html\n<p>dict.get list.get join compute filter, a := b\n"_s;
        addRow("said by the anchor", members, u"dict.get"_s, u"types.html#dict.get"_s);
        addRow("another place of the page", members, u"list.get"_s, u"types.html#list.get"_s);
        addRow("in a page that is called so", members, u"os.path.join"_s, u"os.html#os.path.join"_s);
        addRow("with a blank", members, u"hashmap compute"_s, u"maps.html#compute"_s);
        addRow("said by the explanation", members, u"Set.filter"_s, u"query.html#x1"_s);
        addRow("signs of full width", members, u":="_s, u"query.html#walrus"_s);
        QString alike = u"== a.cnt\ngitglossary(7) = g.html\nManual = m.html\n"_s;
        QString parts = u"== g.html\n<p>terms\n== m.html\n<p>The glossary is a glossary."_s;
        for (int i = 0; i < 9; ++i) {
            alike += u"git-part%1(1) = p%1.html\n"_s.arg(i);
            parts += u"\n== p%1.html\n<p>a part"_s.arg(i);
        }
        alike += parts;
        addRow("behind what all begin with", alike, u"glossary"_s, u"g.html"_s);
        addRow("with it", alike, u"git part3"_s, u"p3.html"_s);
        const QString files = u"== a.cnt\nInclusion = pre/include.html\nOther = other.html\n"
                              "Copies = clone/index.html\n== pre/include.html\n<p>We include files.\n"
                              "== other.html\n<p>include files, clone pages\n== clone/index.html\n"
                              "<p>how to clone pages, in so many words\n"_s;
        addRow("of a file", files, u"include"_s, u"include.html"_s);
        addRow("of a directory", files, u"clone"_s, u"index.html"_s);
    }

    void names()
    {
        QFETCH(const QString, set);
        QFETCH(const QString, query);
        QFETCH(const QString, first);
        Searched searched(set.toUtf8());
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const auto answer = searched.search(query);
        QVERIFY(!answer.hits.empty());
        const QString page = answer.hits.front().page;
        QCOMPARE(page.sliced(page.lastIndexOf(u'/') + 1), first);
    }

    /// Pages that say nothing of their language may be called after it, translated or not.
    void languageOfFiles_data()
    {
        addTexts("first", "second");
        addRow("directories", u"de-DE/p.html"_s, u"en-US/p.html"_s);
        addRow("two letters", u"de/html/p.html"_s, u"en/html/p.html"_s);
        addRow("files", u"p.de.html"_s, u"p.en.html"_s);
        addRow("a language of few pages", u"de/p.html"_s, u"pl_PL/p.html"_s);
    }

    void languageOfFiles()
    {
        QFETCH(const QString, first);
        QFETCH(const QString, second);
        Searched searched(
            u"== a.cnt\nTopic = %2\nTopic = %1\n== %1\n<p>IPv6 topic\n== %2\n<p>IPv6 topic, IPv6"_s
                .arg(first, second)
                .toUtf8());
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const auto hits = searched.search(u"IPv6"_s, false, {u"de"_s}).hits;
        QCOMPARE(hits.size(), size_t(2));
        QVERIFY(hits.front().page.endsWith(first));
    }

    void meaning()
    {
        QFETCH(const QString, set);
        QFETCH(const QString, query);
        QFETCH(const QString, first);
        Searched searched(set.toUtf8());
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const auto answer = searched.search(query);
        QStringList names;
        for (const auto& hit : answer.hits) {
            names += hit.page.sliced(hit.page.lastIndexOf(u'/') + 1)
                         .replace(QRegularExpression(u"\\.html$"_s), {});
        }
        QCOMPARE(names.join(u' '), first);
        QCOMPARE(answer.total, names.size());
    }

    /// Pages lack the small words of a question, not those that say something.
    void questions()
    {
        QByteArray set = "== a.cnt\nEnvelopes = e.html\nPrinting = p.html\n";
        for (int i = 0; i < 20; ++i) {
            set += "Page " + QByteArray::number(i) + " = n" + QByteArray::number(i) + ".html\n";
        }
        set += "== e.html\n<p>To print an envelope, choose it\n== p.html\n<p>how do we print\n";
        for (int i = 0; i < 20; ++i) {
            set += "== n" + QByteArray::number(i) + ".html\n<p>how do I find an x" + QByteArray::number(i) +
                   "\n";
        }
        Searched searched(set);
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QCOMPARE(searched.pages(u"how do I print an envelope"_s).section(u' ', 0, 0), u"e"_s);
        QVERIFY(!searched.pages(u"how do I print an envelope"_s).contains(u"n1"));
    }

    /// A hit leads to where its text stands, and is not told by what only links to it.
    void sections()
    {
        Searched searched(
            "== a.cnt\nA = a.html\nSame = b.html\nCopy = c.html\n== a.html\n<h1>Top</h1><ul><li><a "
            "href=x>valley "
            "crease</a><li><a href=y>more</a></ul><h2 id=folds>Folds</h2><p>Some words here.</p><h3 "
            "id=v>Valley</h3>"
            "<p>This is a long enough line. A valley crease goes down, as everybody knows by now.</p>\n"
            "== b.html\n<p>apple\n== c.html\n<p>apple");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const auto hit = searched.search(u"valley crease"_s).hits.front();
        QVERIFY2(hit.page.endsWith(u"a.html#v"), qPrintable(hit.page));
        QCOMPARE(hit.section, (QStringList{u"Folds"_s, u"Valley"_s}));
        QVERIFY2(hit.snippet.startsWith(u"A valley crease"), qPrintable(hit.snippet));
        const auto copies = searched.search(u"copy"_s).hits;
        QCOMPARE(copies.size(), 1U);
        QVERIFY(copies[0].page.endsWith(u"c.html"));
        QCOMPARE(copies[0].copies.size(), 1);
    }

    void readersLanguage()
    {
        Searched searched("== a.cnt\nA = a.html\nB = b.html\n== a.html\n<html lang=en><p>LDAP LDAP\n"
                          "== b.html\n<html lang=de-AT><p>LDAP und mehr");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QCOMPARE(searched.pages(u"ldap"_s, false), u"a b"_s);
        QCOMPARE(searched.pages(u"ldap"_s, false, {u"de-DE"_s}), u"b a"_s);
    }

    void typing()
    {
        Searched searched(onePage(u"the window manager of std::vectors"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        for (const auto& query : {u"window manag"_s, u"wind"_s, u"std::vec"_s, u"\"window man"_s}) {
            QVERIFY2(searched.search(query, true).total == 1, qPrintable(query));
        }
        QCOMPARE(searched.search(u"manag windo"_s, true).total, 1);
        QCOMPARE(searched.search(u"windo manager"_s, true).total, 0);
        QCOMPARE(searched.search(u"wind "_s, true).total, 0);
    }

    void marks_data()
    {
        addTexts("query", "text");
        addRow("words and forms", "window manag",
               "the [Windows] and [managers], no \u201Cmanuals\u201D: [window]");
        addRow("phrases", "\"a b\" c", "[c] a [A b] b a");
        addRow("excluded", "one -two", "[one] two");
        addRow("accents and wide characters", "cafe", "\U0001F600 [Cafe\u0301] [CAF\u00C9S]");
        addRow("names", "set_encoding vector", "[set_encoding] std::[vector] set encoding");
        addRow("pairs", "\u65E5\u672C\u8A9E", "x[\u65E5\u672C\u8A9E]x\u65E5\u672C");
    }

    void marks()
    {
        QFETCH(const QString, query);
        QFETCH(QString, text);
        const QString expected = text;
        text.remove(u'[').remove(u']');
        QCOMPARE(marked(text, matchRanges(query, text, u"en"_s)), expected);
    }

    void snippets()
    {
        Searched searched(onePage(u"<title>T</title><p>"_s + u"filler "_s.repeated(200) +
                                  u"the &lt;b&gt;needle\u0007 &amp;amp; <b>thread</b>\n"_s +
                                  u"filler "_s.repeated(200) + u"needle"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const auto hit = searched.search(u"needle thread"_s).hits.at(0);
        const QString text = marked(hit.snippet, hit.marks);
        QVERIFY2(text.contains(u"the <b>[needle] &amp; [thread] filler"_s), qPrintable(text));
        QVERIFY(text.startsWith(u"\u2026 "_s) && text.endsWith(u" \u2026"_s) && text.size() < 300);
    }

    void titles()
    {
        Searched searched(
            "== a.cnt\n:title = <i>A\nBook\n <b>Inner\n  <u>x</u> = a.html\n  Place = b.html#p\n c = "
            "c.html#q\n"
            "== a.html\n<p>word a\n== b.html\n<title> Own\n title </title><p>word b\n== c.html\n<p>word c");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QStringList found;
        for (const auto& hit : searched.search(u"word"_s).hits) {
            found += hit.title + u" in "_s + hit.path.join(u'>') + u" of "_s + hit.helpSet;
        }
        found.sort();
        QCOMPARE(found, QStringList({u"<u>x</u> in Book><b>Inner of <i>A"_s,
                                     u"Own title in Book><b>Inner of <i>A"_s, u"c in Book of <i>A"_s}));
    }

    /// A keyword or a row that leads to a place in a page takes the reader there.
    void places()
    {
        Searched searched("== a.cnt\n:index = a.idx\nPage = d#/a.html\nRidge fold = d#/a.html#folds/ridge\n"
                          "== a.idx\nvalley crease = d#/a.html#b/c#d\n== d#/a.html\n<p>some words");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        for (const auto& [query, place] : {std::pair(u"ridge fold"_s, u"d#/a.html#folds/ridge"_s),
                                           std::pair(u"valley crease"_s, u"d#/a.html#b/c#d"_s),
                                           std::pair(u"some words"_s, u"d#/a.html"_s)}) {
            const auto hits = searched.search(query).hits;
            QCOMPARE(hits.size(), 1U);
            QVERIFY2(hits[0].page.endsWith(u'/' + place), qPrintable(hits[0].page));
            QVERIFY(hits[0].snippet.contains(u"some words"));
        }
    }

    void nearest_data()
    {
        addTexts("query", "nearest");
        addRow("near spelling", "create tabel", "create table");
        addRow("first letters exchanged", "rceate", "create");
        addRow("a word less", "create table unheard", "create table");
        addRow("any word", "unheard unseen thing create", "thing OR create");
        addRow("unfinished words", "crea tab", "crea* tab*");
        addRow("nothing near", "unheard", "");
        addRow("exclusions stay", "tabel -view", "table -view");
    }

    void nearest()
    {
        QFETCH(const QString, query);
        QFETCH(const QString, nearest);
        Searched searched("== a.cnt\nA = a.html\nB = b.html\nC = c.html\n== a.html\n<p>create table\n"
                          "== b.html\n<p>table view thing\n== c.html\n<p>table thing");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const auto answer = searched.search(query);
        QCOMPARE(answer.nearest, nearest);
        QVERIFY(answer.total == 0 && answer.nearestTotal == qint64(answer.hits.size()));
        QCOMPARE(answer.hits.empty(), nearest.isEmpty());
    }

    void upkeep()
    {
        Searched searched("== a.cnt\nFirst = a.html\nSecond = b.html\nSame = c.html\nGone = no.html\n"
                          "== a.html\n<p>apple\n== b.html\n<p>banana\n== c.html\n<p>banana");
        QCOMPARE(searched.update().errors, QStringList());
        QCOMPARE(searched.search(u"banana"_s).total, 1); // one of two copies
        auto& files = searched.files();
        files.write(u"a.html"_s, "<p>cherry!");
        QVERIFY(QFile::remove(files.path(u"b.html"_s)));
        files.write(u"a.cnt"_s, "First = a.html\nThird = c.html\nFourth = d.html");
        files.write(u"d.html"_s, "<p>apricot");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const QStringList expected{u""_s, u"a"_s, u"c"_s, u""_s, u"c"_s, u"d"_s};
        QStringList found;
        for (const auto& query :
             {u"apple"_s, u"cherry"_s, u"banana"_s, u"second"_s, u"third"_s, u"apricot"_s}) {
            found += searched.search(query).total == 0 ? u""_s : searched.pages(query);
        }
        QCOMPARE(found, expected);
    }

    void linkedPages_data()
    {
        addTexts("files", "found");
        addRow("from page to page",
               "== a.html\n<a href=b.html>b</a>== b.html\nneedle <a href='sub/c.html#x'>"
               "== sub/c.html\nneedle <a href=../d%20d.html?q>\n== d d.html\nneedle",
               "b c d d");
        addRow("in what the reading view leaves out",
               "== a.html\n<html><body><nav><a href=b.html>b</a></nav><main><p>Long text</main>== "
               "b.html\nneedle",
               "b");
        addRow("areas, frames and folders",
               "== a.html\n<map><area href=b.html></map><iframe src=c.html></iframe><a href=sub/>== "
               "b.html\nneedle"
               "== c.html\nneedle== sub/index.html\nneedle",
               "b c index");
        addRow("not outside, no other files, not what is missing",
               "== a.html\n<a href=../o.html><a href=b.txt><a href=none.html><a href=http://x/b.html>"
               "<a href=out.html><a href='javascript:b.html'>== ../o.html\nneedle== b.txt\nneedle== "
               "b.html\nneedle",
               "");
        addRow("round and round",
               "== a.html\n<a href=b.html>== b.html\nneedle <a href=loop/b.html><a href=a.html>", "b");
        addRow("by the base of a page", "== a.html\n<base href=sub/><a href=b.html>== sub/b.html\nneedle",
               "b");
        addRow("where the pages are that the contents name elsewhere",
               "== a.cnt\nFirst = ../far/a/a.html\nSecond = ../far/b.html\n== ../far/a/a.html\n<a "
               "href=../c.html><a href=../../o.html>"
               "== ../far/b.html\n== ../far/c.html\nneedle== ../o.html\nneedle",
               "c");
        addRow("nobody leads there", "== a.html\nneedle== b.html\nneedle", "a");
    }

    /// What one can click to is found, though the contents do not name it.
    void linkedPages()
    {
        QFETCH(const QString, files);
        QFETCH(const QString, found);
        Searched searched("== set/a.cnt\nFirst = a.html");
        for (const auto& file : files.split(u"== "_s, Qt::SkipEmptyParts)) {
            const QString name = file.section(u'\n', 0, 0);
            searched.files().write(u"set/"_s + name, (file.section(u'\n', 1) + u"<p>" + name).toUtf8());
        }
        QVERIFY(QFile::link(u"."_s, searched.files().path(u"set/loop"_s)));
        QVERIFY(QFile::link(u"../o.html"_s, searched.files().path(u"set/out.html"_s)));
        QCOMPARE(searched.update(u"set/a.cnt"_s).errors, QStringList());
        QStringList names = searched.pages(u"needle"_s).replace(u"d d"_s, u"d_d"_s).split(u' ');
        names.sort();
        QCOMPARE(names.join(u' ').replace(u"d_d"_s, u"d d"_s), found);
    }

    /// Pages that nothing names come and go with the links to them, and with their names.
    void upkeepOfLinkedPages()
    {
        Searched searched("== a.cnt\nFirst = a.html\nSecond = b.html\n== a.html\n<a href=c.html>c</a>\n"
                          "== b.html\nberry <a href=c.html>\n== c.html\n<title>Cherries</title>"
                          "cherry <a href=d.html>\n== d.html\ndate");
        auto& files = searched.files();
        const auto compare = [&](const QString& expected) {
            QCOMPARE(searched.update().errors, QStringList());
            QStringList pages;
            for (const auto& query : {u"berry"_s, u"cherry"_s, u"date"_s, u"elder"_s}) {
                pages += searched.search(query).total == 0 ? u"-"_s : searched.pages(query);
            }
            QCOMPARE(pages.join(u' '), expected);
        };
        compare(u"b c d -"_s);
        const auto hit = searched.search(u"cherry"_s).hits.front();
        QCOMPARE(hit.title + hit.path.join(u'/'), u"Cherries"_s);
        files.write(u"d.html"_s, "<p>elder");
        compare(u"b c - d"_s);
        files.write(u"c.html"_s, "<p>cherry, but no link");
        compare(u"b c - -"_s);
        files.write(u"a.cnt"_s, "First = a.html\nThird = c.html");
        compare(u"- c - -"_s);
        files.write(u"a.html"_s, "<a href=b.html>");
        compare(u"b c - -"_s);
        files.write(u"a.cnt"_s, "First = b.html");
        compare(u"b c - -"_s);
    }

    void unusableDatabases_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("sql");
        addRow("no database", QByteArray("not a database, but long enough to be looked at").repeated(100),
               QString());
        addRow("empty", QByteArray(), QString());
        addRow("foreign", QByteArray(), u"DROP TABLE pages; PRAGMA application_id = 7"_s);
        addRow("other format", QByteArray(), u"PRAGMA user_version = 99"_s);
        addRow("earlier format", QByteArray(), u"PRAGMA user_version = 4; DROP TABLE names"_s);
        addRow("cut off", QByteArray(), u"cut"_s);
    }

    void unusableDatabases()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const QString, sql);
        Searched searched(onePage(u"<p>apple"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const QString name = searched.database();
        if (sql == u"cut") {
            QVERIFY(QFile::resize(name, 20000));
        } else if (!sql.isEmpty()) {
            Database database(name.toUtf8());
            QVERIFY(database.run(sql.toUtf8().constData()) || database.isOpen());
        } else {
            QFile file(name);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        }
        searched.files().write(u"a.html"_s, "<p>banana");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QCOMPARE(searched.search(u"banana"_s).total, 1);
    }

    /// Who writes an index, perhaps for long, keeps nobody from opening it.
    void openedWhileWritten()
    {
        Searched searched(onePage(u"<p>apple"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        sqlite3* writer = nullptr;
        QCOMPARE(sqlite3_open(searched.database().toUtf8().constData(), &writer), SQLITE_OK);
        QCOMPARE(sqlite3_exec(writer, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        SearchEngine engine;
        engine.add(searched.set());
        const auto answer = engine.search({u"apple"_s, {}}, {});
        sqlite3_close(writer);
        QCOMPARE(answer->total, 1);
    }

    /// What could not be opened when it was handed over is tried again.
    void openedLater()
    {
        Searched searched(onePage(u"<p>apple"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const QString file = searched.database();
        SearchEngine engine;
        QVERIFY(QFile::rename(file, file + u".away") && QDir().mkpath(file));
        engine.add(searched.set());
        QCOMPARE(engine.search({u"apple"_s, {}}, {})->total, 0);
        QVERIFY(QDir().rmdir(file) && QFile::rename(file + u".away", file));
        QCOMPARE(engine.search({u"apple"_s, {}}, {})->total, 1);
    }

    void damagedContents_data()
    {
        QTest::addColumn<QByteArray>("sql");
        addRow("words", "UPDATE words_data SET block = zeroblob(length(block)) WHERE id > 10"_ba);
        addRow("structure of the words", "UPDATE words_data SET block = x'ff' WHERE id = 10"_ba);
        addRow("some words",
               "UPDATE words_data SET block = zeroblob(length(block)) WHERE id > 10 AND id % 2"_ba);
        addRow("no words", "DELETE FROM words_data WHERE id > 10"_ba);
        addRow("numbers of pages", "UPDATE pages SET id = 4000000000"_ba);
        addRow("negative numbers", "UPDATE pages SET id = -1"_ba);
    }

    /// What is damaged though it opens is found out when it is searched, and made anew.
    void damagedContents()
    {
        QFETCH(const QByteArray, sql);
        Searched searched(onePage(u"<p>apple"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        sqlite3* database = nullptr;
        QCOMPARE(sqlite3_open(searched.database().toUtf8().constData(), &database), SQLITE_OK);
        QCOMPARE(sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
        {
            SearchService service;
            QSignalSpy idle(&service, &SearchService::becameIdle);
            service.addHelpSet(sourceOf(searched.files().path(u"a.cnt"_s)));
            QTRY_VERIFY_WITH_TIMEOUT(!idle.isEmpty(), Patience);
            qint64 total = 0;
            connect(&service, &SearchService::answered, this,
                    [&](const SearchAnswer& answer) { total = answer.total; });
            QTRY_VERIFY_WITH_TIMEOUT((service.search({u"apple"_s, {}}), total == 1), Patience);
        }
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QCOMPARE(searched.search(u"apple"_s).total, 1);
    }

    /// Whatever stands in a database, nothing ends the program, and in the end its pages are found.
    void noiseInDatabases()
    {
        Searched searched(onePage(u"<h1>apple</h1><p>pie"_s + u"some more words "_s.repeated(2000)));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QFile file(searched.database());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray good = file.readAll();
        file.close();
        QRandomGenerator random(7);
        for (int round = 0; round < 40; ++round) {
            QByteArray bad = good;
            for (int i = 0; i < 20; ++i) {
                bad[random.bounded(100, int(bad.size()))] = char(random.bounded(256));
            }
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bad) == bad.size());
            file.close();
            SearchEngine engine;
            const auto source = std::make_shared<SearchSource>(sourceOf(searched.files().path(u"a.cnt"_s)));
            for (const auto trust : {IndexTrust::Sound, IndexTrust::Damaged}) {
                static_cast<void>(indexHelpSet(
                    source, {}, [](qint64, qint64) {}, [&](const SearchableSet& set) { engine.add(set); },
                    {std::chrono::seconds(3), {}}, trust));
                for (const auto& query : {u"apple"_s, u"\"apple pie\""_s, u"mor* wo*"_s, u"aple"_s}) {
                    const auto answer = engine.search({query, {}, 50, false}, {});
                    QVERIFY(trust == IndexTrust::Sound || query != u"apple" || answer->hits.size() == 1);
                }
                static_cast<void>(engine.takeDamaged());
            }
        }
    }

    /// Rights come back without the file changing.
    void pageThatCannotBeRead()
    {
        Searched searched(onePage(u"<p>apple"_s));
        auto& files = searched.files();
        const QString page = files.path(u"a.html"_s);
        QVERIFY(QFile::setPermissions(files.path({}), QFileDevice::Permissions(0x7777)));
        QFile::setPermissions(page, {});
        // Nothing keeps root from reading.
        const bool isRoot = ::geteuid() == 0;
        QVERIFY(!isRoot || ::seteuid(65534) == 0); // NOLINT(*-magic-numbers)
        const auto result = searched.update();
        QVERIFY(!isRoot || ::seteuid(0) == 0);
        QCOMPARE(result.errors.size(), 1);
        QCOMPARE(searched.search(u"apple"_s).total, 0);
        QCOMPARE(searched.search(u"page"_s).total, 1);
        QFile::setPermissions(page, QFileDevice::ReadOwner);
        QVERIFY(!isRoot || QProcess::execute(u"chmod"_s, {u"-R"_s, u"a+rwX"_s, files.path(u"cache"_s)}) == 0);
        QCOMPARE(searched.update().errors, QStringList());
        QCOMPARE(searched.search(u"apple"_s).total, 1);
    }

    void longTexts_data()
    {
        addTexts("piece");
        for (const auto* piece : {"\u0441\u043B\u043E\u0432\u043E ", "-", "aB", "a_", "a.b", "-a-b", "\u00E9",
                                  "\u6F22", "operator+", "a\u0301", " --x"}) {
            addRow(piece, piece);
        }
    }

    /// Time that grows with the square of the length would take minutes here.
    void longTexts()
    {
        QFETCH(const QString, piece);
        const QString text = piece.repeated(500'000 / piece.size());
        const std::string utf8 = text.toStdString();
        Words words;
        words.read(utf8);
        const auto all = words.all().size();
        std::stop_source stop;
        stop.request_stop();
        words.read(utf8, stop.get_token());
        QVERIFY(!piece.contains(u' ') || words.all().size() * 5 <= all);
        QVERIFY(matchRanges(u"nowhere"_s, text, u"en"_s).empty());
    }

    /// A snippet of a page costs the same however long the page is.
    void snippetOfAHugePage()
    {
        Searched searched("== a.cnt\nPage = a.txt\n");
        searched.files().write(u"a.txt"_s, "apple pie" + QByteArray(34'000'000, ' ') + "end");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QCOMPARE(searched.search(u"pie"_s).hits.at(0).snippet, u"apple pie \u2026"_s);
    }

    /// Somebody else holds the lock of an index, and may do so for ever.
    void behindALock()
    {
        Searched searched(onePage(u"<p>apple"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const FileLock lock(SearchCache::lockFor(searched.database()), std::chrono::seconds(0));
        QVERIFY(lock.isHeld());
        const QString file = searched.files().path(u"a.cnt"_s);
        const auto search = [&](const QString& words) -> QString {
            QProcess process;
            process.start(qEnvironmentVariable("QUENDA_PROGRAM"), {u"--search"_s, words, file});
            process.waitForFinished();
            return QString::number(process.exitCode()) + u' ' +
                   QString::fromUtf8(process.readAllStandardOutput()) +
                   QString::fromUtf8(process.readAllStandardError());
        };
        QVERIFY(search(u"apple"_s).startsWith(u"0 "_s + searched.files().path(u"a.html"_s)));
        searched.files().write(u"a.html"_s, "<p>banana, a newer page");
        const QString outdated = search(u"apple"_s);
        QVERIFY2(outdated.startsWith(u"2 "_s) && outdated.contains(u"another process"), qPrintable(outdated));
        SearchCache::remove(searched.database());
        QVERIFY(search(u"banana"_s).startsWith(u"0 "_s));
        // A window, too, searches in what there is.
        SearchService service;
        QSignalSpy answers(&service, &SearchService::answered);
        service.addHelpSet(sourceOf(file));
        QVERIFY(service.isIndexing());
        service.search({u"banana"_s, {}});
        QTRY_VERIFY(!answers.isEmpty());
    }

    /// Who wants an index waits for it, and is told so.
    void waitsForALock()
    {
        Searched searched(onePage(u"<p>apple"_s));
        const QString file = searched.files().path(u"a.cnt"_s);
        const QString database = SearchCache::databaseFor(file);
        auto lock = std::make_unique<FileLock>(SearchCache::lockFor(database), std::chrono::seconds(0));
        QVERIFY(lock->isHeld());
        QProcess process;
        process.setReadChannel(QProcess::StandardError);
        process.start(qEnvironmentVariable("QUENDA_PROGRAM"), {u"--index"_s, file});
        QVERIFY(process.waitForReadyRead());
        QVERIFY(process.readAll().contains("waiting for it"));
        QVERIFY(!QFileInfo::exists(database));
        lock.reset();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(QFileInfo(database).size() > 0);
    }

    /// Of what has not been used for long, only so much is kept.
    void smallCache()
    {
        const Searched searched("== a.cnt\n");
        const auto make = [](const QString& name, int daysAgo) {
            const QString database = SearchCache::databaseFor(name);
            QFile file(database);
            QFile lock(SearchCache::lockFor(database));
            const bool isMade = file.open(QIODevice::WriteOnly) && file.resize(1000) &&
                                lock.open(QIODevice::WriteOnly) &&
                                lock.setFileTime(QDateTime::currentDateTime().addDays(-daysAgo),
                                                 QFileDevice::FileModificationTime);
            return isMade ? database : QString();
        };
        const QStringList all{make(u"used"_s, 9), make(u"new"_s, 1), make(u"old"_s, 3), make(u"older"_s, 5),
                              make(u"locked"_s, 7)};
        QFile log(all[1] + u"-wal"_s);
        QVERIFY(log.open(QIODevice::WriteOnly) && log.resize(1000));
        const FileLock lock(SearchCache::lockFor(all[4]), std::chrono::seconds(0));
        const auto kept = [&all] {
            QString names;
            for (const auto& database : all) {
                names += QFileInfo::exists(database) ? u'+' : u'-';
            }
            return names;
        };
        SearchCache::keepSmall(all[0], 6000);
        QCOMPARE(kept(), u"+++++"_s);
        SearchCache::keepSmall(all[0], 3500);
        QCOMPARE(kept(), u"++--+"_s);
    }

    /// What is free in a file goes back, however much it is.
    void roomIsGivenBack()
    {
        Searched searched(onePage(u"<p>apple"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        Database database(searched.database().toUtf8());
        QVERIFY(database.run("CREATE TABLE filler(bytes); INSERT INTO filler VALUES(zeroblob(20000000)); "
                             "DROP TABLE filler"));
        searched.files().write(u"a.html"_s, "<p>banana");
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QCOMPARE(database.number("PRAGMA freelist_count"), 0);
    }

    /// That an index cannot be looked through says nothing against it.
    void notLookedThrough()
    {
        Searched searched(onePage(u"<p>apple"_s));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        const auto database = IndexFile::open("file:" + searched.database().toUtf8() + "?mode=ro");
        QVERIFY(database != nullptr);
        QVERIFY(!database->run("DELETE FROM pages"));
        QVERIFY(IndexFile::isSound(*database));
    }

    void withoutCache()
    {
        Searched searched(onePage(u"<p>apple"_s));
        searched.files().write(u"cache/Orvanel"_s, "in the way");
        QProcess process;
        process.start(qEnvironmentVariable("QUENDA_PROGRAM"),
                      {u"--index"_s, searched.files().path(u"a.cnt"_s)});
        QVERIFY(process.waitForFinished() && process.exitCode() == 2);
        QVERIFY(process.readAllStandardError().contains("is not kept: "));
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QVERIFY(searched.isInMemory());
        QCOMPARE(searched.search(u"apple"_s).total, 1);
    }

    void sameTextAsShown_data()
    {
        addTexts("html");
        addRow("plain", "<title>t</title>a <b>b</b>c<p>d<br>e<table><tr><td>f<td>g</table><img alt=h "
                        "src=x><input value=i>");
        addRow("web page",
               "<link rel=stylesheet href=x><div class=navbar><a href=x>no</a></div><div role=main><h1>a"
               "<a class=headerlink href=x>no</a></h1><p style='display: none'>no</p><pre>b <i>c</i>\nd</pre>"
               "<ul><li>e<ul><li>f</ul></ul><dl><dt>g<dd>h</dl><select><option>i<option>j</select>"
               "<svg><text>k</text></svg><math><mfrac><mn>1</mn><mn>2</mn></mfrac></math></div>");
        addRow("no body", "<style>x</style>just text &eacute;");
    }

    void sameTextAsShown()
    {
        QFETCH(const QString, html);
        const auto shown = preparePage(html, {}, Presentation::Reading);
        const auto plain = readPlainPage(html, {});
        QCOMPARE(wordsOf(QString::fromStdString(plain.text)), wordsOf(shown.text));
        QString headings;
        for (const auto& heading : shown.headings) {
            headings += heading.text + u'\n';
        }
        // Terms that are explained count as headings.
        auto plainHeadings = wordsOf(QString::fromStdString(plain.headings));
        plainHeadings.removeOne(u"g"_s);
        QCOMPARE(plainHeadings, wordsOf(headings));
    }

    void service()
    {
        Searched searched("== a.cnt\n:title = A\nx = a.html\n== b.cnt\n:title = B\ny = b.html\n== "
                          "a.html\n<p>apple\n== b.html\n<p>apple too");
        SearchService service;
        QSignalSpy answers(&service, &SearchService::answered);
        QSignalSpy idle(&service, &SearchService::becameIdle);
        const QString a = searched.files().path(u"a.cnt"_s);
        service.addHelpSet(sourceOf(a));
        service.addHelpSet(sourceOf(searched.files().path(u"b.cnt"_s)));
        QVERIFY(service.isIndexing());
        QTRY_VERIFY(!idle.isEmpty() && !service.isIndexing());
        const auto answer = [&](const SearchRequest& request) {
            answers.clear();
            service.search({u"never answered"_s, {}});
            service.search(request);
            static_cast<void>(QTest::qWaitFor([&] { return !answers.isEmpty(); }));
            return answers.isEmpty() ? SearchAnswer() : answers.first().first().value<SearchAnswer>();
        };
        QCOMPARE(answer({u"apple"_s, {}}).total, 2);
        QCOMPARE(answer({u"apple"_s, {a}}).hits.at(0).helpSet, u"A"_s);
        service.removeHelpSet(a);
        QCOMPARE(answer({u"apple"_s, {}}).hits.at(0).helpSet, u"B"_s);
    }

    void command()
    {
        Searched searched(
            "== a.cnt\n:title = A\nBook\n T\u001B[31m = a.html\n== a.html\n<p>apple \u009B pie");
        const auto run = [&](const QStringList& arguments) {
            QProcess process;
            process.setWorkingDirectory(searched.files().path({}));
            process.start(qEnvironmentVariable("QUENDA_PROGRAM"), arguments);
            process.waitForFinished();
            return std::pair(process.exitCode(), process.readAllStandardOutput());
        };
        const QString page = searched.files().path(u"a.html"_s);
        QCOMPARE(run({u"--index"_s, u"a.cnt"_s}).first, 0);
        const auto lines = run({u"--search"_s, u"apples"_s, u"a.cnt"_s});
        QCOMPARE(lines.first, 1);
        QCOMPARE(run({u"--search"_s, u"apple"_s, u"a.cnt"_s}),
                 std::pair(0, QByteArray(page.toUtf8() + "\tT [31m\tapple ? pie\n")));
        const auto json =
            QJsonDocument::fromJson(run({u"--search"_s, u"apple"_s, u"--json"_s, u"a.cnt"_s}).second)
                .object();
        QCOMPARE(json[u"total"].toInt(), 1);
        QCOMPARE(json[u"hits"][0][u"path"][0].toString(), u"Book"_s);
        QCOMPARE(json[u"hits"][0][u"page"].toString(), page);
        for (const auto& bad : {QStringList{u"--search"_s},
                                {u"--search"_s, u"a"_s, u"--limit"_s, u"0"_s, u"a.cnt"_s},
                                {u"--search"_s, u"a"_s, u"no.cnt"_s},
                                {u"--index"_s},
                                {u"--index"_s, u"no.cnt"_s}}) {
            QCOMPARE(run(bad).first, 2);
        }
    }

    void killedAndConcurrent()
    {
        constexpr int pages = 6000;
        QByteArray contents;
        Searched searched("== a.cnt\n");
        for (int i = 0; i < pages; ++i) {
            const auto number = QByteArray::number(i);
            contents += "Page " + number + " = p" + number + ".html\n";
            searched.files().write(u"p%1.html"_s.arg(i), "<p>apple n" + number + " " +
                                                             QByteArray("some more words ").repeated(300));
        }
        const QString file = searched.files().write(u"a.cnt"_s, contents);
        const auto start = [&] {
            auto process = std::make_unique<QProcess>();
            process->start(qEnvironmentVariable("QUENDA_PROGRAM"), {u"--index"_s, file});
            return process;
        };
        const auto killed = start();
        const auto isBegun = [&] { return QFileInfo(searched.database() + u"-wal"_s).size() > 1'000'000; };
        QVERIFY(QTest::qWaitFor(isBegun, 20'000));
        killed->kill();
        QVERIFY(killed->waitForFinished());
        const auto one = start();
        const auto other = start();
        QCOMPARE(searched.update().state, IndexingResult::State::Complete);
        QCOMPARE(searched.search(u"apple"_s).total, pages);
        QCOMPARE(searched.pages(u"n5999"_s), u"p5999"_s);
        for (const auto& process : {one.get(), other.get()}) {
            QVERIFY(process->waitForFinished() && process->exitCode() == 0);
        }
    }
};

QTEST_GUILESS_MAIN(FulltextTest)
#include "tst_fulltext.moc"
