// SPDX-License-Identifier: MIT
#include "app/searchcommand.h"

#include "app/arguments.h"
#include "app/jsonwriter.h"
#include "fulltext/helpsetindex.h"
#include "fulltext/searchengine.h"
#include "library/helplibrary.h"
#include "library/installedcontents.h"
#include "search/searchsources.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace {

constexpr int DefaultLimit = 50;
constexpr auto BriefPatience = std::chrono::seconds(3); ///< of who wants to find something
constexpr auto LongPatience = std::chrono::minutes(10); ///< of who wants an index

struct SearchJob {
    QString query;
    int limit = DefaultLimit;
    bool isJson = false;
    bool isTyping = false;
    QStringList files;
    QStringList titles; ///< of installed help sets, instead of files
};

QString translated(const char* text)
{
    return QCoreApplication::translate("SearchCommand", text);
}

std::optional<SearchJob> parseArguments(int argc, char* argv[])
{
    if (argc < 3) {
        return std::nullopt;
    }
    SearchJob job;
    job.query = QString::fromLocal8Bit(argv[2]);
    for (int i = 3; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--json") {
            job.isJson = true;
        } else if (argument == "--typing") {
            job.isTyping = true;
        } else if (argument == "--in") {
            if (++i == argc) {
                return std::nullopt;
            }
            job.titles += QString::fromLocal8Bit(argv[i]);
        } else if (argument == "--limit") {
            bool ok = false;
            job.limit = ++i < argc ? QString::fromLocal8Bit(argv[i]).toInt(&ok) : 0;
            if (!ok || job.limit < 1) {
                return std::nullopt;
            }
        } else {
            job.files += absoluteFileNameArgument(argv[i]);
        }
    }
    return job.titles.isEmpty() || job.files.isEmpty() ? std::optional(job) : std::nullopt;
}

/// The contents files to search; nothing when no installed help set has one of the titles.
std::optional<QStringList> filesFor(const SearchJob& job)
{
    if (!job.files.isEmpty()) {
        return job.files;
    }
    const QStringList installed = InstalledContents::loadInstalledFromSettings();
    if (job.titles.isEmpty()) {
        return installed;
    }
    QStringList files;
    for (const auto& title : job.titles) {
        const qsizetype before = files.size();
        for (const auto& file : installed) {
            if (HelpLibrary::getTitle(file).compare(title, Qt::CaseInsensitive) == 0) {
                files.append(file);
            }
        }
        if (files.size() == before) {
            complain(translated("no installed help set has the title \"%1\"").arg(title));
            return std::nullopt;
        }
    }
    files.removeDuplicates();
    return files;
}

/// A help set and what came of making its index.
struct Indexed {
    std::shared_ptr<const SearchSource> source;
    IndexingResult result;
};

/// Reads contents files and brings their indexes up to date, for a search or, without an engine, for later
/// ones. Nothing stands for one that cannot be read.
std::vector<std::optional<Indexed>> index(const QStringList& files, SearchEngine* engine)
{
    std::vector<std::optional<Indexed>> all;
    const auto ready = [engine](const SearchableSet& set) {
        if (engine != nullptr) {
            engine->add(set);
        }
    };
    for (const auto& file : files) {
        HelpLibrary library;
        const auto loaded = library.loadContents(HelpLibrary::placeOf(file).helpSet, nullptr);
        if (!loaded.readable) {
            complain(translated(R"("%1" cannot be read)").arg(file));
            all.emplace_back();
            continue;
        }
        const auto source = std::make_shared<SearchSource>(makeSearchSource(library.helpSet(*loaded.root)));
        const auto tell = [&file] {
            complain(translated(R"(another process is making the index of "%1"; waiting for it)").arg(file));
        };
        const auto patience =
            engine == nullptr ? IndexPatience{LongPatience, tell} : IndexPatience{BriefPatience, {}};
        auto result = indexHelpSet(
            source, {}, [](qint64, qint64) {}, ready, patience);
        for (const auto& error : result.errors) {
            complain(error);
        }
        Indexed indexed{source, std::move(result)};
        all.emplace_back(std::move(indexed));
    }
    return all;
}

bool isComplete(const std::optional<Indexed>& indexed)
{
    return indexed && indexed->result.state == IndexingResult::State::Complete;
}

