// SPDX-License-Identifier: MIT
#include "testfiles.h"
#include "windowuser.h"

#include <QAbstractItemModelTester>
#include <QMenu>
#include <QPixmapCache>
#include <QRandomGenerator>
#include <QSettings>

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

/// Uses a window at random.
class Monkey {
public:
    Monkey(WindowUser& user, quint32 seed, const QStringList& files)
        : m_user(user), m_random(seed), m_files(files)
    {
    }

    void step()
    {
        m_acts[pick(m_acts.size())]();
        if (pick(3) > 0) {
            QTest::qWait(int(pick(3)));
        }
    }

    void end()
    {
        m_user.waitUntilLoaded();
        while (auto* entry = menuEntry("removeMenu")) {
            entry->trigger();
        }
        m_user.waitUntilLoaded();
        m_user.trigger("viewZoomResetAction");
        m_user.window().resize(900, 620); // what it is drawn on counts, too
        m_user.waitUntilLoaded();
        QVERIFY(m_user.library().isEmpty());
        QVERIFY(m_user.library().keywordIndex().rows().empty());
    }

private:
    [[nodiscard]] size_t pick(size_t count) { return m_random.bounded(quint32(count)); }
    [[nodiscard]] const QString& anyFile() { return m_files[qsizetype(pick(size_t(m_files.size())))]; }

    [[nodiscard]] QAction* menuEntry(const char* menu)
    {
        const auto entries = m_user.window().findChild<QMenu*>(QLatin1StringView(menu))->actions();
        return entries.isEmpty() ? nullptr : entries[qsizetype(pick(size_t(entries.size())))];
    }

    void chooseEntry(const char* menu)
    {
        if (auto* entry = menuEntry(menu)) {
            entry->trigger();
        }
    }

    void triggerAny()
    {
        static constexpr std::array actions{
            "editCopyAction",     "editFindAction",      "editFindNextAction",  "editFindPreviousAction",
            "viewZoomInAction",   "viewZoomOutAction",   "viewZoomResetAction", "viewReadingAction",
            "viewContentsAction", "viewGoToolbarAction", "viewSettingsAction",  "helpManualAction",
            "helpAboutAction"};
        m_user.trigger(actions[pick(actions.size())]);
    }

    void go()
    {
        static constexpr std::array actions{"goBackAction", "goBackAction", "goForwardAction",
                                            "goUpAction",   "goHomeAction", "goSyncAction"};
        m_user.trigger(actions[pick(actions.size())]);
    }

    void pressKey()
    {
        static constexpr std::array keys{Qt::Key_Tab,  Qt::Key_Return, Qt::Key_Escape, Qt::Key_Down,
                                         Qt::Key_Up,   Qt::Key_Right,  Qt::Key_Left,   Qt::Key_PageDown,
                                         Qt::Key_Home, Qt::Key_End,    Qt::Key_F6,     Qt::Key_A};
        const auto modifiers = pick(3) == 0 ? Qt::ControlModifier : Qt::NoModifier;
        auto* widget = QApplication::focusWidget();
        QTest::keyClick(widget != nullptr ? widget : &m_user.window(), keys[pick(keys.size())], modifiers);
    }

    void lookUp()
    {
        static const QStringList texts{u"a"_s, u"ALPHA"_s, u"b"_s, u"sub"_s, u"zz"_s, QString()};
        m_user.lookUp(texts[qsizetype(pick(size_t(texts.size())))]);
    }

    WindowUser& m_user;
    QRandomGenerator m_random;
    QStringList m_files;
    const std::vector<std::function<void()>> m_acts{
        [this] { m_user.open(anyFile()); },
        [this] { chooseEntry("removeMenu"); },
        [this] { chooseEntry("installedMenu"); },
        [this] { m_user.window().showInstalled(anyFile()); },
        [this] { go(); },
        [this] { go(); },
        [this] { m_user.clickRow(int(pick(15)), pick(3) == 0); },
        [this] { m_user.clickRow(int(pick(15)), pick(3) == 0); },
        [this] { lookUp(); },
        [this] { m_user.followLink(pick(8)); },
        [this] { m_user.followLink(pick(8)); },
        [this] { pressKey(); },
        [this] { pressKey(); },
        [this] { triggerAny(); },
        [this] { m_user.window().resize(int(pick(1200)), int(pick(900))); },
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
        m_user = std::make_unique<WindowUser>();
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
        Monkey monkey(*m_user, seed, m_sets);
        for (int i = 0; i < Steps; ++i) {
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
        m_user.reset();
        QVERIFY(m_done <= WarmUp || growth < MaximumGrowth);
    }

private:
    TemporaryFiles m_files{Sets};
    QStringList m_sets;
    std::unique_ptr<WindowUser> m_user;
    int m_done = 0;
    qint64 m_warmSize = 0;
};

QTEST_MAIN(MonkeyTest)
#include "tst_monkey.moc"
