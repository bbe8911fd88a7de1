// SPDX-License-Identifier: MIT
// Reading a contents file and an index file, against reading and decoding the same bytes line by line.
#include "sets.h"

#include "formats/contentsreader.h"
#include "formats/indexreader.h"
#include "formats/textfile.h"

#include <QFile>
#include <QTextStream>

#include <benchmark/benchmark.h>

namespace {

constexpr SyntheticSize Size{200'000, 200'000};

const Set& set()
{
    static const Set set(Size);
    return set;
}

void readLines(benchmark::State& state, const QString& name)
{
    for (auto _ : state) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) {
            state.SkipWithError("no file");
            return;
        }
        QTextStream stream(&file);
        QString line;
        while (stream.readLineInto(&line)) {
            benchmark::DoNotOptimize(line.data());
        }
    }
}

void contentsOurs(benchmark::State& state)
{
    const QString name = set().contents();
    for (auto _ : state) {
        const auto outline = ContentsReader().read(name);
        benchmark::DoNotOptimize(outline.entries.data());
    }
}

void contentsFloor(benchmark::State& state)
{
    readLines(state, set().contents());
}

void indexOurs(benchmark::State& state)
{
    const QString name = set().index();
    for (auto _ : state) {
        const auto text = readText(name);
        IndexReader reader(text.value());
        while (reader.next()) {
            benchmark::DoNotOptimize(reader.line().line);
        }
    }
}

void indexFloor(benchmark::State& state)
{
    readLines(state, set().index());
}

} // namespace

BENCHMARK(contentsOurs)->Name("contents file/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(contentsFloor)->Name("contents file/floor")->Unit(benchmark::kMillisecond);
BENCHMARK(indexOurs)->Name("index file/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(indexFloor)->Name("index file/floor")->Unit(benchmark::kMillisecond);
