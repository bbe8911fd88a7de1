// SPDX-License-Identifier: MIT
// Queries to a help set of running text (QUENDA_TEXT_SET) whose index is in the cache: until the first fifty
// pages are there with their snippets. Also what the search needs to know of a large help set.
#include "sets.h"

#include "fulltext/helpsetindex.h"
#include "fulltext/searchengine.h"
#include "library/helplibrary.h"
#include "search/searchsources.h"

#include <benchmark/benchmark.h>

namespace {

SearchEngine& engine()
{
    static SearchEngine engine;
    static bool isReady = false;
    if (!isReady) {
        HelpLibrary library;
        const auto loaded = library.loadContents(qEnvironmentVariable("QUENDA_TEXT_SET"), nullptr);
        const auto source = std::make_shared<SearchSource>(makeSearchSource(library.helpSet(*loaded.root)));
        const auto result = indexHelpSet(
            source, {}, [](qint64, qint64) {}, [](const SearchableSet& set) { engine.add(set); });
        isReady = result.state == IndexingResult::State::Complete;
    }
    return engine;
}

void query(benchmark::State& state, const QString& words)
{
    auto& searched = engine();
    for (auto _ : state) {
        const auto answer = searched.search({words, {}, 50, false}, {});
        if (!answer || answer->total == 0) {
            state.SkipWithError("nothing found");
        }
    }
}

void makeSource(benchmark::State& state)
{
    const Set set({50'000, 150'000});
    HelpLibrary library;
    const auto loaded = library.loadContents(set.contents(), nullptr);
    for (auto _ : state) {
        benchmark::DoNotOptimize(makeSearchSource(library.helpSet(*loaded.root)));
    }
}

} // namespace

BENCHMARK_CAPTURE(query, rare, QStringLiteral("once"))->Name("rare word/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, tenth, QStringLiteral("tenth"))
    ->Name("tenth word/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, every, QStringLiteral("everywhere"))
    ->Name("every word/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(makeSource)->Name("search source/ours")->Unit(benchmark::kMillisecond);
