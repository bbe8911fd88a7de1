// SPDX-License-Identifier: MIT
#include "mainwindow/fulltextsearch.h"

#include "browser/messages.h"
#include "desk/desk.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "library/settingsstore.h"
#include "mainwindow/backgroundprogress.h"
#include "search/searchpane.h"
#include "search/searchsources.h"

#include <algorithm>

namespace {

constexpr int StartDelay = 1000; // ms after loading; who looks up one page need not wait for it
constexpr auto ScopeKey = "searchScope";
constexpr qsizetype MaximumProblems = 20;

QString keyOf(const HelpContentsRoot& root)
{
    return HelpLibrary::absoluteName(root.fileName);
}

} // namespace

FullTextSearch::FullTextSearch(HelpLibrary& library, SearchPane& pane, Desk& desk, QStatusBar& statusBar)
    : m_library(library), m_pane(pane), m_desk(desk),
      m_progress(new BackgroundProgress(tr("Indexing"), statusBar))
{
    m_startTimer.setSingleShot(true);
    m_startTimer.setInterval(StartDelay);
    connect(&m_startTimer, &QTimer::timeout, this, &FullTextSearch::handOver);
    connect(&library, &HelpLibrary::becameIdle, &m_startTimer, qOverload<>(&QTimer::start));
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, this,
            [this](HelpContentsRoot* root) { withdraw(*root); });
    connectPane();
    connectService();
}

void FullTextSearch::connectPane()
{
    connect(&m_pane, &SearchPane::searchRequested, this, [this](const SearchRequest& request) {
        if (m_startTimer.isActive()) {
            m_startTimer.stop();
            handOver();
        }
        m_service.search(request);
    });
    connect(&m_pane, &SearchPane::indexingRequested, this, &FullTextSearch::indexAgain);
    const SettingsStore store(SettingsStore::Access::Read);
    m_pane.setScope(store.value(ScopeKey).toStringList());
    connect(&m_pane, &SearchPane::scopeChosen, this, [](const QStringList& choice) {
        SettingsStore kept(SettingsStore::Access::Write);
        kept.setValue(ScopeKey, choice);
    });
    connect(&m_desk, &Desk::pageChanged, this, [this] {
        const auto* record = m_desk.current();
        m_pane.setCurrentSet(record == nullptr || record->root() == nullptr ? QString()
                                                                            : keyOf(*record->root()));
    });
    connect(&m_pane, &SearchPane::problemsRequested, this, &FullTextSearch::showProblems);
    connect(&m_pane, &SearchPane::pageRequested, this, [this](const SearchHit& hit, const QString& query) {
        m_desk.showFound(hit.page, query, hit.language);
    });
}

void FullTextSearch::connectService()
{
    connect(&m_service, &SearchService::answered, &m_pane, &SearchPane::showAnswer);
    connect(&m_service, &SearchService::progressed, m_progress, &BackgroundProgress::setFraction);
    connect(&m_service, &SearchService::indexed, this,
            [this](const QString& contentsFile, const QStringList& errors) {
                if (m_handedOver.contains(contentsFile)) {
                    m_handedOver[contentsFile] = errors;
                }
                tellPane();
                m_pane.searchAgain();
                if (!m_wasStopped) {
                    Q_EMIT indexed(contentsFile);
                }
            });
    connect(&m_service, &SearchService::becameIdle, this, [this] {
        m_progress->finish();
        tellPane();
    });
}

/// Gives the service the help sets that it does not know yet.
void FullTextSearch::handOver()
{
    if (m_library.isBusy() || !m_isEnabled) {
        return;
    }
    for (const auto* root : m_library.roots()) {
        if (const QString key = keyOf(*root); !m_handedOver.contains(key)) {
            m_handedOver.insert(key, {});
            m_service.addHelpSet(makeSearchSource(m_library.helpSet(*root)));
        }
    }
    if (m_service.isIndexing()) {
        m_progress->start();
    }
    tellPane();
    m_pane.searchAgain();
}

void FullTextSearch::indexAgain()
{
    m_wasStopped = false;
    m_handedOver.clear();
    handOver();
}

/// A file that is loaded twice stays.
void FullTextSearch::withdraw(const HelpContentsRoot& removed)
{
    const auto roots = m_library.roots();
    const bool isLoadedTwice = std::any_of(roots.begin(), roots.end(), [&](const auto* root) {
        return root != &removed && keyOf(*root) == keyOf(removed);
    });
    if (!isLoadedTwice && m_handedOver.remove(keyOf(removed)) > 0) {
        m_service.removeHelpSet(keyOf(removed));
        m_startTimer.start();
    }
}

void FullTextSearch::cancelIndexing()
{
    if (m_service.isIndexing()) {
        m_wasStopped = true;
        m_service.cancelIndexing();
        m_progress->finish();
        tellPane();
    }
}

void FullTextSearch::tellPane()
{
    QList<SearchChoice> sets;
    QStringList listed;
    for (const auto* root : m_library.roots()) {
        if (const QString key = keyOf(*root); m_handedOver.contains(key) && !listed.contains(key)) {
            listed.append(key);
            sets.append({key, m_library.helpSet(*root).ownTitle()});
        }
    }
    m_pane.setHelpSets(sets);
    m_pane.setIndexState(m_wasStopped             ? IndexState::Stopped
                         : m_service.isIndexing() ? IndexState::UnderWay
                                                  : IndexState::Complete,
                         problems().size());
}

QStringList FullTextSearch::problems() const
{
    QStringList all;
    for (const auto& errors : m_handedOver) {
        all.append(errors);
    }
    return all;
}

void FullTextSearch::showProblems()
{
    QStringList lines = problems();
    const qsizetype more = lines.size() - MaximumProblems;
    if (more > 0) {
        lines.resize(MaximumProblems);
        lines.append(tr("… and %1 more.").arg(more));
    }
    openMessage(QMessageBox::Information, tr("Pages that cannot be searched"), lines.join(u'\n'), &m_pane);
}
