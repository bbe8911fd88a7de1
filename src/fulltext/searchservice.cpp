// SPDX-License-Identifier: MIT
#include "fulltext/searchservice.h"

#include "fulltext/helpsetindex.h"
#include "fulltext/searchengine.h"
#include "system/worker.h"

#include <chrono>
#include <functional>
#include <stop_token>
#include <utility>
#include <vector>

namespace {

constexpr auto ProgressTime = std::chrono::milliseconds(100); // between two reports

} // namespace

/// The thread that searches. Requests replace each other; changes of the sets do not, and come first.
class SearchService::Searching {
public:
    explicit Searching(SearchService& service) : m_service(service) {}
    ~Searching() { m_stop.request_stop(); }
    Searching(const Searching&) = delete;
    Searching& operator=(const Searching&) = delete;

    void change(const std::function<void(SearchEngine&)>& change)
    {
        m_worker.add([this, change] { change(m_engine); }, Worker::Rank::First);
    }

    void search(const SearchRequest& request)
    {
        m_stop.request_stop();
        m_stop = {};
        m_worker.add([this, request, stop = m_stop.get_token()] { answer(request, stop); });
    }

private:
    void answer(const SearchRequest& request, const std::stop_token& stop)
    {
        if (stop.stop_requested()) {
            return;
        }
        const auto send = [&](const SearchAnswer& answer) { post(answer, stop); };
        const auto answer = m_engine.search(request, stop, send);
        if (answer) {
            send(*answer);
        }
        for (const auto& set : m_engine.takeDamaged()) {
            postRepair(set, IndexTrust::Damaged);
        }
        if (answer && answer->total == 0 && answer->nearestTotal == 0 && !request.isTyping) {
            for (const auto& set : m_engine.takeUnchecked(request)) {
                postRepair(set, IndexTrust::Doubtful);
            }
        }
    }

    /// A request that was replaced meanwhile was asked to stop.
    void post(const SearchAnswer& answer, const std::stop_token& stop)
    {
        QMetaObject::invokeMethod(
            &m_service,
            [&service = m_service, answer, stop] {
                if (!stop.stop_requested()) {
                    Q_EMIT service.answered(answer);
                }
            },
            Qt::QueuedConnection);
    }

    void postRepair(const SearchableSet& set, IndexTrust trust)
    {
        QMetaObject::invokeMethod(
            &m_service, [&service = m_service, source = set.source, trust] { service.repair(source, trust); },
            Qt::QueuedConnection);
    }

    SearchService& m_service;
    SearchEngine m_engine;   ///< of the thread
    std::stop_source m_stop; ///< of the latest request
    Worker m_worker{Worker::Priority::Normal};
};

/// The thread that makes indexes, one help set after the other. What is known of them belongs to the event
/// loop, to which the thread posts what has happened.
class SearchService::Indexing {
public:
    Indexing(SearchService& service, Searching& searching) : m_service(service), m_searching(searching) {}
    ~Indexing() { cancel(); }
    Indexing(const Indexing&) = delete;
    Indexing& operator=(const Indexing&) = delete;

    void add(const std::shared_ptr<const SearchSource>& source, IndexTrust trust)
    {
        remove(source->contentsFile());
        const auto job = std::make_shared<Job>();
        job->source = source;
        job->trust = trust;
        job->pages = qint64(source->topics().size());
        m_jobs.push_back(job);
        m_worker.add([this, job] { index(job); });
    }

    void remove(const QString& contentsFile)
    {
        for (const auto& job : m_jobs) {
            if (job->source->contentsFile() == contentsFile) {
                job->isWithdrawn = true;
                job->stop.request_stop();
            }
        }
    }

    void cancel()
    {
        for (const auto& job : m_jobs) {
            job->stop.request_stop();
        }
    }

