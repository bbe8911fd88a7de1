// SPDX-License-Identifier: MIT
#include "fulltext/searchengine.h"

#include "fulltext/queryreading.h"
#include "fulltext/searchhits.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double EnoughWeight = 0.5; // of a query of several words, that a page must have
constexpr size_t SeveralWords = 3;
constexpr double LittleWeight = 0.35; // of the weightiest word's; what has less says nothing by itself
constexpr double AnyWeight = 1e-6;

double millisecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// With OR between the words where it is shown.
SearchQuery asAlternatives(SearchQuery query)
{
    bool isFirst = true;
    for (auto& clause : query.clauses) {
        if (!clause.isExcluded) {
            clause.text.prepend(isFirst ? QString() : QStringLiteral("OR "));
            isFirst = false;
        }
    }
    return query;
}

bool asksForSomething(const SearchQuery& query)
{
    return std::any_of(query.clauses.begin(), query.clauses.end(),
                       [](const QueryClause& clause) { return !clause.isExcluded; });
}

} // namespace

void SearchEngine::add(const SearchableSet& set)
{
    remove(set.source->contentsFile());
    m_texts.clear();
    m_sets.push_back(std::make_unique<Set>(Set{set, std::make_unique<SearchIndex>(set.database), false}));
}

std::vector<SearchableSet> SearchEngine::takeUnchecked(const SearchRequest& request)
{
    std::vector<SearchableSet> unchecked;
    for (auto* set : scope(request, {})) {
        if (!std::exchange(set->isChecked, true) && set->set.inMemory == nullptr) {
            unchecked.push_back(set->set);
        }
    }
    return unchecked;
}

std::vector<SearchableSet> SearchEngine::takeDamaged()
{
    std::vector<SearchableSet> damaged;
    for (const auto& set : m_sets) {
        if (set->index->isDamaged()) {
            damaged.push_back(set->set);
        }
    }
    for (const auto& set : damaged) {
        remove(set.source->contentsFile());
    }
    return damaged;
}

void SearchEngine::remove(const QString& contentsFile)
{
    std::erase_if(m_sets, [&](const auto& set) { return set->set.source->contentsFile() == contentsFile; });
}

std::vector<SearchEngine::Set*> SearchEngine::scope(const SearchRequest& request, const std::stop_token& stop)
{
    std::vector<Set*> sets;
    for (const auto& set : m_sets) {
        const bool isWanted = request.contentsFiles.isEmpty() ||
                              request.contentsFiles.contains(set->set.source->contentsFile());
        if (isWanted && !set->index->isOpen()) { // for a lack of room or rights, which may be over
            set->index = std::make_unique<SearchIndex>(set->set.database);
        }
        if (isWanted && set->index->isOpen()) {
            set->index->setStop(stop);
            sets.push_back(set.get());
        }
    }
    return sets;
}

/// What all steps of a search share.
struct SearchEngine::Search {
    const SearchRequest& request;
    const std::stop_token& stop;
    std::vector<Set*> sets;
    QueryReading reading;
};

std::optional<SearchAnswer> SearchEngine::search(const SearchRequest& request, const std::stop_token& stop,
                                                 const std::function<void(const SearchAnswer&)>& early)
{
    const auto begin = Clock::now();
    const auto sets = scope(request, stop);
    std::vector<SearchIndex*> indexes;
    indexes.reserve(sets.size());
    for (auto* set : sets) {
        indexes.push_back(set->index.get());
    }
    const Search search{request, stop, sets, QueryReading(indexes)};
    SearchQuery query = parseQuery(request.query, request.isTyping);
    SearchAnswer answer;
    answer.query = request.query;
    auto found = findRead(search, query, answer);
    if (!found || stop.stop_requested()) {
        return std::nullopt;
    }
    answer.hits = describeHits(*found);
    const auto tell = [&] {
        answer.milliseconds = millisecondsSince(begin);
        answer.isComplete = false;
        if (early) {
            early(answer);
        }
    };
    if (!m_texts.describe(query, answer.hits, tell, stop)) {
        return std::nullopt;
    }
    answer.isComplete = true;
    answer.milliseconds = millisecondsSince(begin);
    return answer;
}

