// SPDX-License-Identifier: MIT
#include "fulltext/indexwriter.h"

#include "fulltext/linkedpages.h"
#include "fulltext/pagequeue.h"
#include "sources/pagefiles.h"

#include <QCoreApplication>

#include <chrono>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto StepTime = std::chrono::seconds(1);
constexpr int StepPages = 4000;
constexpr int MostErrors = 100;
constexpr int MuchFree = 20; // one of so many pages of the file

/// Pages that are gone still take room among the words.
bool isMostlyGone(Database& database)
{
    const auto live = database.number("SELECT count(*) FROM pages");
    const auto made =
        database.number("SELECT coalesce(max(seq), 0) FROM sqlite_sequence WHERE name = 'pages'");
    return made > 2 * live + 100;
}

/// Merges some of what was written in many steps, and gives back the room that this leaves, in steps of some
/// tens of milliseconds: of a large file it may be most.
void tidy(Database& database, const std::stop_token& stop)
{
    database.run("INSERT INTO words(words, rank) VALUES('merge', 500)");
    int64_t free = database.number("PRAGMA freelist_count");
    if (free * MuchFree <= database.number("PRAGMA page_count")) {
        return;
    }
    for (int64_t before = free + 1; free > 0 && free < before && !stop.stop_requested();) {
        database.run("PRAGMA incremental_vacuum(1000)");
        before = std::exchange(free, database.number("PRAGMA freelist_count"));
    }
}

bool isSame(const SearchSource& source, const Statement& known, const SourcePage& page, uint64_t seed)
{
    return known.number(2) == page.size && known.number(3) == page.time &&
           known.number(4) == hashOfNames(source, page, seed);
}

/// Between a database and the pages as they are.
struct Difference {
    explicit Difference(const SourcePages& named) : linked(named) {}

    std::vector<int64_t> gone; ///< numbers of pages in the database
    std::vector<const SourcePage*> outdated;
    LinkedPages linked;
};

/// Null on errors, or when a stop is asked for.
std::unique_ptr<Difference> findDifference(Database& database, const SearchSource& source,
                                           const SourcePages& sourcePages, const std::stop_token& stop)
{
    const auto& pages = sourcePages.all();
    std::unordered_map<std::string, size_t> positions;
    positions.reserve(pages.size());
    for (size_t i = 0; i < pages.size(); ++i) {
        positions.emplace(pages[i].file.toStdString(), i);
    }
    const uint64_t seed = CommonBeginnings(source).hash();
    std::vector<int64_t> same(pages.size());
    auto difference = std::make_unique<Difference>(sourcePages);
    bool isLinkUnknown = false;
    auto known = database.prepare("SELECT id, path, size, time, names, targets FROM pages");
    while (!stop.stop_requested() && known.step()) {
        std::string path(known.text(1));
        const auto found = positions.find(path);
        if (found != positions.end() && isSame(source, known, pages[found->second], seed)) {
            same[found->second] = known.number(0);
            difference->linked.follow(path, known.text(5));
        } else if (found == positions.end() && known.number(4) == 0) {
            difference->linked.addKnown(std::move(path), {known.number(0), known.number(2), known.number(3),
                                                          std::string(known.text(5))});
        } else {
            // Of links to pages that had a name nothing was noted.
            isLinkUnknown = isLinkUnknown || (found == positions.end() &&
                                              mayBeLinked(QString::fromStdString(path), sourcePages) &&
                                              isPageFile(QString::fromStdString(path)));
            difference->gone.push_back(known.number(0));
        }
    }
    for (size_t i = 0; i < pages.size(); ++i) {
        if (same[i] != 0 && isLinkUnknown) {
            difference->gone.push_back(same[i]);
        }
        if (same[i] == 0 || isLinkUnknown) {
            difference->outdated.push_back(&pages[i]);
        }
    }
    return known.ok() && !stop.stop_requested() ? std::move(difference) : nullptr;
}

class Update {
public:
    Update(Database& database, const SearchSource& source, const SourcePages& pages)
        : m_database(database), m_source(source), m_pages(pages),
          m_removePage(database.prepare("DELETE FROM pages WHERE id = ?")),
          m_addPage(database.prepare(
              "INSERT INTO pages(path, size, time, names, hash, words, titlewords, headingwords, "
              "keywordwords, language, links, title, targets) "
              "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")),
          m_addWords(database.prepare("INSERT INTO words(rowid, body, title, keywords, headings) "
                                      "VALUES(?, ?, ?, ?, ?)")),
          m_addName(database.prepare("INSERT OR IGNORE INTO names VALUES(?, ?, ?, ?)"))
    {
    }

    /// Finds out what is to be done. False on errors, or when a stop is asked for.
    bool compare(const std::stop_token& stop)
    {
        if (!m_database.run("BEGIN IMMEDIATE")) {
            return false;
        }
        m_difference = findDifference(m_database, m_source, m_pages, stop);
        if (m_difference == nullptr) {
            return false;
        }
        remove(m_difference->gone);
        return true;
    }

    /// False when the database fails.
    bool write(const std::stop_token& stop, const IndexingProgress& progress)
    {
        m_stepBegin = Clock::now();
        bool isWritten = writePages(m_difference->outdated, stop, progress);
        while (isWritten && !stop.stop_requested()) {
            const auto linked = nextLinked();
            if (linked.empty()) {
                remove(m_difference->linked.unreached());
                break;
            }
            isWritten = writePages(linked, stop, progress);
        }
        return isWritten && m_database.run("COMMIT");
    }

