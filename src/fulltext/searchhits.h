// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/helpsetindex.h"
#include "fulltext/searchanswer.h"
#include "fulltext/searchindex.h"

#include <QSet>

#include <string>
#include <vector>

/// Says of pages that were found what they are called and where they stand.
class SearchHits {
public:
    /// A page with the same text as one before is left out.
    void add(const SearchableSet& set, SearchIndex& index, const Candidate& candidate,
             const std::string& anchor);
    /// With titles that tell them apart.
    [[nodiscard]] std::vector<SearchHit> take();

private:
    std::vector<SearchHit> m_hits;
    QStringList m_ownTitles; ///< of their pages
    QSet<qint64> m_texts;    ///< copies of a page may be in several help sets
};
