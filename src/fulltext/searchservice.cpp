// SPDX-License-Identifier: MIT
#include "fulltext/searchservice.h"

#include "fulltext/helpsetindex.h"
#include "fulltext/lowpriority.h"
#include "fulltext/searchengine.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <numeric>
#include <optional>
#include <thread>

namespace {

constexpr auto ProgressTime = std::chrono::milliseconds(100); // between two reports

} // namespace

/// The thread that searches. Requests replace each other, changes of the sets do not.
class SearchService::Searching {
public:
    explicit Searching(SearchService& service) : m_service(service)
    {
        m_thread = std::jthread([this](const std::stop_token& quit) { work(quit); });
    }
    ~Searching()
    {
        const std::lock_guard lock(m_mutex);
        m_changes.clear();
        m_request.reset();
        m_stop.request_stop();
    }
    Searching(const Searching&) = delete;
    Searching& operator=(const Searching&) = delete;

    void change(std::function<void(SearchEngine&)> change)
    {
        const std::lock_guard lock(m_mutex);
        m_changes.push_back(std::move(change));
        m_changed.notify_all();
    }

    void search(const SearchRequest& request)
    {
        const std::lock_guard lock(m_mutex);
        m_stop.request_stop();
        m_request = request;
        ++m_number;
        m_changed.notify_all();
    }

private:
    void work(const std::stop_token& quit)
    {
        SearchEngine engine;
        std::unique_lock lock(m_mutex);
        while (m_changed.wait(lock, quit, [this] { return m_request || !m_changes.empty(); })) {
            if (!m_changes.empty()) {
                const auto change = std::move(m_changes.front());
                m_changes.pop_front();
                lock.unlock();
                change(engine);
            } else {
                const auto request = *std::exchange(m_request, std::nullopt);
                m_stop = {};
                const auto number = m_number;
                const auto stop = m_stop.get_token();
                lock.unlock();
                const auto send = [&](const SearchAnswer& answer) { post(answer, number); };
                const auto answer = engine.search(request, stop, send);
                if (answer) {
                    send(*answer);
                }
                for (const auto& set : engine.takeDamaged()) {
                    postRepair(set, IndexTrust::Damaged);
                }
                if (answer && answer->total == 0 && answer->nearestTotal == 0 && !request.isTyping) {
                    for (const auto& set : engine.takeUnchecked(request)) {
                        postRepair(set, IndexTrust::Doubtful);
                    }
                }
            }
            lock.lock();
        }
    }

    void post(const SearchAnswer& answer, int number)
    {
        QMetaObject::invokeMethod(
            &m_service,
            [this, answer, number] {
                if (isLatest(number)) {
                    Q_EMIT m_service.answered(answer);
                }
            },
            Qt::QueuedConnection);
    }

    void postRepair(const SearchableSet& set, IndexTrust trust)
    {
        QMetaObject::invokeMethod(
            &m_service, [this, source = set.source, trust] { m_service.repair(source, trust); },
            Qt::QueuedConnection);
    }

    [[nodiscard]] bool isLatest(int number)
    {
        const std::lock_guard lock(m_mutex);
        return number == m_number;
    }

    SearchService& m_service;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<std::function<void(SearchEngine&)>> m_changes;
    std::optional<SearchRequest> m_request;
    int m_number = 0;        ///< of the latest request
    std::stop_source m_stop; ///< of the request under way
    std::jthread m_thread;   ///< last, so that it ends first
};

/// The thread that makes indexes, one help set after the other.
class SearchService::Indexing {
public:
    Indexing(SearchService& service, Searching& searching) : m_service(service), m_searching(searching)
    {
        m_thread = std::jthread([this](const std::stop_token& quit) { work(quit); });
    }
    ~Indexing() { cancel(); }
    Indexing(const Indexing&) = delete;
    Indexing& operator=(const Indexing&) = delete;

    void add(const std::shared_ptr<const SearchSource>& source, IndexTrust trust)
    {
        const std::lock_guard lock(m_mutex);
        drop(source->contentsFile());
        m_waiting.push_back({source, trust});
        m_changed.notify_all();
    }

    void remove(const QString& contentsFile)
    {
        const std::lock_guard lock(m_mutex);
        drop(contentsFile);
    }

    void cancel()
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.clear();
        m_stop.request_stop();
    }

    [[nodiscard]] bool isBusy() const
    {
        const std::lock_guard lock(m_mutex);
        return m_current != nullptr || !m_waiting.empty();
    }

private:
    using Source = std::shared_ptr<const SearchSource>;
    struct Task {
        Source source;
        IndexTrust trust;
    };

    void drop(const QString& contentsFile)
    {
        std::erase_if(m_waiting,
                      [&](const Task& waiting) { return waiting.source->contentsFile() == contentsFile; });
        if (m_current != nullptr && m_current->contentsFile() == contentsFile) {
            m_stop.request_stop();
        }
    }

    void work(const std::stop_token& quit)
    {
        lowerPriority();
        std::unique_lock lock(m_mutex);
        while (m_changed.wait(lock, quit, [this] { return !m_waiting.empty(); })) {
            const Task task = m_waiting.front();
            m_current = task.source;
            m_waiting.pop_front();
            m_stop = {};
            const auto source = m_current;
            const auto stop = m_stop.get_token();
            lock.unlock();
            const auto result = index(task, stop);
            lock.lock();
            m_current = nullptr;
            const bool isLast = m_waiting.empty();
            post([this, file = source->contentsFile(), errors = result.errors, isLast] {
                Q_EMIT m_service.indexed(file, errors);
                if (isLast && !isBusy()) {
                    Q_EMIT m_service.becameIdle();
                }
            });
            m_doneBefore = isLast ? 0 : m_doneBefore + m_doneOfCurrent;
        }
    }

    IndexingResult index(const Task& task, const std::stop_token& stop)
    {
        auto lastReport = std::chrono::steady_clock::time_point();
        const auto progress = [&](qint64 done, qint64 total) {
            const auto now = std::chrono::steady_clock::now();
            if (done == total || now - lastReport > ProgressTime) {
                lastReport = now;
                report(done, total);
            }
        };
        const auto ready = [&](const SearchableSet& set) {
            // A set that is removed at this moment must be so after it has been added.
            const std::lock_guard lock(m_mutex);
            if (!stop.stop_requested()) {
                m_searching.change([set](SearchEngine& engine) { engine.add(set); });
            }
        };
        return indexHelpSet(task.source, stop, progress, ready, IndexPatience::Endless, task.trust);
    }

    /// Sets that wait have about as many pages as topics.
    void report(qint64 done, qint64 total)
    {
        const std::lock_guard lock(m_mutex);
        m_doneOfCurrent = total;
        const qint64 waiting =
            std::accumulate(m_waiting.begin(), m_waiting.end(), qint64(0), [](qint64 sum, const Task& task) {
                return sum + qint64(task.source->topics().size());
            });
        post([this, allDone = m_doneBefore + done, all = m_doneBefore + total + waiting] {
            Q_EMIT m_service.progressed(allDone, all);
        });
    }

    template <typename Function>
    void post(Function function)
    {
        QMetaObject::invokeMethod(&m_service, std::move(function), Qt::QueuedConnection);
    }

    SearchService& m_service;
    Searching& m_searching;
    mutable std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<Task> m_waiting;
    Source m_current;
    qint64 m_doneBefore = 0; ///< pages of the sets before the current one, since it was idle
    qint64 m_doneOfCurrent = 0;
    std::stop_source m_stop; ///< of the current set
    std::jthread m_thread;   ///< last, so that it ends first
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