/// Tries what the query may mean, one after the other; `query` becomes what was found.
std::optional<SearchEngine::Found> SearchEngine::findRead(const Search& search, SearchQuery& query,
                                                          SearchAnswer& answer)
{
    const SearchQuery typed = query;
    query = search.reading.read(typed, search.request.isTyping);
    auto found = findMost(search, query);
    const auto excluding = search.reading.readExcluding(typed, search.request.isTyping);
    if (found && found->total == 0 && excluding.text() != query.text()) {
        query = excluding;
        found = findMost(search, query);
    }
    if (query.text() != excluding.text()) {
        answer.reading = query.text();
        for (const auto& clause : query.clauses) {
            if (clause.text.startsWith(u"\"-")) {
                answer.options += clause.text.sliced(1).chopped(1);
            }
        }
    }
    for (const auto& clause : query.clauses) {
        if (clause.isExcluded) {
            answer.excluded += clause.text.sliced(1);
        }
    }
    answer.total = found ? found->total : 0;
    if (found && found->total == 0 && asksForSomething(query)) {
        found = findNearest(search, query);
        if (found && found->total > 0) {
            answer.nearest = query.text();
            answer.nearestTotal = found->total;
        }
    }
    return found;
}

/// Pages with all words or, where these are several, with those that say most.
std::optional<SearchEngine::Found> SearchEngine::findMost(const Search& search, const SearchQuery& query)
{
    const bool isLong = query.clauses.size() >= SeveralWords && query.isPlain();
    return findAll(search, query, isLong ? EnoughWeight : 1);
}

std::vector<int64_t> SearchEngine::countsFor(const Search& search, const SearchQuery& query)
{
    const auto terms =
        std::accumulate(query.clauses.begin(), query.clauses.end(), size_t(0),
                        [](size_t sum, const QueryClause& clause) { return sum + clause.terms.size(); });
    std::vector<int64_t> sums(terms + 1); // the last one: of all pages
    for (auto* set : search.sets) {
        const auto counts = set->index->count(query);
        std::transform(counts.begin(), counts.end(), sums.begin(), sums.begin(), std::plus());
    }
    return sums;
}

/// A word says the less the more pages of all sets have it.
std::vector<double> SearchEngine::weightsFor(const Search& search, const SearchQuery& query)
{
    const auto sums = countsFor(search, query);
    std::vector<double> weights;
    weights.reserve(sums.size());
    for (const auto sum : sums) {
        weights.push_back(rarity(sum, sums.back()));
    }
    return weights;
}

std::optional<SearchEngine::Found> SearchEngine::findAll(const Search& search, const SearchQuery& query,
                                                         double leastCoverage)
{
    Found all;
    const auto limit = size_t(std::max(search.request.limit, 0));
    const SearchIndex::Wanted wanted{query, weightsFor(search, query), leastCoverage,
                                     search.request.languages, limit};
    for (auto* set : search.sets) {
        auto found = set->index->search(wanted);
        if (search.stop.stop_requested()) {
            return std::nullopt;
        }
        if (!found) {
            continue;
        }
        all.total += found->total;
        for (const auto& candidate : found->best) {
            const auto anchor = found->anchors.find(candidate.page);
            all.hits.push_back(
                {set, candidate, anchor == found->anchors.end() ? std::string() : anchor->second});
        }
    }
    std::stable_sort(all.hits.begin(), all.hits.end(),
                     [](const Hit& a, const Hit& b) { return a.candidate.score > b.candidate.score; });
    all.hits.resize(std::min(all.hits.size(), limit));
    return all;
}

/// What else may have been meant, else pages with the words that are there, all or any of those that say
/// something. `query` becomes what was found.
std::optional<SearchEngine::Found> SearchEngine::findNearest(const Search& search, SearchQuery& query)
{
    for (const auto& reading : search.reading.otherReadings(query)) {
        auto found = findMost(search, reading);
        if (!found || found->total > 0) {
            query = reading;
            return found;
        }
    }
    query = search.reading.corrected(query).value_or(query);
    const auto counts = countsFor(search, query);
    SearchQuery known;
    SearchQuery any;
    size_t number = 0;
    double most = 0;
    for (const bool isLast : {false, true}) {
        number = 0;
        for (const auto& clause : query.clauses) {
            const double weight = rarity(counts[number], counts.back());
            const bool isThere = counts[number] > 0;
            number += clause.terms.size();
            if (!isLast && (isThere || clause.isExcluded)) {
                most = clause.isExcluded ? most : std::max(most, weight);
                known.clauses.push_back(clause);
            } else if (isLast && (clause.isExcluded || (isThere && weight >= most * LittleWeight))) {
                any.clauses.push_back(clause);
            }
        }
    }
    auto found = asksForSomething(known) ? findMost(search, known) : Found{};
    if (!found || found->total > 0 || !asksForSomething(known)) {
        query = known;
        return found;
    }
    query = asAlternatives(any);
    return findAll(search, query, AnyWeight);
}

std::vector<SearchHit> SearchEngine::describeHits(const Found& found)
{
    SearchHits hits;
    for (const auto& hit : found.hits) {
        hits.add(hit.set->set, *hit.set->index, hit.candidate, hit.anchor);
    }
    return hits.take();
}
