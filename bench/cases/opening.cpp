// SPDX-License-Identifier: MIT
// Enter on a keyword until its page stands in the view, against showing the same pages by name.
#include "sets.h"

#include "browser/helpbrowser.h"
#include "index/helpindexlistbox.h"
#include "library/helplibrary.h"
#include "mainwindow/helpmainwindow.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <benchmark/benchmark.h>

namespace {

/// A window on a large library, with two rows of the keyword list that lead to different pages.
struct Opened {
    Opened()
    {
        window.setPersistent(false);
        window.insertContents(set.contents());
        while (library.isBusy()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        list = window.findChild<HelpIndexListBox*>();
        browser = window.findChild<HelpBrowser*>();
    }

    Set set{{50'000, 150'000}};
    HelpLibrary library;
    HelpMainWindow window{library};
    HelpIndexListBox* list = nullptr;
    HelpBrowser* browser = nullptr;
};

void enter(benchmark::State& state)
{
    Opened opened;
    int row = 0;
    for (auto _ : state) {
        state.PauseTiming();
        row = row == 100 ? 200 : 100;
        opened.list->setCurrentIndex(opened.list->model()->index(row, 0));
        state.ResumeTiming();
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(opened.list, &key);
    }
}

void show(benchmark::State& state)
{
    Opened opened;
    const auto& rows = opened.library.keywordIndex().rows();
    const QStringList links{rows[100].indexItem->link(), rows[200].indexItem->link()};
    qsizetype next = 0;
    for (auto _ : state) {
        opened.browser->setSource(links[next++ % 2]);
    }
}

} // namespace

BENCHMARK(enter)->Name("enter/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(show)->Name("enter/floor")->Unit(benchmark::kMillisecond);
