// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/querymatcher.h"
#include "fulltext/searchanswer.h"
#include "pages/pagesheets.h"
#include "pages/plainpage.h"

#include <QCache>

#include <functional>
#include <map>
#include <stop_token>

/// Reads the pages that were found, for what is shown of them.
class HitTexts {
public:
    /// Forgets pages, which may have changed.
    void clear() { m_pages.clear(); }
    /// Adds snippets, sections and places. `late` is called once when that takes long. False when a stop was
    /// asked for.
    bool describe(const SearchQuery& query, std::vector<SearchHit>& hits, const std::function<void()>& late,
                  const std::stop_token& stop);

private:
    void describe(SearchHit& hit, QueryMatcher& matcher);
    [[nodiscard]] const PlainPage& pageOf(const QString& file);

    StyleSheets m_styleSheets;
    QCache<QString, PlainPage> m_pages{32'000'000}; ///< shown lately; cost in bytes
};
