// SPDX-License-Identifier: MIT
#include "fulltext/searchindex.h"

#include "fulltext/indexfile.h"
#include "fulltext/namematches.h"
#include "fulltext/stemmer.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr double BeginningWeight = 0.4; // of words that only begin like the one being typed
constexpr double FormWeight = 0.6;      // of other forms of a word
constexpr double RelatedWeight = 0.35;  // of words of the same origin
constexpr double UsualShare = 0.05;     // of the pages, that a language must have to count
constexpr size_t MostLanguages = 8;

/// Whether a term stands for all forms of its word.
bool hasForms(const QueryTerm& term)
{
    return !term.isExact && term.words.size() == 1;
}

/// All of a term: quoted, so that nothing in a query is taken for syntax.
std::string phraseOf(const QueryTerm& term)
{
    return SearchExpression::phrase(SearchExpression::joined(term.words, ' ')) + (term.isPrefix ? " *" : "");
}

/// That of the weightiest of each clause's terms.
std::vector<double> clauseWeights(const SearchIndex::Wanted& wanted)
{
    std::vector<double> weights;
    size_t number = 0;
    for (const auto& clause : wanted.query.clauses) {
        double most = 0;
        for (size_t i = 0; i < clause.terms.size(); ++i) {
            most = std::max(most, wanted.weights[number++]);
        }
        weights.push_back(clause.isExcluded ? 0 : most);
    }
    return weights;
}

/// The clauses of which a page must have one to have so much of their weight: the weightiest ones.
std::vector<bool> weightiest(const std::vector<double>& weights, double coverage)
{
    std::vector<size_t> order(weights.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::sort(order.begin(), order.end(), [&](size_t a, size_t b) { return weights[a] > weights[b]; });
    double rest = std::accumulate(weights.begin(), weights.end(), 0.0);
    const double most = rest * coverage;
    std::vector<bool> isChosen(weights.size());
    for (const size_t i : order) {
        if (rest < most) {
            break;
        }
        isChosen[i] = true;
        rest -= weights[i];
    }
    return isChosen;
}

} // namespace

SearchIndex::SearchIndex(const QByteArray& name) : m_database(IndexFile::open(name))
{
    if (isOpen() && !m_ranking.attach(*m_database)) {
        m_database.reset();
    }
    if (isOpen()) {
        m_vocabulary.emplace(*m_database);
    }
}

void SearchIndex::setStop(const std::stop_token& stop)
{
    m_stop = stop;
    m_database->setStop(stop);
}

void SearchIndex::refresh()
{
    const int64_t version = m_database->number("PRAGMA data_version");
    if (version == m_version) {
        return;
    }
    m_version = version;
    m_facts = {};
    m_firstWithHash.clear();
    auto rows =
        m_database->prepare("SELECT id, words, titlewords, links, hash, language, headingwords, keywordwords "
                            "FROM pages");
    while (rows.step()) {
        if (rows.number(0) < 0 || rows.number(0) > IndexFile::LargestPageNumber) {
            m_database->noteDamage();
        } else {
            addPage(rows);
        }
    }
    const double words = m_facts.meanWords - 1;
    if (words > 0 && rows.ok() && m_database->number("SELECT 1 FROM vocabulary LIMIT 1") != 1 &&
        !m_stop.stop_requested()) {
        m_database->noteDamage();
    }
    const auto live = double(std::max<int64_t>(m_facts.live, 1));
    m_facts.meanWords = std::max(1.0, words / live);
    m_facts.meanHeadingWords = std::max(1.0, m_facts.meanHeadingWords / live);
    m_facts.meanKeywordWords = std::max(1.0, m_facts.meanKeywordWords / live);
    m_vocabulary->renew(usualLanguages());
    if (!rows.ok()) {
        m_version = -1; // stopped, or damaged
    }
}

