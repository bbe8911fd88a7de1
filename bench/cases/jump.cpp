// SPDX-License-Identifier: MIT
// What a key costs in the line for jumping, with its list painted.
#include "sets.h"

#include "jump/jumpline.h"
#include "library/helplibrary.h"

#include <QApplication>
#include <QLineEdit>

#include <benchmark/benchmark.h>

namespace {

/// The slowest of the keys of a word: the first one, after which all are looked through.
void keyToPaint(benchmark::State& state, SyntheticSize size, const QString& typed)
{
    QWidget window;
    window.resize(1000, 700); // NOLINT(*-magic-numbers)
    JumpLine line(loadedLibrary(size), window);
    window.show();
    for (auto _ : state) {
        line.open({}, nullptr);
        line.findChild<QLineEdit*>()->setText(typed);
        benchmark::DoNotOptimize(line.grab().width());
    }
}

constexpr SyntheticSize Usual{50'000, 150'000};
constexpr SyntheticSize Large{150'000, 1'000'000};

} // namespace

BENCHMARK_CAPTURE(keyToPaint, usual_letter, Usual, QStringLiteral("e"))
    ->Name("jump/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keyToPaint, large_letter, Large, QStringLiteral("e"))
    ->Name("jump among a million/ours")
    ->Unit(benchmark::kMillisecond);
