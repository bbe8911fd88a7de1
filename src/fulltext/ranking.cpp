// SPDX-License-Identifier: MIT
#include "fulltext/ranking.h"

#include "fulltext/indexfile.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace {

constexpr double TitleWeight = 3;
constexpr double KeywordWeight = 2.5;
constexpr double HeadingWeight = 1.5;
constexpr double LiteralHeadings = 0.3;
constexpr double Saturation = 1.2; // how soon more of the same word counts no more
constexpr double MeanTitleWords = 5;
constexpr double AdjacencyWeight = 2.5;
constexpr double LeastRarity = 0.1;    // of a word that all pages have
constexpr double TitleShareWeight = 2; // of a title that has no other words
constexpr uint64_t NearDistance = 5;
constexpr double NearShare = 0.35;     // of what stands near, compared with what stands as in the query
constexpr double LightWord = 0.35;     // of the weightiest word's
constexpr double LinkLoss = 0.8;       // of a page that is nothing but links or terms
constexpr double UsualTerms = 0.4;     // of a page's words
constexpr int UsualLinks = 30;         // percentage of a page's text
constexpr double OtherLanguage = 0.25; // of a page that the reader would rather have in another one
constexpr double UnknownLanguage = 0.5;
constexpr size_t MostPlaces = 1000; // of a clause that are looked at for neighbours

double saturated(double count)
{
    return count * (Saturation + 1) / (count + Saturation);
}

/// How often a phrase stands in each column.
using Counts = std::array<int, 4>;

/// Of a page, compared with others.
double lengthOf(const PageFacts& facts, double meanWords)
{
    return 0.25 + 0.75 * facts.words / meanWords;
}

/// Of what most pages have less of, compared with others.
double partLength(uint32_t words, double meanWords)
{
    return 0.6 + 0.4 * words / meanWords;
}

/// What is in lists of links, and in pages of nothing but terms, is said elsewhere.
double ownShare(const PageFacts& facts)
{
    const double links = std::max(0, int(facts.linkShare) - UsualLinks) / (100.0 - UsualLinks);
    const double terms = facts.words == 0 ? 0 : double(facts.headingWords) / facts.words;
    return (1 - LinkLoss * links) *
           (1 - LinkLoss * std::clamp((terms - UsualTerms) / (1 - UsualTerms), 0.0, 1.0));
}

double scoreOf(const Counts& counts, const PageFacts& facts, const AllFacts& all, bool isLiteral)
{
    const double length = lengthOf(facts, all.meanWords);
    // Signs are explained where they are a term, among however many.
    const double headings =
        isLiteral ? LiteralHeadings : partLength(facts.headingWords, all.meanHeadingWords);
    const double keywords = partLength(facts.keywordWords, all.meanKeywordWords);
    const double titleLength = 0.5 + 0.5 * facts.titleWords / MeanTitleWords;
    return ownShare(facts) * (saturated(counts[IndexFile::Body] / length) +
                              HeadingWeight * saturated(counts[IndexFile::Headings] / headings)) +
           (counts[IndexFile::Title] > 0 ? TitleWeight / titleLength : 0) +
           KeywordWeight * saturated(counts[IndexFile::Keywords] / keywords);
}

uint64_t place(int column, int offset)
{
    return uint64_t(column) << 32U | uint32_t(offset);
}

/// How often a place of the second comes so far behind one of the first as in the query, or near it, which
/// counts less, and once; both are sorted. In titles it counts more, but once, in long texts less.
double neighbours(const std::vector<uint64_t>& first, const std::vector<uint64_t>& second, uint64_t gap,
                  double length)
{
    double found = 0;
    double isNear = 0;
    double inTitle = 0;
    auto next = second.begin();
    for (const auto at : first) {
        next = std::lower_bound(next, second.end(), at - std::min<uint64_t>(uint32_t(at), NearDistance));
        double best = 0;
        for (auto near = next; near != second.end() && *near <= at + NearDistance; ++near) {
            best = std::max(best, *near == at + gap ? 1.0 : *near == at ? 0.0 : NearShare);
        }
        const auto column = at >> 32U;
        const double counted = column == IndexFile::Body ? best / std::max(1.0, length) : best;
        if (column == IndexFile::Title) {
            inTitle = std::max(inTitle, best);
        } else if (best == 1.0) {
            found += counted;
        } else {
            isNear = std::max(isNear, counted);
        }
    }
    return found + isNear + 3.0 * inTitle;
}

} // namespace

/// What the database calls for each page that is found.
struct Collect {
    static void call(const Fts5ExtensionApi* api, Fts5Context* context, sqlite3_context* result,
                     int /*count*/, sqlite3_value** /*values*/)
    {
        auto& ranking = *static_cast<Ranking*>(api->xUserData(context));
        if (ranking.m_stop.stop_requested()) {
            sqlite3_result_error_code(result, SQLITE_INTERRUPT);
            return;
        }
        const auto page = size_t(api->xRowid(context));
        const auto& pages = ranking.m_facts->pages;
        if (page < pages.size() && pages[page].isLive) {
            const double found = score(api, context, ranking, pages[page]);
            if (found > 0) {
                ranking.m_candidates.push_back({found, uint32_t(page)});
            }
        }
        sqlite3_result_int(result, 1);
    }