/// The mean lengths are sums until all pages are there.
void SearchIndex::addPage(const Statement& row)
{
    const auto id = uint32_t(row.number(0));
    m_facts.pages.resize(std::max<size_t>(m_facts.pages.size(), id + size_t(1)));
    auto& page = m_facts.pages[id];
    page.isLive = true;
    page.words = uint32_t(row.number(1));
    page.titleWords = uint8_t(std::min<int64_t>(row.number(2), UINT8_MAX));
    page.headingWords = uint32_t(row.number(6));
    page.keywordWords = uint32_t(row.number(7));
    page.linkShare = uint8_t(std::clamp<int64_t>(row.number(3), 0, 100));
    if (const int64_t hash = row.number(4); hash != 0) {
        const auto [first, isFirst] = m_firstWithHash.emplace(hash, id);
        page.copies = isFirst ? 0 : first->second;
        m_facts.pages[first->second].copies = isFirst ? 0 : first->second;
    }
    auto& languages = m_facts.languages;
    const auto name = row.text(5);
    auto language = std::find_if(languages.begin(), languages.end(),
                                 [&](const AllFacts::Language& known) { return known.name == name; });
    if (language == languages.end() && languages.size() <= UINT8_MAX) {
        language = languages.insert(language, {std::string(name), 0});
    }
    language = language == languages.end() ? languages.begin() : language;
    ++language->pages;
    page.language = uint8_t(language - languages.begin());
    ++m_facts.live;
    m_facts.meanWords += page.words;
    m_facts.meanHeadingWords += page.headingWords;
    m_facts.meanKeywordWords += page.keywordWords;
}

/// The languages that a fair share of the pages is in, the most usual first.
std::vector<std::string> SearchIndex::usualLanguages() const
{
    auto languages = m_facts.languages;
    std::erase_if(languages, [&](const AllFacts::Language& language) {
        return language.name.empty() || double(language.pages) < UsualShare * double(m_facts.live);
    });
    std::stable_sort(languages.begin(), languages.end(),
                     [](const auto& a, const auto& b) { return a.pages > b.pages; });
    languages.resize(std::min(languages.size(), MostLanguages));
    std::vector<std::string> names;
    names.reserve(languages.size());
    for (const auto& language : languages) {
        names.push_back(language.name);
    }
    return names;
}

/// The first one preferred that the pages are in, where they are in several.
int SearchIndex::languageFor(const QStringList& preferred) const
{
    const auto usual = usualLanguages();
    for (const auto& wanted : preferred) {
        const std::string name = baseLanguage(wanted.toStdString());
        if (usual.size() > 1 && std::find(usual.begin(), usual.end(), name) != usual.end()) {
            const auto& all = m_facts.languages;
            const auto found = std::find_if(all.begin(), all.end(),
                                            [&](const AllFacts::Language& one) { return one.name == name; });
            return int(found - all.begin());
        }
    }
    return -1;
}

void SearchIndex::addTerm(const QueryTerm& term, double weight, SearchExpression& expression)
{
    if (!hasForms(term)) {
        expression.add(phraseOf(term), weight);
        return;
    }
    const auto& word = term.words.front();
    auto others = m_vocabulary->forms(word).words;
    const bool isThere = !others.empty();
    expression.add(SearchExpression::phrase(word), weight);
    std::erase(others, word);
    if (!others.empty()) {
        expression.add(SearchExpression::phrase(SearchExpression::joined(others, IndexFile::SamePosition)),
                       weight * FormWeight);
    }
    if (term.isPrefix) {
        expression.add(SearchExpression::phrase(word) + " *", weight * (isThere ? BeginningWeight : 1));
    }
    // What a page is called says what it is about, whatever the form; in texts these would be too many.
    if (const auto& related = m_vocabulary->relatives(word); !related.empty()) {
        expression.add("{title headings} : " + SearchExpression::phrase(SearchExpression::joined(
                                                   related, IndexFile::SamePosition)),
                       weight * RelatedWeight);
    }
}

std::vector<int64_t> SearchIndex::count(const SearchQuery& query)
{
    refresh();
    std::vector<int64_t> counts;
    for (const auto& clause : query.clauses) {
        for (const auto& term : clause.terms) {
            if (m_stop.stop_requested()) {
                counts.push_back(0);
                continue;
            }
            if (hasForms(term)) {
                const auto& word = term.words.front();
                const int64_t pages = m_vocabulary->forms(word).pages;
                counts.push_back(pages == 0 && term.isPrefix ? m_vocabulary->beginnings(word) : pages);
                continue;
            }
            auto row = m_database->prepare("SELECT count(*) FROM words WHERE words MATCH ?");
            const std::string phrase = phraseOf(term);
            counts.push_back(!clause.isExcluded && row.bind(1, phrase).step() ? row.number(0) : 0);
        }
    }
    counts.push_back(m_facts.live);
    return counts;
}