    [[nodiscard]] bool isBusy() const { return !m_jobs.empty(); }

private:
    struct Job {
        std::shared_ptr<const SearchSource> source;
        IndexTrust trust = IndexTrust::Sound;
        std::stop_source stop;
        // Of the event loop:
        bool isWithdrawn = false;
        qint64 pages = 0; ///< before they are counted, about as many as topics
        qint64 done = 0;
    };
    using Known = std::shared_ptr<Job>;

    void index(const Known& job)
    {
        const auto stop = job->stop.get_token();
        if (stop.stop_requested()) {
            post([this, job] {
                leave(job);
                tellIfIdle();
            });
            return;
        }
        auto lastReport = std::chrono::steady_clock::time_point();
        const auto progress = [&](qint64 done, qint64 total) {
            const auto now = std::chrono::steady_clock::now();
            if (done == total || now - lastReport > ProgressTime) {
                lastReport = now;
                post([this, job, done, total] { report(*job, done, total); });
            }
        };
        const auto ready = [&](const SearchableSet& set) {
            post([this, job, set] {
                if (!job->isWithdrawn) {
                    m_searching.change([set](SearchEngine& engine) { engine.add(set); });
                }
            });
        };
        const auto result = indexHelpSet(job->source, stop, progress, ready, {}, job->trust);
        post([this, job, errors = result.errors] {
            leave(job);
            Q_EMIT m_service.indexed(job->source->contentsFile(), errors);
            tellIfIdle();
        });
    }

    void report(Job& job, qint64 done, qint64 total)
    {
        job.done = done;
        job.pages = total;
        qint64 allDone = m_doneBefore;
        qint64 all = m_doneBefore;
        for (const auto& known : m_jobs) {
            allDone += known->done;
            all += known->pages;
        }
        Q_EMIT m_service.progressed(allDone, all);
    }

    void leave(const Known& job)
    {
        std::erase(m_jobs, job);
        m_doneBefore = m_jobs.empty() ? 0 : m_doneBefore + job->done;
    }

    void tellIfIdle()
    {
        if (m_jobs.empty()) {
            Q_EMIT m_service.becameIdle();
        }
    }

    template <typename Function>
    void post(Function function)
    {
        QMetaObject::invokeMethod(&m_service, std::move(function), Qt::QueuedConnection);
    }

    SearchService& m_service;
    Searching& m_searching;
    std::vector<Known> m_jobs; ///< in their order
    qint64 m_doneBefore = 0;   ///< pages of the sets before them, since it was idle
    Worker m_worker{Worker::Priority::Low};
};

SearchService::SearchService(QObject* parent)
    : QObject(parent), m_searching(std::make_unique<Searching>(*this)),
      m_indexing(std::make_unique<Indexing>(*this, *m_searching))
{
}

SearchService::~SearchService() = default;

void SearchService::addHelpSet(const SearchSource& source)
{
    const auto kept = std::make_shared<const SearchSource>(source);
    m_sources.insert(source.contentsFile(), kept);
    m_indexing->add(kept, IndexTrust::Sound);
}

/// An index is checked once and made anew once only: where the new one is damaged, too, another would not be
/// better, and searches without hits must not begin the work again and again.
void SearchService::repair(const std::shared_ptr<const SearchSource>& source, IndexTrust trust)
{
    const QString file = source->contentsFile();
    auto& worst = m_repaired[file];
    if (m_sources.value(file) == source && trust > worst) {
        worst = trust;
        m_indexing->add(source, trust);
    }
}

void SearchService::removeHelpSet(const QString& contentsFile)
{
    m_sources.remove(contentsFile);
    m_indexing->remove(contentsFile);
    m_searching->change([contentsFile](SearchEngine& engine) { engine.remove(contentsFile); });
}

void SearchService::search(const SearchRequest& request)
{
    m_searching->search(request);
}

void SearchService::cancelIndexing()
{
    m_indexing->cancel();
}

bool SearchService::isIndexing() const
{
    return m_indexing->isBusy();
}