    static double score(const Fts5ExtensionApi* api, Fts5Context* context, Ranking& ranking,
                        const PageFacts& facts)
    {
        double score = 0;
        std::vector<bool>& isFound = ranking.m_isFound;
        isFound.assign(ranking.m_places.size(), false);
        auto& inTitle = ranking.m_inTitle;
        inTitle.assign(ranking.m_places.size(), 0);
        const bool hasNeighbours = ranking.m_places.size() > 1;
        for (auto& places : ranking.m_places) {
            places.clear();
        }
        for (size_t i = 0; i < ranking.m_roles.size(); ++i) {
            const auto& role = ranking.m_roles[i];
            if (role.clause < 0) {
                continue;
            }
            Counts counts{};
            Fts5PhraseIter iterator;
            int column = 0;
            int offset = 0;
            auto& places = ranking.m_places[size_t(role.clause)];
            for (api->xPhraseFirst(context, int(i), &iterator, &column, &offset); column >= 0;
                 api->xPhraseNext(context, &iterator, &column, &offset)) {
                ++counts[size_t(column) & 3U];
                if (hasNeighbours && (places.size() < MostPlaces || column != IndexFile::Body)) {
                    places.push_back(place(column, offset));
                }
            }
            score += role.weight * scoreOf(counts, facts, *ranking.m_facts, role.isLiteral);
            if (counts[IndexFile::Title] > 0) {
                auto& weight = inTitle[size_t(role.clause)];
                weight = std::max(weight, role.weight);
            }
            isFound[size_t(role.clause)] =
                isFound[size_t(role.clause)] ||
                std::any_of(counts.begin(), counts.end(), [](int n) { return n > 0; });
        }
        score += hasNeighbours
                     ? ownShare(facts) * adjacency(ranking, lengthOf(facts, ranking.m_facts->meanWords))
                     : 0;
        score += titleShare(ranking, facts);
        return score * coverage(ranking) * ranking.languageFactor(facts);
    }

    /// How much of the query's weight a page has; 0 when that is too little.
    static double coverage(const Ranking& ranking)
    {
        double found = 0;
        for (size_t i = 0; i < ranking.m_weights.size(); ++i) {
            found += ranking.m_isFound[i] ? ranking.m_weights[i] : 0;
        }
        const double share = ranking.m_allWeight > 0 ? found / ranking.m_allWeight : 1;
        return share < ranking.m_rules.leastCoverage ? 0 : share;
    }

    /// How much of the title the query is.
    static double titleShare(const Ranking& ranking, const PageFacts& facts)
    {
        const auto& inTitle = ranking.m_inTitle;
        const auto words = std::count_if(inTitle.begin(), inTitle.end(), [](double w) { return w > 0; });
        if (words == 0) {
            return 0;
        }
        const double share = double(words) / std::max(double(words), double(facts.titleWords));
        return TitleShareWeight * share * std::accumulate(inTitle.begin(), inTitle.end(), 0.0);
    }

    /// Words of little weight between others may be others on the page.
    static double adjacency(Ranking& ranking, double length)
    {
        double score = 0;
        for (auto& places : ranking.m_places) {
            std::sort(places.begin(), places.end());
        }
        const auto& weights = ranking.m_weights;
        const double least = LightWord * *std::max_element(weights.begin(), weights.end());
        for (size_t i = 0; i + 1 < weights.size(); ++i) {
            size_t next = i + 1;
            while (next + 1 < weights.size() && weights[i] >= least && weights[next] < least) {
                ++next;
            }
            const double weight = std::sqrt(weights[i] * weights[next]);
            score += AdjacencyWeight * weight *
                     saturated(neighbours(ranking.m_places[i], ranking.m_places[next], next - i, length));
        }
        return score;
    }
};

double rarity(int64_t found, int64_t all)
{
    const auto without = double(all - std::min(found, all));
    return std::max(LeastRarity, std::log(1 + (without + 0.5) / (double(found) + 0.5)));
}

bool Ranking::attach(Database& database)
{
    auto* api = IndexFile::fts5Api(database);
    return api != nullptr && api->xCreateFunction(api, "collect", this, Collect::call, nullptr) == SQLITE_OK;
}

double Ranking::languageFactor(const PageFacts& facts) const
{
    const bool isPreferred = m_rules.language < 0 || facts.language == m_rules.language;
    return isPreferred ? 1 : facts.language == 0 ? UnknownLanguage : OtherLanguage;
}

void Ranking::begin(const AllFacts& facts, std::vector<PhraseRole> roles, RankingRules rules,
                    std::stop_token stop)
{
    m_facts = &facts;
    m_rules = rules;
    m_roles = std::move(roles);
    m_stop = std::move(stop);
    m_candidates.clear();
    int clauses = 0;
    for (const auto& role : m_roles) {
        clauses = std::max(clauses, role.clause + 1);
    }
    m_places.resize(size_t(clauses));
    m_weights.assign(size_t(clauses), 0);
    for (const auto& role : m_roles) {
        if (role.clause >= 0) {
            m_weights[size_t(role.clause)] = std::max(m_weights[size_t(role.clause)], role.weight);
        }
    }
    m_allWeight = std::accumulate(m_weights.begin(), m_weights.end(), 0.0);
}
