// SPDX-License-Identifier: MIT
#include "fulltext/hittexts.h"

#include "fulltext/snippet.h"
#include "pages/pagefile.h"

#include <algorithm>
#include <chrono>
#include <memory>

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto SnippetTime = std::chrono::milliseconds(12); // that an answer waits for its snippets
constexpr qint64 MostOfPage = 8'000'000; // bytes of a page's file that a snippet is looked for in

qsizetype costOf(const PlainPage& page)
{
    return qsizetype(page.text.size() + page.headings.size() + page.sections.size() * sizeof(PlainSection) +
                     page.links.size() * sizeof(PlainLink)) +
           1;
}

} // namespace

bool HitTexts::describe(const SearchQuery& query, std::vector<SearchHit>& hits,
                        const std::function<void()>& late, const std::stop_token& stop)
{
    const auto end = Clock::now() + SnippetTime;
    bool isLate = false;
    std::map<QString, QueryMatcher> matchers;
    for (auto& hit : hits) {
        if (stop.stop_requested()) {
            return false;
        }
        if (!isLate && Clock::now() > end) {
            isLate = true;
            late();
        }
        auto known = matchers.find(hit.language);
        if (known == matchers.end()) {
            known = matchers.emplace(hit.language, QueryMatcher(query, hit.language.toStdString())).first;
        }
        describe(hit, known->second);
    }
    return true;
}

void HitTexts::describe(SearchHit& hit, QueryMatcher& matcher)
{
    const QString anchor = hit.page.sliced(hit.file.size());
    auto snippet =
        makeSnippet(pageOf(hit.file), matcher, anchor.sliced(anchor.isEmpty() ? 0 : 1).toStdString());
    hit.snippet = std::move(snippet.text);
    hit.marks = std::move(snippet.marks);
    hit.section = std::move(snippet.section);
    if (anchor.isEmpty() && !snippet.anchor.isEmpty()) {
        hit.page += u'#' + snippet.anchor;
    }
}

const PlainPage& HitTexts::pageOf(const QString& file)
{
    if (const auto* known = m_pages.object(file)) {
        return *known;
    }
    static const PlainPage none;
    const auto source = readPage(file, MostOfPage);
    if (!source.ok()) {
        return none;
    }
    PageContext context{file, {}};
    context.styleSheets = &m_styleSheets;
    auto page = std::make_unique<PlainPage>();
    if (source.value().isHtml) {
        *page = readPlainPage(source.value().text, context, PlainParts::TextAndSections);
    } else {
        page->text = source.value().text.toStdString();
    }
    page->text.resize(std::min(page->text.size(), SnippetSource));
    page->text.shrink_to_fit();
    const auto cost = costOf(*page);
    m_pages.insert(file, page.release(), cost);
    const auto* kept = m_pages.object(file);
    return kept == nullptr ? none : *kept;
}
