// SPDX-License-Identifier: MIT
#include "fulltext/helpsetindex.h"

#include "fulltext/indexfile.h"
#include "fulltext/searchcache.h"

#include <QFile>

#include <atomic>

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

    IndexingResult inFile(const QString& file)
    {
        const FileLock lock(SearchCache::lockFor(file), m_stop);
        if (!lock.isHeld()) {
            return {m_stop.stop_requested() ? State::Stopped : State::Failed, {}};
        }
        auto result = openAndUpdate(file);
        if (result.state == State::Damaged) {
            SearchCache::remove(file);
            result = openAndUpdate(file);
        }
        SearchCache::keepSmall(file);
        return result;
    }

    IndexingResult inMemory()
    {
        const QByteArray name = newNameInMemory();
        m_set.inMemory = IndexFile::open(name);
        return m_set.inMemory == nullptr ? IndexingResult{State::Failed, {}} : update(name, *m_set.inMemory);
    }

private:
    IndexingResult openAndUpdate(const QString& file)
    {
        const QByteArray name = QFile::encodeName(file);
        auto database = IndexFile::open(name);
        if (database == nullptr) {
            SearchCache::remove(file);
            database = IndexFile::open(name);
        }
        return database == nullptr ? IndexingResult{State::Failed, {}} : update(name, *database);
    }

    IndexingResult update(const QByteArray& name, Database& database)
    {
        m_set.database = name;
        m_ready(m_set);
        return updateIndex(database, *m_set.source, *m_set.pages, m_stop, m_progress);
    }

    const std::stop_token& m_stop;
    const IndexingProgress& m_progress;
    const std::function<void(const SearchableSet&)>& m_ready;
    SearchableSet m_set;
};

} // namespace

IndexingResult indexHelpSet(const std::shared_ptr<const SearchSource>& source, const std::stop_token& stop,
                            const IndexingProgress& progress,
                            const std::function<void(const SearchableSet&)>& ready)
{
    Indexing indexing(source, stop, progress, ready);
    const QString file = SearchCache::databaseFor(source->contentsFile());
    auto result = file.isNull() ? IndexingResult{State::Failed, {}} : indexing.inFile(file);
    return result.state == State::Failed || result.state == State::Damaged ? indexing.inMemory() : result;
}
