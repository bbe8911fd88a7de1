// SPDX-License-Identifier: MIT
#include "fulltext/ranking.h"

#include "fulltext/indexfile.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double TitleWeight = 3;
constexpr double KeywordWeight = 2.5;
constexpr double HeadingWeight = 1.5;
constexpr double Saturation = 1.2; // how soon more of the same word counts no more
constexpr double MeanTitleWords = 5;
constexpr double AdjacencyWeight = 2.5;
constexpr size_t MostPlaces = 1000; // of a clause that are looked at for neighbours

double saturated(double count)
{
    return count * (Saturation + 1) / (count + Saturation);
}

/// How often a phrase stands in each column.
using Counts = std::array<int, 4>;

double scoreOf(const Counts& counts, const PageFacts& facts, double meanWords)
{
    const double length = 0.25 + 0.75 * facts.words / meanWords;
    const double titleLength = 0.5 + 0.5 * facts.titleWords / MeanTitleWords;
    return saturated(counts[IndexFile::Body] / length) +
           (counts[IndexFile::Title] > 0 ? TitleWeight / titleLength : 0) +
           KeywordWeight * saturated(counts[IndexFile::Keywords]) +
           HeadingWeight * saturated(counts[IndexFile::Headings]);
}

uint64_t place(int column, int offset)
{
    return uint64_t(column) << 32U | uint32_t(offset);
}

/// How often a place of the second comes right behind one of the first; both are sorted. In titles it counts
/// more.
double neighbours(const std::vector<uint64_t>& first, const std::vector<uint64_t>& second)
{
    double found = 0;
    auto next = second.begin();
    for (const auto at : first) {
        next = std::lower_bound(next, second.end(), at + 1);
        if (next != second.end() && *next == at + 1) {
            found += at >> 32U == IndexFile::Title ? 3.0 : 1.0;
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
            ranking.m_candidates.push_back({score(api, context, ranking, pages[page]), uint32_t(page)});
        }
        sqlite3_result_int(result, 1);
    }

    static double score(const Fts5ExtensionApi* api, Fts5Context* context, Ranking& ranking,
                        const PageFacts& facts)
    {
        double score = 0;
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
        }
        return score + (hasNeighbours ? adjacency(ranking) : 0);
    }

    static double adjacency(Ranking& ranking)
    {
        double score = 0;
        for (auto& places : ranking.m_places) {
            std::sort(places.begin(), places.end());
        }
        for (size_t i = 1; i < ranking.m_places.size(); ++i) {
            const double weight = std::min(ranking.m_weights[i - 1], ranking.m_weights[i]);
            score += AdjacencyWeight * weight *
                     saturated(neighbours(ranking.m_places[i - 1], ranking.m_places[i]));
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

void Ranking::begin(const AllFacts& facts, std::vector<PhraseRole> roles, std::stop_token stop)
{
    m_facts = &facts;
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
}