SearchExpression SearchIndex::expressionFor(const Wanted& wanted)
{
    using Kind = SearchExpression::Kind;
    const auto& clauses = wanted.query.clauses;
    const bool isStrict = wanted.leastCoverage >= 1;
    const auto isNeeded = weightiest(clauseWeights(wanted), wanted.leastCoverage);
    SearchExpression expression;
    size_t number = 0;
    for (size_t i = 0; i < clauses.size(); ++i) {
        const Kind kind = clauses[i].isExcluded ? Kind::Excluded
                          : isStrict            ? Kind::Required
                          : isNeeded[i]         ? Kind::Alternative
                                                : Kind::Optional;
        expression.beginClause(int(i), kind, clauses[i].isLiteral);
        for (const auto& term : clauses[i].terms) {
            addTerm(term, wanted.weights[number++], expression);
        }
    }
    return expression;
}

std::optional<SearchIndex::Found> SearchIndex::search(const Wanted& wanted)
{
    refresh();
    const auto expression = expressionFor(wanted);
    Found found;
    if (!expression.isEmpty()) {
        const double coverage = wanted.leastCoverage >= 1 ? 0 : wanted.leastCoverage;
        m_ranking.begin(m_facts, expression.roles(), {coverage, languageFor(wanted.languages)}, m_stop);
        auto rows = m_database->prepare("SELECT collect(words) FROM words WHERE words MATCH ?");
        const std::string text = expression.text();
        rows.bind(1, text);
        while (rows.step()) {
        }
        if (!rows.ok()) {
            return std::nullopt;
        }
        found.best = std::move(m_ranking.candidates());
        preferNames(wanted, found);
        sortOut(found, wanted.limit);
    }
    return found;
}

/// Pages that are called like the query go first; those that are called so and nothing else come, too,
/// whatever words they have.
void SearchIndex::preferNames(const Wanted& wanted, Found& found)
{
    const NameMatches names(*m_database, wanted.query, clauseWeights(wanted), m_facts);
    if (names.isEmpty()) {
        return;
    }
    std::unordered_map<uint32_t, bool> isFound;
    for (auto& candidate : found.best) {
        if (const auto* match = names.find(candidate.page)) {
            const double factor = m_ranking.languageFactor(m_facts.pages[candidate.page]);
            candidate.score = names.raised(candidate.score / factor, *match) * factor;
            isFound[candidate.page] = true;
        }
    }
    for (const auto& [page, match] : names.all()) {
        if (match.isCertain && !isFound.contains(page)) {
            found.best.push_back(
                {names.raised(0, match) * m_ranking.languageFactor(m_facts.pages[page]), page});
        }
        if (!match.anchor.empty()) {
            found.anchors.emplace(page, match.anchor);
        }
    }
}

/// Drops all copies of a page but the best one, and all that is not wanted.
void SearchIndex::sortOut(Found& found, size_t limit)
{
    const auto isBetter = [](const Candidate& a, const Candidate& b) {
        return a.score != b.score ? a.score > b.score : a.page < b.page;
    };
    std::unordered_map<uint32_t, Candidate> bestCopies;
    std::vector<Candidate> distinct;
    distinct.reserve(found.best.size());
    for (const auto& candidate : found.best) {
        const auto copies = m_facts.pages[candidate.page].copies;
        if (copies == 0) {
            distinct.push_back(candidate);
            continue;
        }
        auto& best = bestCopies.emplace(copies, candidate).first->second;
        best = isBetter(candidate, best) ? candidate : best;
    }
    for (const auto& [copies, best] : bestCopies) {
        distinct.push_back(best);
    }
    found.total = int64_t(distinct.size());
    const size_t kept = std::min(limit, distinct.size());
    std::partial_sort(distinct.begin(), distinct.begin() + qsizetype(kept), distinct.end(), isBetter);
    distinct.resize(kept);
    found.best = std::move(distinct);
}

SearchIndex::Page SearchIndex::page(uint32_t number)
{
    auto row = m_database->prepare("SELECT path, title, hash, language FROM pages WHERE id = ?");
    row.bind(1, int64_t(number));
    if (!row.step()) {
        return {};
    }
    const auto text = [&](int column) {
        const auto utf8 = row.text(column);
        return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    };
    return {text(0), text(1), row.number(2), std::string(row.text(3))};
}

std::vector<uint32_t> SearchIndex::copiesOf(uint32_t number)
{
    std::vector<uint32_t> copies;
    const auto shared = number < m_facts.pages.size() ? m_facts.pages[number].copies : 0;
    for (uint32_t page = 0; shared != 0 && page < m_facts.pages.size(); ++page) {
        if (page != number && m_facts.pages[page].isLive && m_facts.pages[page].copies == shared) {
            copies.push_back(page);
        }
    }
    return copies;
}
