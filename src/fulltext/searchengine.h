// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/helpsetindex.h"
#include "fulltext/hittexts.h"
#include "fulltext/searchanswer.h"
#include "fulltext/searchindex.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/// Answers queries from the databases of several help sets. For one thread.
class SearchEngine {
public:
    /// A set that is known by its contents file is replaced.
    void add(const SearchableSet& set);
    void remove(const QString& contentsFile);
    /// Those of the sets that a request is about of which this has not been asked before. Where nothing at
    /// all is found, they are worth a thorough look.
    [[nodiscard]] std::vector<SearchableSet> takeUnchecked(const SearchRequest& request);
    /// Forgets the sets whose databases have turned out to be damaged, and tells which. They are to be made
    /// anew.
    [[nodiscard]] std::vector<SearchableSet> takeDamaged();

    /// Nothing when a stop was asked for. `early` is called with what there is when making the snippets takes
    /// long.
    [[nodiscard]] std::optional<SearchAnswer>
    search(const SearchRequest& request, const std::stop_token& stop,
           const std::function<void(const SearchAnswer&)>& early = {});

private:
    struct Set {
        SearchableSet set;
        std::unique_ptr<SearchIndex> index;
        bool isChecked = false;
    };
    struct Hit {
        Set* set;
        Candidate candidate;
        std::string anchor;
    };
    struct Found {
        qint64 total = 0;
        std::vector<Hit> hits;
    };
    struct Search; // one that is under way
    [[nodiscard]] std::vector<Set*> scope(const SearchRequest& request, const std::stop_token& stop);
    [[nodiscard]] static std::vector<int64_t> countsFor(const Search& search, const SearchQuery& query);
    [[nodiscard]] static std::vector<double> weightsFor(const Search& search, const SearchQuery& query);
    [[nodiscard]] static std::optional<Found> findAll(const Search& search, const SearchQuery& query,
                                                      double leastCoverage);
    [[nodiscard]] static std::optional<Found> findMost(const Search& search, const SearchQuery& query);
    [[nodiscard]] static std::optional<Found> findNearest(const Search& search, SearchQuery& query);
    [[nodiscard]] static std::optional<Found> findRead(const Search& search, SearchQuery& query,
                                                       SearchAnswer& answer);
    [[nodiscard]] static std::vector<SearchHit> describeHits(const Found& found);

    std::vector<std::unique_ptr<Set>> m_sets;
    HitTexts m_texts;
};