    [[nodiscard]] bool hasWritten() const { return m_hasWritten; }
    [[nodiscard]] const QStringList& errors() const { return m_errors; }
    [[nodiscard]] bool isLimited() const
    {
        return m_difference != nullptr && m_difference->linked.isLimited();
    }

private:
    void remove(const std::vector<int64_t>& pages)
    {
        for (const auto page : pages) {
            m_removePage.bind(1, page).run();
        }
    }

    std::vector<const SourcePage*> nextLinked()
    {
        std::vector<int64_t> outdated;
        auto pages = m_difference->linked.next(outdated);
        remove(outdated);
        return pages;
    }

    bool writePages(const std::vector<const SourcePage*>& pages, const std::stop_token& stop,
                    const IndexingProgress& progress)
    {
        const auto total = qint64(m_pages.all().size()) + qint64(m_difference->linked.count());
        auto done = total - qint64(pages.size());
        progress(done, total);
        PageQueue queue(m_source, m_pages, pages, stop);
        bool isWritten = true;
        while (isWritten && !stop.stop_requested()) {
            const auto page = queue.next();
            if (page == nullptr) {
                break;
            }
            isWritten = add(*page) && keepStep();
            m_difference->linked.follow(page->path, page->targets);
            if (++done % 128 == 0) {
                progress(done, total);
            }
        }
        progress(done, total);
        return isWritten;
    }

    bool keepStep()
    {
        m_hasWritten = true;
        if (++m_inStep < StepPages && Clock::now() - m_stepBegin <= StepTime) {
            return true;
        }
        m_stepBegin = Clock::now();
        m_inStep = 0;
        return m_database.run("COMMIT") && m_database.run("BEGIN IMMEDIATE");
    }

    /// None of its statements may need a journal of its own, as those with RETURNING do: for that, FTS5 would
    /// write what it has gathered, page by page.
    bool add(const IndexedPage& page)
    {
        const bool isNamed = page.names != 0;
        if (isNamed && !page.error.isNull() && m_errors.size() < MostErrors) {
            m_errors += QStringLiteral("%1: %2").arg(QString::fromStdString(page.path), page.error);
        }
        // What could not be read is never the same as its file, so that it is read next time.
        m_addPage.bind(1, page.path)
            .bind(2, page.isUnread ? -1 : page.size)
            .bind(3, page.time)
            .bind(4, page.names);
        m_addPage.bind(5, page.hash).bind(6, int64_t(page.words)).bind(7, int64_t(page.titleWords));
        m_addPage.bind(8, int64_t(page.headingWords)).bind(9, int64_t(page.keywordWords));
        m_addPage.bind(10, page.language).bind(11, int64_t(page.linkShare)).bind(12, page.title);
        m_addPage.bind(13, page.targets);
        if (!m_addPage.run()) {
            return false;
        }
        const int64_t id = m_database.lastId();
        m_addWords.bind(1, id);
        for (int column = 0; column < int(page.columns.size()); ++column) {
            m_addWords.bind(column + 2, page.columns[size_t(column)]);
        }
        bool isAdded = m_addWords.run();
        for (const auto& name : page.exactNames) {
            isAdded = isAdded && m_addName.bind(1, name.key)
                                     .bind(2, id)
                                     .bind(3, name.anchor)
                                     .bind(4, int64_t(name.kind))
                                     .run();
        }
        return isAdded;
    }

    Database& m_database;
    const SearchSource& m_source;
    const SourcePages& m_pages;
    std::unique_ptr<Difference> m_difference;
    Clock::time_point m_stepBegin;
    int m_inStep = 0; ///< pages
    bool m_hasWritten = false;
    QStringList m_errors;
    Statement m_removePage;
    Statement m_addPage;
    Statement m_addWords;
    Statement m_addName;
};

} // namespace

bool isUpToDate(Database& database, const SearchSource& source, const SourcePages& pages,
                const std::stop_token& stop)
{
    const auto difference = findDifference(database, source, pages, stop);
    std::vector<int64_t> outdated;
    return difference != nullptr && difference->gone.empty() && difference->outdated.empty() &&
           difference->linked.next(outdated).empty() && difference->linked.unreached().empty();
}

IndexingResult updateIndex(Database& database, const SearchSource& source, const SourcePages& pages,
                           const std::stop_token& stop, const IndexingProgress& progress)
{
    IndexingResult result;
    if (isMostlyGone(database) && !IndexFile::clear(database)) {
        return {IndexingResult::State::Failed, false, {}, {database.error()}};
    }
    Update update(database, source, pages);
    const bool isWritten = !stop.stop_requested() && update.compare(stop) && update.write(stop, progress);
    result.errors = update.errors();
    if (update.isLimited()) {
        result.errors += QCoreApplication::translate("HelpSetIndex",
                                                     "%1: there are more pages that only links lead to than "
                                                     "are looked for; the rest is not searched")
                             .arg(source.contentsFile());
    }
    if (!isWritten && !stop.stop_requested()) {
        result.state = database.isDamaged() ? IndexingResult::State::Damaged : IndexingResult::State::Failed;
        result.errors += database.error();
    }
    if (!isWritten) {
        database.run("ROLLBACK");
    } else if (update.hasWritten()) {
        tidy(database, stop);
    }
    if (stop.stop_requested()) {
        result.state = IndexingResult::State::Stopped;
    }
    return result;
}
