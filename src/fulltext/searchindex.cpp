// SPDX-License-Identifier: MIT
#include "fulltext/searchindex.h"

#include "fulltext/editdistance.h"
#include "fulltext/indexfile.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double BeginningWeight = 0.3; // of words that only begin like the one being typed
constexpr double FormWeight = 0.6;      // of other forms of a word
constexpr size_t MostForms = 24;

/// A title that is what was asked for goes before nearly everything; so does a keyword, but less.
double withExactName(double score, bool isTitle)
{
    return isTitle ? score * 2 + 12 : score * 1.6 + 8;
}

std::string phraseOf(std::string_view words)
{
    std::string text = "\"";
    for (const char c : words) {
        text.append(c == '"' ? 2 : 1, c);
    }
    return text + '"';
}

std::string joined(const std::vector<std::string>& words, char separator)
{
    std::string text;
    for (const auto& word : words) {
        text.append(text.empty() ? 0 : 1, separator).append(word);
    }
    return text;
}

/// Whether a term stands for all forms of its word.
bool hasForms(const QueryTerm& term)
{
    return !term.isExact && term.words.size() == 1;
}

/// The first text that does not begin with this one.
std::string behind(const std::string& text)
{
    return text + "\xFF";
}

/// All of a term: quoted, so that nothing in a query is taken for syntax.
std::string phraseOf(const QueryTerm& term)
{
    return phraseOf(joined(term.words, ' ')) + (term.isPrefix ? " *" : "");
}

} // namespace

/// Puts clauses together: those that are wanted, then those that are not.
class SearchIndex::Expression {
public:
    void beginClause(int number, bool isExcluded)
    {
        m_clause = isExcluded ? -1 : number;
        auto& text = isExcluded ? m_excluded : m_wanted;
        text.append(text.empty() ? "(" : isExcluded ? ") OR (" : ") AND (");
        m_isFirst = true;
    }
    void add(const std::string& phrase, double weight)
    {
        auto& text = m_clause < 0 ? m_excluded : m_wanted;
        text.append(m_isFirst ? "" : " OR ").append(phrase);
        (m_clause < 0 ? m_excludedRoles : m_wantedRoles).push_back({m_clause, weight});
        m_isFirst = false;
    }
    [[nodiscard]] bool isEmpty() const { return m_wanted.empty(); }
    [[nodiscard]] std::string text() const
    {
        return m_excluded.empty() ? m_wanted + ")" : "(" + m_wanted + ")) NOT (" + m_excluded + "))";
    }
    [[nodiscard]] std::vector<PhraseRole> roles() const
    {
        auto roles = m_wantedRoles;
        roles.insert(roles.end(), m_excludedRoles.begin(), m_excludedRoles.end());
        return roles;
    }

private:
    std::string m_wanted;
    std::string m_excluded;
    std::vector<PhraseRole> m_wantedRoles;
    std::vector<PhraseRole> m_excludedRoles;
    int m_clause = 0;
    bool m_isFirst = true;
};

