// SPDX-License-Identifier: MIT
#include "fulltext/searchengine.h"

#include "pages/pagefile.h"
#include "pages/plainpage.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto SnippetTime = std::chrono::milliseconds(25); // that an answer waits for its snippets
constexpr auto SpellingTime = std::chrono::milliseconds(150);
constexpr auto NearestTime = std::chrono::milliseconds(1000); // after which no further query is tried
constexpr qint64 MostOfPage = 8'000'000; // bytes of a page's file that a snippet is looked for in

double millisecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

/// Titles of the books that an entry of the contents stands in.
QStringList pathOf(const SearchSource& source, int topic)
{
    QStringList path;
    const auto& topics = source.topics();
    int level = topics[size_t(topic)].level;
    for (auto i = size_t(topic); level > 0 && i-- > 0;) {
        if (topics[i].level < level) {
            level = topics[i].level;
            path.prepend(source.title(topics[i]).toString());
        }
    }
    return path;
}

/// The entry of the contents that stands for the page: one that has no anchor, else the first one.
int topicOf(const SearchSource& source, const SourcePage& page)
{
    const auto whole = std::find_if(page.topics.begin(), page.topics.end(), [&](int topic) {
        const auto name = source.page(source.topics()[size_t(topic)]);
        return anchorBegin(name, page.file) == name.size();
    });
    return whole != page.topics.end() ? *whole : page.topics.empty() ? -1 : page.topics.front();
}

QString lineOf(const QString& text)
{
    QString line = text.simplified();
    for (auto& c : line) {
        c = c.category() == QChar::Other_Control ? QChar(u' ') : c;
    }
    return line;
}

SearchQuery without(const SearchQuery& query, size_t clause)
{
    SearchQuery rest = query;
    rest.clauses.erase(rest.clauses.begin() + qsizetype(clause));
    return rest;
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
        if (isWanted && set->index->isOpen()) {
            set->index->setStop(stop);
            sets.push_back(set.get());
        }
    }
    return sets;
}

