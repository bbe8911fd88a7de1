// SPDX-License-Identifier: MIT
#include "fulltext/indexwriter.h"

#include "fulltext/pagequeue.h"

#include <QCoreApplication>

#include <chrono>
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

class Update {
public:
    Update(Database& database, const SearchSource& source, const SourcePages& pages)
        : m_database(database), m_source(source), m_pages(pages),
          m_removePage(database.prepare("DELETE FROM pages WHERE id = ?")),
          m_addPage(
              database.prepare("INSERT INTO pages(path, size, time, names, hash, words, titlewords, english, "
                               "title) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)")),
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
        const auto& pages = m_pages.all();
        std::unordered_map<std::string, size_t> positions;
        positions.reserve(pages.size());
        for (size_t i = 0; i < pages.size(); ++i) {
            positions.emplace(pages[i].file.toStdString(), i);
        }
        std::vector<bool> isKnown(pages.size());
        auto known = m_database.prepare("SELECT id, path, size, time, names FROM pages");
        std::vector<int64_t> gone;
        while (known.step()) {
            const auto found = positions.find(std::string(known.text(1)));
            if (found != positions.end() && isSame(known, pages[found->second])) {
                isKnown[found->second] = true;
            } else {
                gone.push_back(known.number(0));
            }
        }
        for (const auto id : gone) {
            m_removePage.bind(1, id).run();
        }
        for (size_t i = 0; i < pages.size(); ++i) {
            if (!isKnown[i]) {
                m_outdated.push_back(&pages[i]);
            }
        }
        return known.ok();
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
    [[nodiscard]] bool isSame(const Statement& known, const SourcePage& page) const
    {
        return known.number(2) == page.size && known.number(3) == page.time &&
               known.number(4) == hashOfNames(m_source, page);
    }

    /// None of its statements may need a journal of its own, as those with RETURNING do: for that, FTS5 would
    /// write what it has gathered, page by page.
    bool add(const IndexedPage& page)
    {
        if (!page.error.isNull() && m_errors.size() < MostErrors) {
            m_errors += QStringLiteral("%1: %2").arg(QString::fromStdString(page.path), page.error);
        }
        m_addPage.bind(1, page.path).bind(2, page.size).bind(3, page.time).bind(4, page.names);
        m_addPage.bind(5, page.hash).bind(6, int64_t(page.words)).bind(7, int64_t(page.titleWords));
        m_addPage.bind(8, int64_t(page.isEnglish)).bind(9, page.title);
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
                                     .bind(4, int64_t(name.isTitle))
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

IndexingResult updateIndex(Database& database, const SearchSource& source, const SourcePages& pages,
                           const std::stop_token& stop, const IndexingProgress& progress)
{
    IndexingResult result;
    if (isMostlyGone(database) && !IndexFile::clear(database)) {
        return {IndexingResult::State::Failed, {database.error()}};
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