SearchIndex::SearchIndex(const QByteArray& name) : m_database(IndexFile::open(name))
{
    if (isOpen() && !m_ranking.attach(*m_database)) {
        m_database.reset();
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
    m_forms.clear();
    m_facts = {};
    std::unordered_map<int64_t, uint32_t> firstWithHash;
    double words = 0;
    auto rows = m_database->prepare("SELECT id, words, titlewords, english, hash FROM pages");
    while (rows.step()) {
        if (rows.number(0) < 0 || rows.number(0) > IndexFile::LargestPageNumber) {
            m_database->noteDamage();
            continue;
        }
        const auto id = uint32_t(rows.number(0));
        m_facts.pages.resize(std::max<size_t>(m_facts.pages.size(), id + size_t(1)));
        auto& page = m_facts.pages[id];
        page.isLive = true;
        page.words = uint32_t(rows.number(1));
        page.titleWords = uint8_t(std::min<int64_t>(rows.number(2), UINT8_MAX));
        page.isEnglish = rows.number(3) != 0;
        if (const int64_t hash = rows.number(4); hash != 0) {
            const auto [first, isFirst] = firstWithHash.emplace(hash, id);
            page.copies = isFirst ? 0 : first->second;
            m_facts.pages[first->second].copies = isFirst ? 0 : first->second;
        }
        ++m_facts.live;
        m_facts.english += page.isEnglish ? 1 : 0;
        words += page.words;
    }
    if (words > 0 && rows.ok() && m_database->number("SELECT 1 FROM vocabulary LIMIT 1") != 1 &&
        !m_stop.stop_requested()) {
        m_database->noteDamage();
    }
    m_facts.meanWords = std::max(1.0, words / double(std::max<int64_t>(m_facts.live, 1)));
    if (!rows.ok()) {
        m_version = -1; // stopped, or damaged
    }
}

/// The forms of a word begin alike, but for an "i" that stands for "y" and the like.
const SearchIndex::Forms& SearchIndex::forms(const std::string& word)
{
    const auto known = m_forms.find(word);
    if (known != m_forms.end()) {
        return known->second;
    }
    auto& forms = m_forms[word];
    const bool isEnglish = m_facts.english * 2 > m_facts.live;
    const std::string stem(isEnglish ? m_stemmer.stem(word) : word);
    const bool isInflected =
        isEnglish && (stem != word || m_stemmer.stem(word + "s") == stem) && word.size() > 2;
    const std::string begin = isInflected ? stem.substr(0, std::max<size_t>(stem.size() - 1, 2)) : word;
    auto rows = m_database->prepare("SELECT term, doc FROM vocabulary WHERE term >= ? AND term < ?");
    const std::string end = isInflected ? behind(begin) : word + '\1';
    rows.bind(1, begin).bind(2, end);
    while (rows.step()) {
        const auto term = rows.text(0);
        if ((term == word || (isInflected && m_stemmer.stem(term) == stem)) &&
            forms.words.size() < MostForms) {
            forms.words.emplace_back(term);
            forms.pages = std::max(forms.pages, rows.number(1));
        }
    }
    if (!rows.ok()) {
        // Not to be remembered; what there is will do for a search that has been given up.
        m_unfinished = std::exchange(forms, {});
        m_forms.erase(word);
        return m_unfinished;
    }
    return forms;
}

void SearchIndex::addTerm(const QueryTerm& term, double weight, Expression& expression)
{
    if (!hasForms(term)) {
        expression.add(phraseOf(term), weight);
        return;
    }
    const auto& word = term.words.front();
    expression.add(phraseOf(word), weight);
    auto others = forms(word).words;
    std::erase(others, word);
    if (!others.empty()) {
        expression.add(phraseOf(joined(others, IndexFile::SamePosition)), weight * FormWeight);
    }
    if (term.isPrefix) {
        expression.add(phraseOf(word) + " *", weight * BeginningWeight);
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
                counts.push_back(forms(term.words.front()).pages);
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

std::optional<SearchIndex::Found> SearchIndex::search(const SearchQuery& query,
                                                      const std::vector<double>& weights, size_t limit)
{
    refresh();
    Expression expression;
    size_t number = 0;
    for (size_t i = 0; i < query.clauses.size(); ++i) {
        const auto& clause = query.clauses[i];
        expression.beginClause(int(i), clause.isExcluded);
        for (const auto& term : clause.terms) {
            const double weight = weights[number++];
            addTerm(term, weight, expression);
        }
    }
    Found found;
    if (!expression.isEmpty()) {
        m_ranking.begin(m_facts, expression.roles(), m_stop);
        auto rows = m_database->prepare("SELECT collect(words) FROM words WHERE words MATCH ?");
        const std::string text = expression.text();
        rows.bind(1, text);
        while (rows.step()) {
        }
        if (!rows.ok()) {
            return std::nullopt;
        }
        found.best = std::move(m_ranking.candidates());
        preferExactNames(query, found);
        sortOut(found, limit);
    }
    return found;
}

void SearchIndex::preferExactNames(const SearchQuery& query, Found& found)
{
    const std::string name = query.name();
    if (name.empty()) {
        return;
    }
    std::unordered_map<uint32_t, bool> exact;
    auto rows =
        m_database->prepare("SELECT page, anchor, istitle FROM names WHERE key = ? ORDER BY istitle DESC");
    rows.bind(1, IndexFile::hashOf(name));
    while (rows.step()) {
        const auto page = uint32_t(rows.number(0));
        exact.emplace(page, rows.number(2) != 0);
        found.anchors.emplace(page, rows.text(1));
    }
    for (auto& candidate : found.best) {
        if (const auto same = exact.find(candidate.page); same != exact.end()) {
            candidate.score = withExactName(candidate.score, same->second);
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
    auto row = m_database->prepare("SELECT path, title, hash, english FROM pages WHERE id = ?");
    row.bind(1, int64_t(number));
    if (!row.step()) {
        return {};
    }
    const auto text = [&](int column) {
        const auto utf8 = row.text(column);
        return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    };
    return {text(0), text(1), row.number(2), row.number(3) != 0};
}

std::optional<SearchIndex::Spelling> SearchIndex::nearestWord(const std::string& word,
                                                              std::chrono::steady_clock::time_point end)
{
    const int mostEdits = word.size() < 3 ? 0 : word.size() < 6 ? 1 : 2;
    std::optional<Spelling> best;
    // Few mistype the first letter, or it changed places with the second one.
    for (const size_t first : {size_t(0), size_t(1)}) {
        if (mostEdits == 0 || (first == 1 && word[1] == word[0])) {
            break;
        }
        const std::string begin(1, word[first]);
        const std::string rangeEnd = behind(begin);
        auto rows = m_database->prepare("SELECT term, doc FROM vocabulary WHERE term >= ? AND term < ?");
        rows.bind(1, begin).bind(2, rangeEnd);
        while (std::chrono::steady_clock::now() < end && rows.step()) {
            const auto term = rows.text(0);
            const int distance = editDistance(word, term, mostEdits);
            if (distance > 0 && distance <= mostEdits &&
                (!best || distance < best->distance ||
                 (distance == best->distance && rows.number(1) > best->pages))) {
                best = Spelling{std::string(term), distance, rows.number(1)};
            }
        }
    }
    return best;
}
