// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchindex.h"
#include "fulltext/searchquery.h"

#include <chrono>
#include <optional>
#include <vector>

/// What a query means to the pages of some help sets: words with signs are ambiguous, words may be unfinished
/// or mistyped.
class QueryReading {
public:
    explicit QueryReading(std::vector<SearchIndex*> indexes) : m_indexes(std::move(indexes)) {}

    /// With signs where pages have them; while somebody types, with rare words as beginnings of usual ones,
    /// too.
    [[nodiscard]] SearchQuery read(const SearchQuery& query, bool isTyping) const;
    /// The same without what would exclude being taken for an option.
    [[nodiscard]] SearchQuery readExcluding(const SearchQuery& query, bool isTyping) const;

    /// What may have been meant by a query that finds nothing, the likelier ones first: all words as
    /// beginnings, the pieces of compounds, other spellings for words that are nowhere.
    [[nodiscard]] std::vector<SearchQuery> otherReadings(const SearchQuery& query) const;
    /// With the nearest spellings of words that are nowhere; nothing when there are none.
    [[nodiscard]] std::optional<SearchQuery> corrected(const SearchQuery& query) const;

private:
    [[nodiscard]] bool isAnywhere(const std::string& word) const;
    [[nodiscard]] bool isForm(const std::string& word) const;
    [[nodiscard]] int64_t beginnings(const std::string& word) const;
    void readLiterally(SearchQuery& query, bool withExcluded) const;
    void readUnfinished(SearchQuery& query) const;
    [[nodiscard]] std::optional<SearchQuery> begun(const SearchQuery& query, bool withAll) const;
    [[nodiscard]] static std::optional<SearchQuery> inPieces(const SearchQuery& query);

    std::vector<SearchIndex*> m_indexes;
};
