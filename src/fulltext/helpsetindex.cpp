// SPDX-License-Identifier: MIT
#include "fulltext/helpsetindex.h"

#include "fulltext/indexfile.h"
#include "fulltext/searchcache.h"
#include "system/filelock.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <chrono>
#include <optional>

namespace {

using State = IndexingResult::State;

QByteArray newNameInMemory()
{
    static std::atomic<int> count = 0;
    return "file:/quenda-search-" + QByteArray::number(++count) + "?vfs=memdb";
}

/// One help set, on its way into a database.
class Indexing {
public:
    Indexing(const std::shared_ptr<const SearchSource>& source, const std::stop_token& stop,
             const IndexingProgress& progress, const std::function<void(const SearchableSet&)>& ready)
        : m_stop(stop), m_progress(progress), m_ready(ready)
    {
        m_set.source = source;
        m_set.pages = std::make_shared<SourcePages>(*source, stop);
    }

    IndexingResult inFile(const QString& file, const IndexPatience& patience, IndexTrust trust)
    {
        if (trust == IndexTrust::Sound) {
            offer(file);
        }
        std::optional<FileLock> lock;
        lock.emplace(SearchCache::lockFor(file), std::chrono::milliseconds(0));
        if (lock->state() == FileLock::State::Taken) {
            if (patience.waits != nullptr) {
                patience.waits();
            }
            lock.emplace(SearchCache::lockFor(file), patience.time, m_stop);
        }
        if (!lock->isHeld()) {
            return lock->state() == FileLock::State::Taken
                       ? withoutLock(file)
                       : notKept(translated("the cache cannot be written"));
        }
        if (trust == IndexTrust::Damaged || (trust == IndexTrust::Doubtful && !isSound(file))) {
            SearchCache::remove(file);
        }
        auto result = openAndUpdate(file);
        if (result.state == State::Damaged) {
            SearchCache::remove(file);
            result = openAndUpdate(file);
        }
        SearchCache::keepSmall(file);
        result.isKept = result.state == State::Complete || result.state == State::Stopped;
        return result;
    }

    /// Readers of a database in memory are kept out while it is written, so it is offered when it is whole.
    IndexingResult inMemory()
    {
        m_set.database = newNameInMemory();
        m_set.inMemory = IndexFile::open(m_set.database);
        if (m_set.inMemory == nullptr) {
            return {State::Failed, false, {}, {}};
        }
        auto result = updateIndex(*m_set.inMemory, *m_set.source, *m_set.pages, m_stop, m_progress);
        m_ready(m_set);
        return result;
    }

    static IndexingResult notKept(const QString& reason) { return {State::Failed, false, {}, {reason}}; }
    static QString translated(const char* text) { return QCoreApplication::translate("HelpSetIndex", text); }

private:
    /// What was indexed earlier can be searched while it is brought up to date, whoever does that.
    void offer(const QString& file)
    {
        if (QFileInfo(file).size() > 0) {
            m_set.database = QFile::encodeName(file);
            m_ready(m_set);
        }
    }

    [[nodiscard]] bool isSound(const QString& file) const
    {
        const auto database = IndexFile::open(QFile::encodeName(file));
        if (database == nullptr) {
            return false;
        }
        database->setStop(m_stop);
        return IndexFile::isSound(*database);
    }

    IndexingResult withoutLock(const QString& file)
    {
        if (m_stop.stop_requested()) {
            return {State::Stopped, false, {}, {}};
        }
        auto database = QFileInfo(file).size() > 0 ? IndexFile::open(QFile::encodeName(file)) : nullptr;
        if (database == nullptr || database->number("SELECT count(*) FROM pages") <= 0) {
            return notKept(translated("another process keeps it from being made"));
        }
        const bool isWhole = isUpToDate(*database, *m_set.source, *m_set.pages, m_stop);
        return {isWhole ? State::Complete : State::Stopped,
                true,
                {},
                isWhole
                    ? QStringList()
                    : QStringList(translated("another process is bringing the index up to date; what it has "
                                             "not read yet is not found"))};
    }

    IndexingResult openAndUpdate(const QString& file)
    {
        const QByteArray name = QFile::encodeName(file);
        auto database = IndexFile::open(name);
        if (database == nullptr) {
            SearchCache::remove(file);
            database = IndexFile::open(name);
        }
        if (database == nullptr) {
            return notKept(translated("the cache cannot be written"));
        }
        m_set.database = name;
        m_ready(m_set);
        return updateIndex(*database, *m_set.source, *m_set.pages, m_stop, m_progress);
    }

    const std::stop_token& m_stop;
    const IndexingProgress& m_progress;
    const std::function<void(const SearchableSet&)>& m_ready;
    SearchableSet m_set;
};

} // namespace

IndexingResult indexHelpSet(const std::shared_ptr<const SearchSource>& source, const std::stop_token& stop,
                            const IndexingProgress& progress,
                            const std::function<void(const SearchableSet&)>& ready,
                            const IndexPatience& patience, IndexTrust trust)
{
    Indexing indexing(source, stop, progress, ready);
    const QString file = SearchCache::databaseFor(source->contentsFile());
    auto result = file.isNull() ? Indexing::notKept(Indexing::translated("there is no cache directory"))
                                : indexing.inFile(file, patience, trust);
    if (result.state != State::Failed && result.state != State::Damaged) {
        return result;
    }
    auto inMemory = indexing.inMemory();
    inMemory.whyNotKept = result.errors.join(QStringLiteral("; "));
    return inMemory;
}