std::optional<SearchAnswer> SearchEngine::search(const SearchRequest& request, const std::stop_token& stop,
                                                 const std::function<void(const SearchAnswer&)>& early)
{
    const auto begin = Clock::now();
    const auto sets = scope(request, stop);
    SearchQuery query = parseQuery(request.query, request.isTyping);
    SearchAnswer answer;
    answer.query = request.query;
    const int limit = std::max(request.limit, 0);
    auto found = findAll(sets, query, limit, stop);
    answer.total = found ? found->total : 0;
    if (found && found->total == 0 && asksForSomething(query)) {
        found = findNearest(sets, query, limit, stop);
        if (found && found->total > 0) {
            answer.nearest = query.text();
            answer.nearestTotal = found->total;
        }
    }
    if (!found) {
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
    if (!addSnippets(query, answer, tell, stop)) {
        return std::nullopt;
    }
    answer.isComplete = true;
    answer.milliseconds = millisecondsSince(begin);
    return answer;
}

/// A word says the less the more pages of all sets have it.
std::vector<double> SearchEngine::weightsFor(const std::vector<Set*>& sets, const SearchQuery& query)
{
    std::vector<int64_t> sums;
    for (auto* set : sets) {
        const auto counts = set->index->count(query);
        sums.resize(counts.size());
        std::transform(counts.begin(), counts.end(), sums.begin(), sums.begin(), std::plus());
    }
    std::vector<double> weights;
    weights.reserve(sums.size());
    for (const auto sum : sums) {
        weights.push_back(rarity(sum, sums.back()));
    }
    return weights;
}

std::optional<SearchEngine::Found> SearchEngine::findAll(const std::vector<Set*>& sets,
                                                         const SearchQuery& query, int limit,
                                                         const std::stop_token& stop)
{
    Found all;
    const auto weights = weightsFor(sets, query);
    for (auto* set : sets) {
        auto found = set->index->search(query, weights, size_t(limit));
        if (stop.stop_requested()) {
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
    all.hits.resize(std::min(all.hits.size(), size_t(limit)));
    return all;
}

/// The query with near spellings for the words that no page has; nothing when there is none to be replaced.
std::optional<SearchQuery> SearchEngine::corrected(const std::vector<Set*>& sets, const SearchQuery& query)
{
    const auto end = Clock::now() + SpellingTime;
    SearchQuery result = query;
    bool isChanged = false;
    for (auto& clause : result.clauses) {
        if (clause.isExcluded || clause.terms.size() != 1 || clause.terms.front().words.size() != 1) {
            continue;
        }
        auto& term = clause.terms.front();
        const bool isThere = std::any_of(sets.begin(), sets.end(),
                                         [&](Set* set) { return set->index->hasWord(term.words.front()); });
        std::optional<SearchIndex::Spelling> best;
        for (auto* set : sets) {
            const auto found = isThere ? std::nullopt : set->index->nearestWord(term.words.front(), end);
            if (found && (!best || found->distance < best->distance ||
                          (found->distance == best->distance && found->pages > best->pages))) {
                best = found;
            }
        }
        if (best) {
            term = {{best->word}, false, false};
            clause.text = QString::fromStdString(best->word);
            isChanged = true;
        }
    }
    return isChanged ? std::optional(result) : std::nullopt;
}

/// Another spelling, else a word less, else the rarest word that is there. `query` becomes what was found.
std::optional<SearchEngine::Found> SearchEngine::findNearest(const std::vector<Set*>& sets,
                                                             SearchQuery& query, int limit,
                                                             const std::stop_token& stop)
{
    const auto end = Clock::now() + NearestTime;
    std::vector<SearchQuery> candidates;
    const auto best = [&]() -> std::optional<Found> {
        Found nearest;
        for (const auto& candidate : candidates) {
            if (Clock::now() > end && &candidate != &candidates.front()) {
                break;
            }
            auto found = findAll(sets, candidate, limit, stop);
            if (!found) {
                return std::nullopt;
            }
            if (found->total > 0 && (nearest.total == 0 || found->total < nearest.total)) {
                nearest = std::move(*found);
                query = candidate;
            }
        }
        return nearest;
    };
    if (auto spelled = corrected(sets, query)) {
        candidates = {*spelled};
        auto found = best();
        if (!found || found->total > 0) {
            return found;
        }
        query = *spelled;
    }
    const SearchQuery all = query;
    candidates.clear();
    for (size_t i = 0; i < all.clauses.size(); ++i) {
        if (auto rest = without(all, i); asksForSomething(rest)) {
            candidates.push_back(std::move(rest));
        }
    }
    auto found = best();
    if (!found || found->total > 0) {
        return found;
    }
    candidates.clear();
    for (const auto& clause : all.clauses) {
        if (!clause.isExcluded) {
            candidates.push_back({{clause}});
        }
    }
    return best();
}

std::vector<SearchHit> SearchEngine::describeHits(const Found& found)
{
    std::vector<SearchHit> hits;
    QSet<qint64> texts; // copies of a page may be in several help sets
    for (const auto& hit : found.hits) {
        const auto page = hit.set->index->page(hit.candidate.page);
        if (page.file.isEmpty() || (page.hash != 0 && texts.contains(page.hash))) {
            continue;
        }
        texts.insert(page.hash);
        hits.push_back(describe(hit, page));
    }
    return hits;
}

SearchHit SearchEngine::describe(const Hit& hit, const SearchIndex::Page& page)
{
    const auto& source = *hit.set->set.source;
    SearchHit result;
    result.page = page.file;
    result.contentsFile = source.contentsFile();
    result.helpSet = lineOf(source.title());
    result.score = hit.candidate.score;
    result.isEnglish = page.isEnglish;
    result.title = lineOf(page.title);
    const auto* entries = hit.set->set.pages->find(page.file);
    const int topic = entries == nullptr ? -1 : topicOf(source, *entries);
    if (topic >= 0) {
        const auto& entry = source.topics()[size_t(topic)];
        const auto name = source.page(entry);
        const qsizetype anchor = anchorBegin(name, page.file);
        const bool isWhole = anchor == name.size();
        result.page = name.first(anchor).toString();
        result.path = pathOf(source, topic);
        if (isWhole || result.title.isEmpty()) {
            result.title = lineOf(source.title(entry).toString());
        }
    }
    if (result.title.isEmpty()) {
        result.title = result.page.sliced(result.page.lastIndexOf(u'/') + 1);
    }
    result.file = result.page;
    result.page += QString::fromStdString(hit.anchor);
    return result;
}

bool SearchEngine::addSnippets(const SearchQuery& query, SearchAnswer& answer,
                               const std::function<void()>& early, const std::stop_token& stop)
{
    const auto end = Clock::now() + SnippetTime;
    bool isLate = false;
    QueryMatcher english(query, true);
    QueryMatcher plain(query, false);
    for (auto& hit : answer.hits) {
        if (stop.stop_requested()) {
            return false;
        }
        if (!isLate && Clock::now() > end) {
            isLate = true;
            early();
        }
        auto snippet = makeSnippet(textOf(hit.file), hit.isEnglish ? english : plain);
        hit.snippet = std::move(snippet.text);
        hit.marks = std::move(snippet.marks);
    }
    return true;
}

const std::string& SearchEngine::textOf(const QString& page)
{
    if (const auto* known = m_texts.object(page)) {
        return *known;
    }
    static const std::string none;
    const auto source = readPage(page, MostOfPage);
    if (!source.ok()) {
        return none;
    }
    PageContext context{page, {}};
    context.styleSheets = &m_styleSheets;
    auto text =
        std::make_unique<std::string>(source.value().isHtml ? readPlainPage(source.value().text, context).text
                                                            : source.value().text.toStdString());
    text->resize(std::min(text->size(), SnippetSource));
    text->shrink_to_fit();
    const auto cost = qsizetype(text->size()) + 1;
    m_texts.insert(page, text.release(), cost);
    const auto* kept = m_texts.object(page);
    return kept == nullptr ? none : *kept;
}
