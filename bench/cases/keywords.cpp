// SPDX-License-Identifier: MIT
// Grouping, ordering and look-up among a million keywords.
#include "sets.h"

#include "library/helplibrary.h"
#include "library/helpset.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr SyntheticSize Size{1'000, 1'000'000};

HelpLibrary& library()
{
    return loadedLibrary(Size);
}

void groupingOurs(benchmark::State& state)
{
    auto& loaded = library();
    for (auto _ : state) {
        loaded.buildIndex();
    }
}

void groupingFloor(benchmark::State& state)
{
    std::vector<QString> keywords;
    for (const auto& item : library().helpSet(*library().roots().front()).indexItems()) {
        keywords.push_back(item.keyword.toString());
    }
    for (auto _ : state) {
        state.PauseTiming();
        auto sorted = keywords;
        state.ResumeTiming();
        std::sort(sorted.begin(), sorted.end());
        benchmark::DoNotOptimize(sorted.data());
    }
}

/// The slowest kind of key: one after which no row matches, so that all are looked at.
void lookUp(benchmark::State& state, const QString& typed)
{
    const auto& index = library().keywordIndex();
    for (auto _ : state) {
        benchmark::DoNotOptimize(index.lookFor(typed, 0));
    }
}

/// What a key costs after which no keyword begins with the text: all of them are looked at once more.
void containing(benchmark::State& state)
{
    const auto& index = library().keywordIndex();
    for (auto _ : state) {
        benchmark::DoNotOptimize(index.rowsContaining(QStringLiteral("zz"), nullptr));
    }
}

} // namespace

BENCHMARK(containing)->Name("look-up within keywords/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(groupingOurs)->Name("grouping/ours")->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(groupingFloor)->Name("grouping/floor")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lookUp, last, QStringLiteral("window zzz"))
    ->Name("look-up/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lookUp, none, QStringLiteral("zz"))
    ->Name("look-up without a match/ours")
    ->Unit(benchmark::kMillisecond);
