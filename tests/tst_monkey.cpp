// SPDX-License-Identifier: MIT
#include "testfiles.h"
#include "windowuser.h"

#include <QAbstractItemModelTester>
#include <QMenu>
#include <QPixmapCache>
#include <QRandomGenerator>
#include <QSettings>
#include <QToolBar>

#include <functional>
#include <malloc.h>
#include <memory>
#include <vector>
#ifdef QUENDA_SANITIZED_ADDRESSES
extern "C" size_t __sanitizer_get_current_allocated_bytes(); // NOLINT: the run-time library's
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr int Steps = 20;                 ///< in a sequence
constexpr int WarmUp = 20;                ///< sequences before which memory grows: the toolkit's caches
constexpr qint64 MaximumGrowth = 2 << 20; // bytes

constexpr auto Sets = R"(== a.cnt
:title = Ordinary
:index = a.idx
Start = a1.html
Book = a2.html
 Leaf = a3.html
 Place = a3.html#end
Book without a page
 Deep
  Deeper = a1.html
== a.idx
alpha = a1.html
Alpha = a2.html
beta
 sub = a3.html
 sub = a3.html#end
gamma = b1.html
== a1.html
<h1>Start</h1><a href=a2.html>next</a><a href=a3.html#end>end</a><a href=none.html>none</a><a href=a.svg>picture</a>
<a href=http://localhost/>web</a><a href=#x>here</a><p>alpha beta alpha<a name=x>x</a><img src=a.svg>
== a2.html
<nav><a href=a1.html>n</a></nav><main><h1>Book</h1><h2>One</h2><pre>code</pre><table><tr><td>1<td>alpha</table></main>
== a3.html
<p>leaf</p><p>text</p><a name=end>end</a><a href=a1.html>start</a>
== a.svg
<svg xmlns='http://www.w3.org/2000/svg' width='20' height='20'><rect width='20' height='20' fill='red'/></svg>
== b.cnt
:title = <b>Hostile</b> &amp; [*]
:index = b.idx
:index = none.idx
x = b.cnt
y = a.cnt
p = b1.html
	q = /dev/zero
	r = b2.html
			too deep = b1.html
= = =
missing = none.html
picture = none.png
== b.idx
 orphan = b1.html
alpha
alpha = b2.html
alpha = none.html
	sub
== b1.html
<base href=http://localhost/><meta http-equiv=refresh content='0;url=b2.html'>passed on
== b2.html
<qt><frameset><frame src=b1.html><frame src=/dev/zero></frameset><a href=javascript:x>j</a><a href=b1.html>b</a>
<table><tr><td colspan=99999><table><tr><td>x</table></table><ul><ul><ol><li>y<img src=/dev/zero><img src=none.png>
== c.cnt
)";

/// Bytes that are allocated.
qint64 heapSize()
{
#ifdef QUENDA_SANITIZED_ADDRESSES
    return qint64(__sanitizer_get_current_allocated_bytes());
#else
    const auto info = ::mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
#endif
}

/// What the browser's history has to be like after what has happened.
class HistoryModel {
public:
    HistoryModel(HelpBrowser& browser, const HelpLibrary& library) : m_browser(browser), m_library(library)
    {
        QObject::connect(&browser, &HelpBrowser::syncEnabled, &m_context, [this] { moved(); });
    }

    void goBack(const std::function<void()>& act) { step(m_back, m_forward, act); }
    void goForward(const std::function<void()>& act) { step(m_forward, m_back, act); }
    void goHome(const std::function<void()>& act)
    {
        m_current = {};
        m_forward.clear();
        act();
    }

    /// Pages of the help sets that go leave the history; what was read before comes back.
    void remove(const std::function<void()>& act)
    {
        m_isWatching = false;
        act();
        m_isWatching = true;
        const auto roots = m_library.roots();
        const auto isGone = [&](const Visit& visit) {
            return roots.empty() || (visit.root != nullptr &&
                                     std::find(roots.begin(), roots.end(), visit.root) == roots.end());
        };
        for (auto* list : {&m_back, &m_forward}) {
            std::erase_if(*list, isGone);
        }
        const bool isLost = m_current.record != nullptr && isGone(m_current);
        m_current = isLost ? Visit() : m_current;
        if (isGone(m_home)) {
            m_home = m_back.empty() ? m_current : m_back.front();
        }
        const auto isSame = [](const Visit& a, const Visit& b) { return a.record == b.record; };
        for (auto* list : {&m_back, &m_forward}) {
            list->erase(std::unique(list->begin(), list->end(), isSame), list->end());
            if (!list->empty() && isSame(list->back(), m_current)) {
                list->pop_back();
            }
        }
        if (isLost && m_back.empty()) {
            forget();
        } else if (isLost) {
            m_current = m_back.back();
            m_back.pop_back();
        }
    }

