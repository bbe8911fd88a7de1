// SPDX-License-Identifier: MIT
#include "fulltext/indexwriter.h"

#include "fulltext/pagequeue.h"

#include <QCoreApplication>

#include <chrono>
#include <optional>
#include <string>
#include <unordered_map>

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto StepTime = std::chrono::seconds(1);
constexpr int StepPages = 4000;
constexpr int MostErrors = 100;

/// Pages that are gone still take room among the words.
bool isMostlyGone(Database& database)
{
    const auto live = database.number("SELECT count(*) FROM pages");
    const auto made =
        database.number("SELECT coalesce(max(seq), 0) FROM sqlite_sequence WHERE name = 'pages'");
    return made > 2 * live + 100;
}

/// Merges some of what was written in many steps; takes tens of milliseconds.
void tidy(Database& database)
{
    database.run("INSERT INTO words(words, rank) VALUES('merge', 500)");
}

bool isSame(const SearchSource& source, const Statement& known, const SourcePage& page)
{
    return known.number(2) == page.size && known.number(3) == page.time &&
           known.number(4) == hashOfNames(source, page);
}

/// Between a database and the pages as they are.
struct Difference {
    std::vector<int64_t> gone; ///< numbers of pages in the database
    std::vector<const SourcePage*> outdated;
};

/// Nothing on errors.
std::optional<Difference> findDifference(Database& database, const SearchSource& source,
                                         const SourcePages& sourcePages)
{
    const auto& pages = sourcePages.all();
    std::unordered_map<std::string, size_t> positions;
    positions.reserve(pages.size());
    for (size_t i = 0; i < pages.size(); ++i) {
        positions.emplace(pages[i].file.toStdString(), i);
    }
    std::vector<bool> isKnown(pages.size());
    Difference difference;
    auto known = database.prepare("SELECT id, path, size, time, names FROM pages");
    while (known.step()) {
        const auto found = positions.find(std::string(known.text(1)));
        if (found != positions.end() && isSame(source, known, pages[found->second])) {
            isKnown[found->second] = true;
        } else {
            difference.gone.push_back(known.number(0));
        }
    }
    for (size_t i = 0; i < pages.size(); ++i) {
        if (!isKnown[i]) {
            difference.outdated.push_back(&pages[i]);
        }
    }
    return known.ok() ? std::optional(std::move(difference)) : std::nullopt;
}

class Update {
public:
    Update(Database& database, const SearchSource& source, const SourcePages& pages)
        : m_database(database), m_source(source), m_pages(pages),
          m_removePage(database.prepare("DELETE FROM pages WHERE id = ?")),
          m_addPage(database.prepare(
              "INSERT INTO pages(path, size, time, names, hash, words, titlewords, language, "
              "links, title) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")),
          m_addWords(database.prepare("INSERT INTO words(rowid, body, title, keywords, headings) "
                                      "VALUES(?, ?, ?, ?, ?)")),
          m_addName(database.prepare("INSERT OR IGNORE INTO names VALUES(?, ?, ?, ?)"))
    {
    }

    /// Finds out what is to be done. False on errors.
    bool compare()
    {
        if (!m_database.run("BEGIN IMMEDIATE")) {
            return false;
        }
        const auto difference = findDifference(m_database, m_source, m_pages);
        if (!difference) {
            return false;
        }
        for (const auto id : difference->gone) {
            m_removePage.bind(1, id).run();
        }
        m_outdated = difference->outdated;
        return true;
    }

    /// False when the database fails.
    bool write(const std::stop_token& stop, const IndexingProgress& progress)
    {
        const auto total = qint64(m_pages.all().size());
        const auto known = total - qint64(m_outdated.size());
        progress(known, total);
        PageQueue queue(m_source, m_outdated, stop);
        auto stepBegin = Clock::now();
        int inStep = 0;
        qint64 done = 0;
        bool isWritten = true;
        while (isWritten && !stop.stop_requested()) {
            const auto page = queue.next();
            if (page == nullptr) {
                break;
            }
            isWritten = add(*page);
            ++done;
            if (++inStep >= StepPages || Clock::now() - stepBegin > StepTime) {
                isWritten = isWritten && m_database.run("COMMIT") && m_database.run("BEGIN IMMEDIATE");
                stepBegin = Clock::now();
                inStep = 0;
            }
            if (done % 128 == 0) {
                progress(known + done, total);
            }
        }
        isWritten = isWritten && m_database.run("COMMIT");
        progress(known + done, total);
        return isWritten;
    }

    [[nodiscard]] bool isNeeded() const { return !m_outdated.empty(); }
    [[nodiscard]] const QStringList& errors() const { return m_errors; }

private:
    /// None of its statements may need a journal of its own, as those with RETURNING do: for that, FTS5 would
    /// write what it has gathered, page by page.
    bool add(const IndexedPage& page)
    {
        if (!page.error.isNull() && m_errors.size() < MostErrors) {
            m_errors += QStringLiteral("%1: %2").arg(QString::fromStdString(page.path), page.error);
        }
        // What could not be read is never the same as its file, so that it is read next time.
        m_addPage.bind(1, page.path)
            .bind(2, page.isUnread ? -1 : page.size)
            .bind(3, page.time)
            .bind(4, page.names);
        m_addPage.bind(5, page.hash).bind(6, int64_t(page.words)).bind(7, int64_t(page.titleWords));
        m_addPage.bind(8, page.language).bind(9, int64_t(page.linkShare)).bind(10, page.title);
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
    std::vector<const SourcePage*> m_outdated;
    QStringList m_errors;
    Statement m_removePage;
    Statement m_addPage;
    Statement m_addWords;
    Statement m_addName;
};

} // namespace

bool isUpToDate(Database& database, const SearchSource& source, const SourcePages& pages)
{
    const auto difference = findDifference(database, source, pages);
    return difference && difference->gone.empty() && difference->outdated.empty();
}

IndexingResult updateIndex(Database& database, const SearchSource& source, const SourcePages& pages,
                           const std::stop_token& stop, const IndexingProgress& progress)
{
    IndexingResult result;
    if (isMostlyGone(database) && !IndexFile::clear(database)) {
        return {IndexingResult::State::Failed, false, {}, {database.error()}};
    }
    Update update(database, source, pages);
    const bool isWritten = !stop.stop_requested() && update.compare() && update.write(stop, progress);
    result.errors = update.errors();
    if (!isWritten && !stop.stop_requested()) {
        result.state = database.isDamaged() ? IndexingResult::State::Damaged : IndexingResult::State::Failed;
        result.errors += database.error();
    }
    if (!isWritten) {
        database.run("ROLLBACK");
    } else if (update.isNeeded()) {
        tidy(database);
    }
    if (stop.stop_requested()) {
        result.state = IndexingResult::State::Stopped;
    }
    return result;
}
