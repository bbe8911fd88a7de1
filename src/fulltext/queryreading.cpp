// SPDX-License-Identifier: MIT
#include "fulltext/queryreading.h"

#include <algorithm>
#include <utility>

namespace {

constexpr auto SpellingTime = std::chrono::milliseconds(150);
constexpr size_t LeastBeginning = 3;  // bytes of a word that may be unfinished
constexpr size_t MostPieces = 32;     // of all compounds
constexpr int64_t MuchMoreUsual = 10; // times, that a word is which a rare one begins

bool isOneWord(const QueryClause& clause)
{
    return !clause.isExcluded && !clause.terms.empty() && clause.terms.front().words.size() == 1 &&
           !clause.terms.front().isExact;
}

/// Of a writing without blanks: words are pairs of characters.
bool isInPairs(const QueryTerm& term)
{
    return term.words.size() > 1 &&
           std::all_of(term.words.begin(), term.words.end(), [](const std::string& word) {
               return static_cast<unsigned char>(word.front()) >= 0xE0;
           });
}

} // namespace

bool QueryReading::isAnywhere(const std::string& word) const
{
    return std::any_of(m_indexes.begin(), m_indexes.end(),
                       [&](SearchIndex* index) { return index->vocabulary().has(word); });
}

bool QueryReading::isForm(const std::string& word) const
{
    return std::any_of(m_indexes.begin(), m_indexes.end(),
                       [&](SearchIndex* index) { return index->vocabulary().hasForms(word); });
}

int64_t QueryReading::beginnings(const std::string& word) const
{
    int64_t pages = 0;
    for (auto* index : m_indexes) {
        pages += index->vocabulary().beginnings(word);
    }
    return pages;
}

SearchQuery QueryReading::read(const SearchQuery& query, bool isTyping) const
{
    SearchQuery read = query;
    readLiterally(read, true);
    if (isTyping) {
        readUnfinished(read);
    }
    return read;
}

SearchQuery QueryReading::readExcluding(const SearchQuery& query, bool isTyping) const
{
    SearchQuery read = query;
    readLiterally(read, false);
    if (isTyping) {
        readUnfinished(read);
    }
    return read;
}

void QueryReading::readLiterally(SearchQuery& query, bool withExcluded) const
{
    for (auto& clause : query.clauses) {
        auto literals = std::exchange(clause.literals, {});
        std::erase_if(literals, [this](const QueryTerm& term) { return !isAnywhere(term.words.front()); });
        if (!literals.empty() && (withExcluded || !clause.isExcluded)) {
            clause.terms = std::move(literals);
            clause.isPlain = true;
            clause.isLiteral = !clause.isExcluded;
            if (clause.isExcluded) {
                clause.isExcluded = false;
                clause.text = u'"' + clause.text + u'"';
            }
        }
    }
    std::erase_if(query.clauses, [](const QueryClause& clause) { return clause.terms.empty(); });
    const bool isAny = std::any_of(query.clauses.begin(), query.clauses.end(),
                                   [](const QueryClause& clause) { return !clause.isExcluded; });
    if (!isAny) {
        query.clauses.clear();
    }
}

/// While somebody types, a rare word may be the beginning of a usual one, too.
void QueryReading::readUnfinished(SearchQuery& query) const
{
    for (auto& clause : query.clauses) {
        if (!isOneWord(clause) || !clause.isPlain || query.clauses.size() < 2) {
            continue;
        }
        auto& term = clause.terms.front();
        const auto& word = term.words.front();
        if (word.size() < LeastBeginning || term.isPrefix || !isForm(word)) {
            continue;
        }
        int64_t pages = 0;
        for (auto* index : m_indexes) {
            pages += index->vocabulary().forms(word).pages;
        }
        term.isPrefix = pages * MuchMoreUsual < beginnings(word);
    }
}

std::vector<SearchQuery> QueryReading::otherReadings(const SearchQuery& query) const
{
    std::vector<SearchQuery> readings;
    for (auto reading : {begun(query, false), begun(query, true), inPieces(query), corrected(query)}) {
        if (reading) {
            readings.push_back(std::move(*reading));
        }
    }
    return readings;
}

/// With the words that are nowhere, or with all of them, as beginnings.
std::optional<SearchQuery> QueryReading::begun(const SearchQuery& query, bool withAll) const
{
    SearchQuery result = query;
    bool isChanged = false;
    for (auto& clause : result.clauses) {
        if (!isOneWord(clause) || !clause.isPlain) {
            continue;
        }
        auto& term = clause.terms.front();
        const auto& word = term.words.front();
        const bool isWanted = !term.isPrefix && word.size() >= LeastBeginning && (withAll || !isForm(word));
        if (isWanted && beginnings(word) > 0) {
            term.isPrefix = true;
            clause.text += u'*';
            isChanged = true;
        }
    }
    return isChanged ? std::optional(result) : std::nullopt;
}

/// A run of a writing without blanks may be several words, which need not stand beside each other.
std::optional<SearchQuery> QueryReading::inPieces(const SearchQuery& query)
{
    SearchQuery result;
    bool isChanged = false;
    for (const auto& clause : query.clauses) {
        if (clause.isExcluded || !clause.isPlain || clause.terms.size() != 1 ||
            !isInPairs(clause.terms.front())) {
            result.clauses.push_back(clause);
            continue;
        }
        for (const auto& pair : clause.terms.front().words) {
            if (result.clauses.size() >= MostPieces) {
                break;
            }
            result.clauses.push_back(
                {{{{pair}, true, false}}, {}, false, true, false, QString::fromStdString(pair)});
        }
        isChanged = true;
    }
    return isChanged ? std::optional(result) : std::nullopt;
}

/// The query with near spellings for the words that no page has.
std::optional<SearchQuery> QueryReading::corrected(const SearchQuery& query) const
{
    const auto end = std::chrono::steady_clock::now() + SpellingTime;
    SearchQuery result = query;
    bool isChanged = false;
    for (auto& clause : result.clauses) {
        if (!isOneWord(clause) || clause.terms.size() != 1 || isForm(clause.terms.front().words.front())) {
            continue;
        }
        std::optional<Vocabulary::Spelling> best;
        for (auto* index : m_indexes) {
            const auto found = index->vocabulary().nearest(clause.terms.front().words.front(), end);
            if (found && (!best || found->distance < best->distance ||
                          (found->distance == best->distance && found->pages > best->pages))) {
                best = found;
            }
        }
        if (best) {
            clause.terms.front() = {{best->word}, false, false};
            clause.text = QString::fromStdString(best->word);
            isChanged = true;
        }
    }
    return isChanged ? std::optional(result) : std::nullopt;
}
