// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/database.h"
#include "fulltext/indexfile.h"
#include "fulltext/ranking.h"
#include "fulltext/searchquery.h"

#include <QString>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The pages and places of a help set that are called like a query.
class NameMatches {
public:
    /// The weights are those of the query's words.
    NameMatches(Database& database, const SearchQuery& query, const std::vector<double>& weights,
                const AllFacts& facts);

    struct Match {
        double strength = 0; ///< from 0 to 1
        std::string anchor;
        bool isCertain = false; ///< it is the name, not only a part of it
    };
    [[nodiscard]] bool isEmpty() const { return m_matches.empty(); }
    /// The score of a page that is called so.
    [[nodiscard]] double raised(double score, const Match& match) const;
    /// Null when there is none.
    [[nodiscard]] const Match* find(uint32_t page) const;
    [[nodiscard]] const std::unordered_map<uint32_t, Match>& all() const { return m_matches; }

private:
    void add(const std::string& name, double strength, Database& database, const AllFacts& facts);
    void addMembers(const std::string& owner, const std::string& name, Database& database,
                    const AllFacts& facts);
    void addSplit(const QString& text, Database& database, const AllFacts& facts);
    void add(uint32_t page, const Match& found);

    std::unordered_map<uint32_t, Match> m_matches;
    double m_allWeight = 0; ///< of the query's words
};
