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
constexpr double Saturation = 1.2; // how soon more of the same word counts no more
constexpr double MeanTitleWords = 5;
constexpr double AdjacencyWeight = 2.5;
constexpr double LinkLoss = 0.7;       // of a page that is nothing but links
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

/// What is in lists of links is said elsewhere.
double ownShare(const PageFacts& facts)
{
    return 1 - LinkLoss * std::max(0, int(facts.linkShare) - UsualLinks) / (100.0 - UsualLinks);
}

double scoreOf(const Counts& counts, const PageFacts& facts, double meanWords)
{
    const double length = lengthOf(facts, meanWords);
    const double titleLength = 0.5 + 0.5 * facts.titleWords / MeanTitleWords;
    return ownShare(facts) * (saturated(counts[IndexFile::Body] / length) +
                              HeadingWeight * saturated(counts[IndexFile::Headings])) +
           (counts[IndexFile::Title] > 0 ? TitleWeight / titleLength : 0) +
           KeywordWeight * saturated(counts[IndexFile::Keywords]);
}

uint64_t place(int column, int offset)
{
    return uint64_t(column) << 32U | uint32_t(offset);
}

/// How often a place of the second comes right behind one of the first; both are sorted. In titles it counts
/// more, in long texts less.
double neighbours(const std::vector<uint64_t>& first, const std::vector<uint64_t>& second, double length)
{
    double found = 0;
    auto next = second.begin();
    for (const auto at : first) {
        next = std::lower_bound(next, second.end(), at + 1);
        if (next != second.end() && *next == at + 1) {
            const auto column = at >> 32U;
            found += column == IndexFile::Title  ? 3.0
                     : column == IndexFile::Body ? 1.0 / std::max(1.0, length)
                                                 : 1.0;
        }
    }
    return found;
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
            score += role.weight * scoreOf(counts, facts, ranking.m_facts->meanWords);
            isFound[size_t(role.clause)] =
                isFound[size_t(role.clause)] ||
                std::any_of(counts.begin(), counts.end(), [](int n) { return n > 0; });
        }
        score += hasNeighbours ? adjacency(ranking, lengthOf(facts, ranking.m_facts->meanWords)) : 0;
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

    static double adjacency(Ranking& ranking, double length)
    {
        double score = 0;
        for (auto& places : ranking.m_places) {
            std::sort(places.begin(), places.end());
        }
        for (size_t i = 1; i < ranking.m_places.size(); ++i) {
            const double weight = std::min(ranking.m_weights[i - 1], ranking.m_weights[i]);
            score += AdjacencyWeight * weight *
                     saturated(neighbours(ranking.m_places[i - 1], ranking.m_places[i], length));
        }
        return score;
    }
};

double rarity(int64_t found, int64_t all)
{
    return std::log(1 + (double(all) + 0.5) / (double(std::min(found, all)) + 0.5));
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
