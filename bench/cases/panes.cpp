// SPDX-License-Identifier: MIT
// What a key in the index and a step of the contents tree cost, until the pane has been painted anew.
#include "sets.h"

#include "contents/helpcontents.h"
#include "contents/helpcontentslistview.h"
#include "index/helpindex.h"
#include "library/helplibrary.h"
#include "library/helpset.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <benchmark/benchmark.h>

namespace {

constexpr SyntheticSize Size{50'000, 150'000};
constexpr QSize PaneSize(340, 700);

HelpLibrary& library()
{
    return loadedLibrary(Size);
}

/// In a window, which keeps its size whatever the pane wants.
void show(QWidget& window, QWidget& pane)
{
    window.resize(PaneSize);
    pane.resize(PaneSize);
    window.show();
    QCoreApplication::processEvents();
}

/// Until all has been painted.
void type(QLineEdit& field, int key, const QString& text)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&field, &event);
    QCoreApplication::processEvents();
}

/// The key `typed` after what stands in the field already; the key that takes it back is not counted.
void indexKey(benchmark::State& state, const QString& before, const QString& typed)
{
    QWidget window;
    HelpIndex pane(library(), &window);
    show(window, pane);
    auto& field = *pane.findChild<QLineEdit*>();
    field.setText(before);
    QCoreApplication::processEvents();
    for (auto _ : state) {
        type(field, Qt::Key_A, typed);
        state.PauseTiming();
        type(field, Qt::Key_Backspace, {});
        state.ResumeTiming();
    }
}

/// Back to where all keywords are shown.
void indexKeyBack(benchmark::State& state)
{
    QWidget window;
    HelpIndex pane(library(), &window);
    show(window, pane);
    auto& field = *pane.findChild<QLineEdit*>();
    field.setText(QStringLiteral("window"));
    for (auto _ : state) {
        state.PauseTiming();
        type(field, Qt::Key_Q, QStringLiteral("q"));
        state.ResumeTiming();
        type(field, Qt::Key_Backspace, {});
    }
}

/// To the rows of pages far from each other, in books that are closed at first.
void treeStep(benchmark::State& state)
{
    const auto& records = library().helpSet(*library().roots().front()).records();
    QWidget window;
    HelpContents pane(library(), {}, &window);
    show(window, pane);
    constexpr size_t stride = 7919;
    size_t number = 0;
    for (auto _ : state) {
        number = (number + stride) % records.size();
        pane.follow(records[number].listViewItem);
        QCoreApplication::processEvents();
    }
}

} // namespace

BENCHMARK_CAPTURE(indexKey, begins, QStringLiteral("windo"), QStringLiteral("w"))
    ->Name("index key/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(indexKey, first, QString(), QStringLiteral("s"))
    ->Name("index key, first/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(indexKey, within, QStringLiteral("indo"), QStringLiteral("w"))
    ->Name("index key, within/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(indexKey, nowhere, QStringLiteral("qwert"), QStringLiteral("z"))
    ->Name("index key, nowhere/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(indexKeyBack)->Name("index key, back/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(treeStep)->Name("tree step/ours")->Unit(benchmark::kMillisecond);