    void compare(const std::function<bool(const char*)>& isEnabled) const
    {
        QCOMPARE(isEnabled("goBackAction"), !m_back.empty());
        QCOMPARE(isEnabled("goForwardAction"), !m_forward.empty());
        QCOMPARE(isEnabled("goHomeAction"), m_current.key != nullptr && m_current.key != m_home.key);
        const auto* shown = m_browser.getCurrentLink();
        QCOMPARE(visit(shown).key, m_current.key);
        const auto* row = shown == nullptr ? nullptr : shown->listViewItem;
        QCOMPARE(isEnabled("goSyncAction"), row != nullptr);
        QCOMPARE(isEnabled("goUpAction"), row != nullptr && row->parent != nullptr);
    }

private:
    struct Visit {
        QString key;                  ///< null for none
        const void* record = nullptr; ///< may be gone
        const HelpContentsRoot* root = nullptr;
        bool isBlank = true;
    };

    [[nodiscard]] Visit visit(const HelpContentsItem* record) const
    {
        if (record == nullptr) {
            return {};
        }
        // Those that open no file are told apart by what they are.
        const QString key = record->target == EntryTarget::Page ? HelpLibrary::absoluteName(record->page())
                                                                : QString::number(quintptr(record));
        const auto roots = m_library.roots();
        const auto root = std::find_if(roots.begin(), roots.end(), [record](const auto* candidate) {
            return HelpLibrary::belongsTo(*record, *candidate);
        });
        return {key, record, root == roots.end() ? nullptr : *root, record->page().trimmed().isEmpty()};
    }

    void moved()
    {
        const Visit now = visit(m_browser.getCurrentLink());
        if (!m_isWatching || now.key == m_current.key) {
            return;
        }
        if (now.key == nullptr) {
            forget();
        } else {
            if (m_current.key != nullptr && !m_current.isBlank) {
                m_back.push_back(m_current);
            }
            m_forward.clear();
            m_home = m_home.key == nullptr ? now : m_home;
            m_current = now;
        }
    }

    void forget()
    {
        m_back.clear();
        m_forward.clear();
        m_home = m_current = {};
    }

    void step(std::vector<Visit>& from, std::vector<Visit>& to, const std::function<void()>& act)
    {
        m_isWatching = false;
        act();
        m_isWatching = true;
        if (!from.empty()) {
            to.push_back(m_current);
            m_current = from.back();
            from.pop_back();
        }
    }

    HelpBrowser& m_browser;
    const HelpLibrary& m_library;
    QObject m_context;
    Visit m_current, m_home;
    std::vector<Visit> m_back, m_forward; ///< the next page is the last
    bool m_isWatching = true;
};

/// Uses a window at random, and compares it after each step with what has happened.
class Monkey {
public:
    Monkey(WindowUser& user, HistoryModel& history, quint32 seed, const QStringList& files)
        : m_user(user), m_history(history), m_random(seed), m_files(files)
    {
    }

    void step()
    {
        const auto& [name, act] = m_acts[pick(m_acts.size())];
        m_done += QString::fromUtf8(name);
        act();
        if (pick(3) > 0) {
            QTest::qWait(int(pick(3)));
        }
        m_user.window().show(); // Exit closes it
        compare();
        if (QTest::currentTestFailed()) {
            qInfo("%s", qUtf8Printable(m_done.join(u", "_s)));
        }
    }

    void end()
    {
        m_user.typeQuery({}); // a page that Return was pressed for may still be coming
        m_user.waitUntilLoaded();
        while (auto* entry = menuEntry("removeMenu")) {
            m_history.remove([&] { entry->trigger(); });
        }
        m_user.waitUntilLoaded();
        m_user.trigger("viewZoomResetAction");
        m_user.window().resize(900, 620); // what it is drawn on counts, too
        m_user.waitUntilLoaded();
        QVERIFY(m_user.library().isEmpty());
        QVERIFY(m_user.library().keywordIndex().rows().empty());
        QCOMPARE(m_user.search(u"alpha"_s), 0);
        compare();
    }

private:
    [[nodiscard]] size_t pick(size_t count) { return m_random.bounded(quint32(count)); }
    [[nodiscard]] const QString& anyFile() { return m_files[qsizetype(pick(size_t(m_files.size())))]; }