/// Makes the indexes anew that turned out to be damaged. False when there were none.
bool repair(SearchEngine& engine)
{
    const auto damaged = engine.takeDamaged();
    for (const auto& set : damaged) {
        complain(
            translated("The index of \"%1\" is damaged and is made anew.").arg(set.source->contentsFile()));
        const auto ready = [&engine](const SearchableSet& repaired) { engine.add(repaired); };
        [[maybe_unused]] const auto result = indexHelpSet(
            set.source, {}, [](qint64, qint64) {}, ready, {BriefPatience, {}}, IndexTrust::Damaged);
    }
    return !damaged.empty();
}

void writeLines(const SearchAnswer& answer)
{
    if (!answer.nearest.isNull()) {
        complain(translated(R"(nothing was found for "%1"; these are the pages for "%2")")
                     .arg(answer.query, answer.nearest));
    }
    for (const auto& hit : answer.hits) {
        std::printf("%s\t%s\t%s\n", printable(hit.page).constData(), printable(hit.title).constData(),
                    printable(hit.snippet).constData());
    }
}

void writeHit(JsonWriter& json, const SearchHit& hit)
{
    const auto member = [&json](const char* name, const QString& text) {
        json.key(name);
        json.value(text.isNull() ? QStringLiteral("") : text);
    };
    json.beginObject();
    member("page", hit.page);
    member("title", hit.title);
    member("helpset", hit.helpSet);
    const auto list = [&json](const char* name, const QStringList& texts) {
        json.key(name);
        json.beginArray();
        for (const auto& text : texts) {
            json.value(text);
        }
        json.end();
    };
    list("path", hit.path);
    if (!hit.section.isEmpty()) {
        list("section", hit.section);
    }
    if (!hit.copies.isEmpty()) {
        list("copies", hit.copies);
    }
    member("snippet", hit.snippet);
    json.key("score");
    json.value(hit.score);
    json.end();
}

[[nodiscard]] bool writeJson(const SearchAnswer& answer)
{
    JsonWriter json(stdout);
    json.beginObject();
    json.key("query");
    json.value(answer.query);
    json.key("total");
    json.value(int(answer.total));
    json.key("ms");
    json.value(answer.milliseconds);
    if (!answer.reading.isNull()) {
        json.key("reading");
        json.value(answer.reading);
    }
    if (!answer.nearest.isNull()) {
        json.key("nearest");
        json.value(answer.nearest);
    }
    json.key("hits");
    json.beginArray();
    for (const auto& hit : answer.hits) {
        writeHit(json, hit);
    }
    json.end();
    json.end();
    return json.finish();
}

[[nodiscard]] bool write(const SearchAnswer& answer, bool isJson)
{
    if (isJson) {
        return writeJson(answer);
    }
    writeLines(answer);
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

} // namespace

std::optional<int> searchHelpSets(int argc, char* argv[])
{
    const auto job = parseArguments(argc, argv);
    if (!job) {
        return std::nullopt;
    }
    const auto files = filesFor(*job);
    if (!files) {
        return 2;
    }
    SearchEngine engine;
    const auto indexed = index(*files, &engine);
    bool isWhole = std::all_of(indexed.begin(), indexed.end(), isComplete);
    const SearchRequest request{job->query, {}, job->limit, job->isTyping, QLocale::system().uiLanguages()};
    auto answer = engine.search(request, {});
    if (repair(engine)) {
        answer = engine.search(request, {});
    }
    if (!answer || !write(*answer, job->isJson)) {
        complain(answer ? translated("standard output cannot be written") : translated("the search failed"));
        isWhole = false;
    }
    return !isWhole ? 2 : answer->total == 0 ? 1 : 0;
}

std::optional<int> indexHelpSets(int argc, char* argv[])
{
    if (argc < 3) {
        return std::nullopt;
    }
    const auto indexed = index(absoluteFileNameArguments(argc, argv), nullptr);
    for (const auto& one : indexed) {
        if (one && !one->result.isKept) {
            complain(translated(R"(the index of "%1" is not kept: %2)")
                         .arg(one->source->contentsFile(), one->result.whyNotKept));
        }
    }
    const bool areKept = std::all_of(indexed.begin(), indexed.end(),
                                     [](const auto& one) { return isComplete(one) && one->result.isKept; });
    return areKept ? 0 : 2;
}
