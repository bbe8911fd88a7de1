// SPDX-License-Identifier: MIT
#include "fulltext/ranking.h"

#include "fulltext/indexfile.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double TitleWeight = 4;
constexpr double KeywordWeight = 2;
constexpr double HeadingWeight = 1;
constexpr double Saturation = 1.2; // how soon more of the same word counts no more
constexpr double MeanTitleWords = 5;
constexpr double AdjacencyWeight = 0.6;
constexpr size_t MostPlaces = 64; // of a clause that are looked at for neighbours

double rarity(int64_t all, int64_t found)
{
    return std::log(1 + (double(all) + 0.5) / (double(std::min(found, all)) + 0.5));
}

double saturated(double count)
{
    return count * (Saturation + 1) / (count + Saturation);
}

int countRow(const Fts5ExtensionApi* /*api*/, Fts5Context* /*context*/, void* count)
{
    ++*static_cast<int64_t*>(count);
    return SQLITE_OK;
}

/// How often a phrase stands in each column.
using Counts = std::array<int, 4>;

double scoreOf(const Counts& counts, const PageFacts& facts, double meanWords)
{
    const double length = 0.25 + 0.75 * facts.words / meanWords;
    const double titleLength = 0.5 + 0.5 * facts.titleWords / MeanTitleWords;
    return saturated(counts[IndexFile::Body] / length) +
           (counts[IndexFile::Title] > 0 ? TitleWeight / titleLength : 0) +
           KeywordWeight * saturated(counts[IndexFile::Keywords]) / 2 +
           HeadingWeight * saturated(counts[IndexFile::Headings]) / 2;
}

uint64_t place(int column, int offset)
{
    return uint64_t(column) << 32U | uint32_t(offset);
}

/// Whether a place of the second comes right behind one of the first; both are sorted. 2 in a title.
double neighbours(const std::vector<uint64_t>& first, const std::vector<uint64_t>& second)
{
    double found = 0;
    for (const auto at : first) {
        if (std::binary_search(second.begin(), second.end(), at + 1)) {
            found = std::max(found, at >> 32U == IndexFile::Title ? 2.0 : 1.0);
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
            findRarities(api, context, ranking);
            ranking.m_candidates.push_back({score(api, context, ranking, pages[page]), uint32_t(page)});
        }
        sqlite3_result_int(result, 1);
    }

    static void findRarities(const Fts5ExtensionApi* api, Fts5Context* context, Ranking& ranking)
    {
        for (size_t i = ranking.m_rarities.size(); i < ranking.m_roles.size(); ++i) {
            int64_t found = std::max<int64_t>(ranking.m_roles[i].pages, 0);
            if (ranking.m_roles[i].clause >= 0 && ranking.m_roles[i].pages < 0) {
                api->xQueryPhrase(context, int(i), &found, countRow);
            }
            ranking.m_rarities.push_back(rarity(ranking.m_facts->live, found));
        }
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
            score += ranking.m_rarities[i] * role.weight * scoreOf(counts, facts, ranking.m_facts->meanWords);
        }
        return score + (hasNeighbours ? adjacency(ranking) : 0);
    }

    static double adjacency(Ranking& ranking)
    {
        double score = 0;
        for (auto& places : ranking.m_places) {
            std::sort(places.begin(), places.end());
        }
        const double mean = *std::max_element(ranking.m_rarities.begin(), ranking.m_rarities.end());
        for (size_t i = 1; i < ranking.m_places.size(); ++i) {
            score += AdjacencyWeight * mean * neighbours(ranking.m_places[i - 1], ranking.m_places[i]);
        }
        return score;
    }
};

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
    m_rarities.clear();
    m_candidates.clear();
    int clauses = 0;
    for (const auto& role : m_roles) {
        clauses = std::max(clauses, role.clause + 1);
    }
    m_places.resize(size_t(clauses));
}