    [[nodiscard]] QAction* menuEntry(const char* menu)
    {
        const auto entries = m_user.window().findChild<QMenu*>(QLatin1StringView(menu))->actions();
        return entries.isEmpty() ? nullptr : entries[qsizetype(pick(size_t(entries.size())))];
    }

    void removeSet()
    {
        if (auto* entry = menuEntry("removeMenu")) {
            m_history.remove([&] { entry->trigger(); });
        }
    }

    void showSet()
    {
        if (auto* entry = menuEntry("installedMenu")) {
            entry->trigger();
        }
    }

    /// All there are.
    void command() { trigger(*m_user.commands()[qsizetype(pick(size_t(m_user.commands().size())))]); }

    void go()
    {
        static constexpr std::array actions{"goBackAction", "goBackAction", "goForwardAction",
                                            "goUpAction",   "goHomeAction", "goSyncAction"};
        trigger(*m_user.window().findChild<QAction*>(QLatin1StringView(actions[pick(actions.size())])));
    }

    void trigger(QAction& action)
    {
        m_done += action.objectName();
        const auto act = [&action] { action.trigger(); };
        if (action.objectName() == u"goBackAction") {
            m_history.goBack(act);
        } else if (action.objectName() == u"goForwardAction") {
            m_history.goForward(act);
        } else if (action.objectName() == u"goHomeAction" && action.isEnabled()) {
            m_history.goHome(act);
        } else {
            act();
        }
    }

    void search()
    {
        static const QStringList texts{u"alpha"_s, u"x"_s, u"start text"_s, u"\"no such"_s, u"b* -a OR"_s};
        const QString& text = texts[qsizetype(pick(size_t(texts.size())))];
        if (pick(2) == 0) {
            m_user.typeQuery(text);
        } else {
            QVERIFY(m_user.search(text) >= 0);
        }
        QTest::keyClick(m_user.the<SearchPane>().findChild<QLineEdit*>(), Qt::Key_Return);
    }

    /// Commands, panes and menus are as the page, the selection and what is open ask for.
    void compare()
    {
        const auto& browser = m_user.browser();
        const auto isEnabled = [this](const char* name) {
            return m_user.window().findChild<QAction*>(QLatin1StringView(name))->isEnabled();
        };
        const auto isChecked = [this](const char* name) {
            return m_user.window().findChild<QAction*>(QLatin1StringView(name))->isChecked();
        };
        for (const auto* name : {"filePrintAction", "filePreviewAction", "fileExportAction", "editFindAction",
                                 "editFindNextAction", "editFindPreviousAction", "viewZoomInAction",
                                 "viewZoomOutAction", "viewZoomResetAction"}) {
            QVERIFY2(isEnabled(name) == (browser.hasPage() && browser.isVisibleTo(&m_user.window())), name);
        }
        QVERIFY(isEnabled("editCopyAction") ? browser.hasPage() : !browser.textCursor().hasSelection());
        m_history.compare(isEnabled);
        QCOMPARE(isChecked("viewReadingAction"), browser.isReadingView());
        QCOMPARE(isChecked("viewContentsAction"), m_user.the<QTabWidget>().isVisible());
        QCOMPARE(isChecked("viewGoToolbarAction"), m_user.the<QToolBar>().isVisible());
        const auto* outline = m_user.window().findChild<QMenu*>(u"outlineMenu"_s);
        QCOMPARE(outline->isEnabled(), browser.hasPage() && !browser.page().prepared.headings.empty());
        const auto* removal = m_user.window().findChild<QMenu*>(u"removeMenu"_s);
        QCOMPARE(removal->isEnabled(), !removal->isEmpty());
        QCOMPARE(removal->actions().size(), qsizetype(m_user.library().roots().size()));
    }

    void pressKey()
    {
        static constexpr std::array keys{Qt::Key_Tab,  Qt::Key_Return, Qt::Key_Escape, Qt::Key_Down,
                                         Qt::Key_Up,   Qt::Key_Right,  Qt::Key_Left,   Qt::Key_PageDown,
                                         Qt::Key_Home, Qt::Key_End,    Qt::Key_F6,     Qt::Key_A};
        const auto modifiers = pick(3) == 0 ? Qt::ControlModifier : Qt::NoModifier;
        auto* widget = QApplication::focusWidget();
        if (widget == &m_user.the<HelpContentsListView>()) {
            widget = &m_user.browser(); // pages passed by in the tree leave the history, but not at once
        }
        QTest::keyClick(widget != nullptr ? widget : &m_user.window(), keys[pick(keys.size())], modifiers);
    }

