// SPDX-License-Identifier: MIT
// Pages out of packages; folders of HTML; what is on a machine with 500 sets. QUENDA_FOLDER may name a folder
// to take instead of the one that is made.
#include "otherkinds.h"
#include "sets.h"

#include "library/helpset.h"
#include "machine/machinesets.h"
#include "pages/pagefile.h"
#include "sources/sources.h"

#include <benchmark/benchmark.h>

namespace {

constexpr SyntheticSize Size{5'000, 15'000};

/// The same documentation in several kinds.
class Kinds {
public:
    Kinds()
    {
        writeSyntheticSet(m_dir.path(), Size);
        writeOtherKinds(m_dir.path());
    }
    [[nodiscard]] QString path(const char* name) const { return m_dir.filePath(QLatin1StringView(name)); }

private:
    QTemporaryDir m_dir;
};

const Kinds& kinds()
{
    static const Kinds made;
    return made;
}

std::unique_ptr<HelpSet> load(const QString& fileName)
{
    auto set = std::make_unique<HelpSet>(fileName, openSource(fileName));
    set->adoptIndex(readIndexEntries(set->indexTask()));
    return set;
}

void reading(benchmark::State& state, const char* name)
{
    const QString file = kinds().path(name);
    for (auto _ : state) {
        const auto set = load(file);
        if (set->records().size() < size_t(Size.topics) || set->indexItems().size() < size_t(Size.keywords)) {
            state.SkipWithError("rows or keywords are missing");
        }
    }
}

void readingPage(benchmark::State& state, const char* name)
{
    const QString file = kinds().path(name);
    for (auto _ : state) {
        if (!readPage(file).ok()) {
            state.SkipWithError("the page cannot be read");
        }
    }
}

/// Where pages have no lists.
QString folder(const QTemporaryDir& dir)
{
    QString given = qEnvironmentVariable("QUENDA_FOLDER");
    if (!given.isEmpty()) {
        return given;
    }
    for (int i = 0; i < Size.topics; ++i) {
        writeBytes(dir.filePath(QStringLiteral("%1/page%2.html").arg(i / 100).arg(i)),
                   otherKindsPage("Page " + QByteArray::number(i)));
    }
    writeBytes(dir.filePath(QStringLiteral("index.html")), otherKindsPage("All"));
    return dir.path();
}

/// Until the tree can be shown; titles and keywords follow.
void folderTree(benchmark::State& state)
{
    const QTemporaryDir dir;
    const QString name = folder(dir);
    for (auto _ : state) {
        const HelpSet set(name, openSource(name));
        benchmark::DoNotOptimize(set.records().size());
    }
}

void wholeFolder(benchmark::State& state)
{
    const QTemporaryDir dir;
    const QString name = folder(dir);
    for (auto _ : state) {
        benchmark::DoNotOptimize(load(name)->indexItems().size());
    }
}

void machine(benchmark::State& state)
{
    constexpr int sets = 500;
    constexpr int pages = 10;
    const QTemporaryDir dir;
    for (int i = 0; i < sets * pages; ++i) {
        const QString name = i % pages == 0 ? QStringLiteral("index") : QString::number(i % pages);
        writeBytes(dir.filePath(QStringLiteral("doc/package%1/html/%2.html").arg(i / pages).arg(name)),
                   otherKindsPage("Package " + QByteArray::number(i / pages)));
    }
    for (auto _ : state) {
        if (findMachineSets({{dir.path()}, {}, {}}, {}).size() != sets) {
            state.SkipWithError("sets are missing");
        }
    }
}

} // namespace

BENCHMARK_CAPTURE(reading, package, "set.qch")->Name("reading Qt help/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reading, native, "bench.cnt")->Name("reading Qt help/floor")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reading, book, "set.devhelp2")->Name("reading Devhelp/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reading, native, "bench.cnt")->Name("reading Devhelp/floor")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readingPage, packed, "set.qch/set/large.html")
    ->Name("packed page/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readingPage, file, "large.html")->Name("packed page/floor")->Unit(benchmark::kMillisecond);
BENCHMARK(folderTree)->Name("folder/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(wholeFolder)->Name("whole folder/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(machine)->Name("machine/ours")->Unit(benchmark::kMillisecond);
