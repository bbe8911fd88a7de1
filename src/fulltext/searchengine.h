// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/helpsetindex.h"
#include "fulltext/searchanswer.h"
#include "fulltext/searchindex.h"
#include "fulltext/snippet.h"
#include "pages/pagesheets.h"

#include <QCache>
#include <QString>

#include <chrono>
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
    [[nodiscard]] std::vector<Set*> scope(const SearchRequest& request, const std::stop_token& stop);
    [[nodiscard]] static std::vector<double> weightsFor(const std::vector<Set*>& sets,
                                                        const SearchQuery& query);
    [[nodiscard]] std::optional<Found> findAll(const std::vector<Set*>& sets, const SearchQuery& query,
                                               int limit, const std::stop_token& stop);
    [[nodiscard]] std::optional<SearchQuery> corrected(const std::vector<Set*>& sets,
                                                       const SearchQuery& query);
    [[nodiscard]] std::optional<Found> findNearest(const std::vector<Set*>& sets, SearchQuery& query,
                                                   int limit, const std::stop_token& stop);
    [[nodiscard]] std::vector<SearchHit> describeHits(const Found& found);
    [[nodiscard]] static SearchHit describe(const Hit& hit, const SearchIndex::Page& page);
    /// False when a stop was asked for.
    bool addSnippets(const SearchQuery& query, SearchAnswer& answer, const std::function<void()>& early,
                     const std::stop_token& stop);
    [[nodiscard]] const std::string& textOf(const QString& page);

    std::vector<std::unique_ptr<Set>> m_sets;
    StyleSheets m_styleSheets;
    QCache<QString, std::string> m_texts{32'000'000}; ///< of pages shown lately; cost in bytes
};