    void lookUp()
    {
        static const QStringList texts{u"a"_s, u"ALPHA"_s, u"b"_s, u"sub"_s, u"zz"_s, QString()};
        m_user.lookUp(texts[qsizetype(pick(size_t(texts.size())))]);
    }

    WindowUser& m_user;
    HistoryModel& m_history;
    QStringList m_done;
    QRandomGenerator m_random;
    QStringList m_files;
    const std::vector<std::pair<const char*, std::function<void()>>> m_acts{
        {"open", [this] { m_user.open(anyFile()); }},
        {"remove", [this] { removeSet(); }},
        {"installed", [this] { showSet(); }},
        {"show", [this] { m_user.window().showInstalled(anyFile()); }},
        {"go", [this] { go(); }},
        {"go", [this] { go(); }},
        {"go", [this] { go(); }},
        {"row", [this] { m_user.clickRow(int(pick(15)), pick(3) == 0); }},
        {"row", [this] { m_user.clickRow(int(pick(15)), pick(3) == 0); }},
        {"look up", [this] { lookUp(); }},
        {"link", [this] { m_user.followLink(pick(8)); }},
        {"link", [this] { m_user.followLink(pick(8)); }},
        {"key", [this] { pressKey(); }},
        {"key", [this] { pressKey(); }},
        {"command", [this] { command(); }},
        {"command", [this] { command(); }},
        {"search", [this] { search(); }},
        {"resize", [this] { m_user.window().resize(int(pick(1200)), int(pick(900))); }},
    };
};

} // namespace

/// Seeded random use of one window, which has nothing open after each sequence. QUENDA_MONKEY_SEQUENCES and
/// QUENDA_MONKEY_SETS (contents files, divided by colons) make a longer run.
class MonkeyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("PATH", "/nowhere"); // no browser
        for (const auto* name : {"a.cnt", "b.cnt", "c.cnt", "none.cnt"}) {
            m_sets += m_files.path(QLatin1StringView(name));
        }
        m_sets += qEnvironmentVariable("QUENDA_MONKEY_SETS").split(u':', Qt::SkipEmptyParts);
        QSettings().clear();
        QSettings().setValue(u"HelpMainWindow/contentsInstalled"_s, m_sets);
        QApplication::setQuitOnLastWindowClosed(false);
        m_user = std::make_unique<WindowUser>();
        m_history = std::make_unique<HistoryModel>(m_user->browser(), m_user->library());
        for (auto* model :
             {m_user->the<HelpContentsListView>().model(), m_user->the<HelpIndexListBox>().model()}) {
            new QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest,
                                         model);
        }
    }

    void sequence_data()
    {
        QTest::addColumn<quint32>("seed");
        bool isGiven = false;
        const int given = qEnvironmentVariableIntValue("QUENDA_MONKEY_SEQUENCES", &isGiven);
        for (int seed = 1; seed <= (isGiven ? given : 50); ++seed) {
            QTest::addRow("seed %d", seed) << quint32(seed);
        }
    }

    void sequence()
    {
        QFETCH(const quint32, seed);
        QTest::failOnWarning(QRegularExpression(u"^(Q[A-Z]|ASSERT|connect)"_s));
        Monkey monkey(*m_user, *m_history, seed, m_sets);
        for (int i = 0; i < Steps && !QTest::currentTestFailed(); ++i) {
            monkey.step();
        }
        monkey.end();
        QPixmapCache::clear();
        m_warmSize = ++m_done == WarmUp ? heapSize() : m_warmSize;
    }

    void cleanupTestCase()
    {
        const qint64 growth = heapSize() - m_warmSize;
        qInfo("%lld bytes more after %d sequences", growth, m_done);
        m_history.reset();
        m_user.reset();
        QVERIFY(m_done <= WarmUp || growth < MaximumGrowth);
    }

private:
    TemporaryFiles m_files{Sets};
    QStringList m_sets;
    std::unique_ptr<WindowUser> m_user;
    std::unique_ptr<HistoryModel> m_history;
    int m_done = 0;
    qint64 m_warmSize = 0;
};

QTEST_MAIN(MonkeyTest)
#include "tst_monkey.moc"
