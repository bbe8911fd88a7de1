// SPDX-License-Identifier: MIT
// From a page's name to its record, and the removal of a help set.
#include "sets.h"

#include "library/helplibrary.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

void getPage(benchmark::State& state)
{
    const int rows = int(state.range(0));
    const Set set({rows, 10});
    HelpLibrary library;
    library.loadContents(set.contents(), nullptr);
    QStringList links;
    for (int i = 0; i < 512; ++i) {
        links += set.page(int(qint64(i) * 7919 % rows));
    }
    qsizetype next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(library.getPage(links[next++ % links.size()]));
    }
}

void removal(benchmark::State& state)
{
    constexpr int sets = 10;
    const Set set({100'000, 100'000});
    for (auto _ : state) {
        state.PauseTiming();
        auto library = std::make_unique<HelpLibrary>();
        for (int i = 0; i < sets; ++i) {
            library->loadContents(set.contents(), nullptr);
        }
        library->buildIndex();
        state.ResumeTiming();
        library->removeContents(library->roots()[sets / 2]);
        state.PauseTiming();
        library.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(getPage)->Name("getPage/ours")->Arg(1'000'000);
BENCHMARK(getPage)->Name("getPage/floor")->Arg(1'000);
BENCHMARK(removal)->Name("removal/ours")->Unit(benchmark::kMillisecond)->Iterations(5);
