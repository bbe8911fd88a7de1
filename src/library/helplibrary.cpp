// SPDX-License-Identifier: MIT
#include "library/helplibrary.h"

#include "formats/pagelocation.h"
#include "formats/paths.h"
#include "formats/regularfile.h"
#include "library/contentslook.h"
#include "library/helpset.h"
#include "sources/pagefiles.h"
#include "sources/sources.h"

#include <algorithm>
#include <numeric>
#include <utility>

/// A contents file that is being read, or has been read and is not asked for yet.
struct HelpLibrary::Reading {
    QString fileName;
    std::shared_ptr<HelpSet> ready; ///< the contents, before they are adopted
    HelpSet* set = nullptr;         ///< the same afterwards, unless it has been removed
    CurrentRow current;
    ContentsLoaded loaded; ///< null until the file is asked for
};

HelpLibrary::HelpLibrary(QObject* parent) : QObject(parent)
{
}

HelpLibrary::~HelpLibrary() = default;

HelpLibrary::Loaded HelpLibrary::loadContents(const QString& fileName,
                                              const HelpContentsListViewItem* current)
{
    const auto set = std::make_shared<HelpSet>(fileName, openSource(fileName));
    set->adoptIndex(readIndexEntries(set->indexTask()));
    return adoptContents(set, current);
}

HelpLibrary::Loaded HelpLibrary::adoptContents(const std::shared_ptr<HelpSet>& set,
                                               const HelpContentsListViewItem* current)
{
    const auto rows = set->topRows();
    const size_t first = insertPosition(current);
    if (!rows.empty()) {
        Q_EMIT topRowsAboutToBeInserted(int(first), int(first + rows.size()) - 1);
        m_topRows.insert(m_topRows.begin() + qsizetype(first), rows.begin(), rows.end());
        numberTopRows(first);
    }
    Loaded loaded{&set->root(),          set->firstPage(),  set->ownTitle(),
                  set->malformedFiles(), set->isReadable(), set->limitReached()};
    m_helpSets.push_back(set);
    if (!rows.empty()) {
        Q_EMIT topRowsInserted();
    }
    return loaded;
}

/// Behind the last top-level row of the current row's help set, so that help sets never interleave.
size_t HelpLibrary::insertPosition(const HelpContentsListViewItem* current) const
{
    if (current == nullptr) {
        return 0;
    }
    const auto* root = current->contentsItem->root();
    const auto last = std::find_if(m_topRows.crbegin(), m_topRows.crend(),
                                   [root](const auto* row) { return row->contentsItem->root() == root; });
    return size_t(m_topRows.crend() - last);
}

void HelpLibrary::numberTopRows(size_t first)
{
    for (size_t i = first; i < m_topRows.size(); ++i) {
        m_topRows[i]->position = int(i);
    }
}

void HelpLibrary::removeContents(HelpContentsRoot* root)
{
    const auto set = std::find_if(m_helpSets.begin(), m_helpSets.end(),
                                  [root](const auto& candidate) { return &candidate->root() == root; });
    if (set == m_helpSets.end()) {
        return;
    }
    m_indexing.cancel();
    Q_EMIT helpSetAboutToBeRemoved(root);
    const auto rows = (*set)->topRows();
    if (!rows.empty()) {
        const int first = rows.front()->position;
        Q_EMIT topRowsAboutToBeRemoved(first, first + int(rows.size()) - 1);
        m_topRows.erase(m_topRows.begin() + first, m_topRows.begin() + first + qsizetype(rows.size()));
        numberTopRows(size_t(first));
        Q_EMIT topRowsRemoved();
    }
    const auto removed = std::move(*set);
    m_helpSets.erase(set);
    for (const auto& reading : m_readings) {
        if (reading->set == removed.get()) {
            reading->set = nullptr;
        }
    }
    m_pageRecords.forget([&](const HelpContentsItem& record) {
        return m_helpSets.empty() || belongsTo(record, removed->root());
    });
    renewIndex();
    Q_EMIT helpSetRemoved();
}

void HelpLibrary::buildIndex()
{
    m_indexing.cancel();
    const auto items = indexItems();
    m_keywordIndex.setRows(makeKeywordRows(items), items);
}

std::vector<std::span<HelpIndexItem>> HelpLibrary::indexItems() const
{
    std::vector<std::span<HelpIndexItem>> items;
    for (const auto& set : m_helpSets) {
        items.emplace_back(set->indexItems());
    }
    return items;
}

void HelpLibrary::renewIndex()
{
    constexpr size_t few = 5'000; // are sorted within a millisecond or two
    const auto items = indexItems();
    const size_t count = std::accumulate(items.begin(), items.end(), size_t(0),
                                         [](size_t sum, const auto& span) { return sum + span.size(); });
    if (count <= few) {
        buildIndex();
        Q_EMIT becameIdle();
        return;
    }
    m_indexing.cancel();
    m_keywordIndex.setRows({}, items);
    Q_EMIT becameBusy();
    m_indexing.run([items](const std::stop_token& stop) { return makeKeywordRows(items, stop); },
                   [this, items](KeywordRows&& rows) {
                       m_keywordIndex.setRows(std::move(rows), items);
                       Q_EMIT becameIdle();
                   });
}

void HelpLibrary::readAhead(const QString& fileName)
{
    const auto reading = m_readings.emplace_back(std::make_shared<Reading>());
    reading->fileName = fileName;
    m_reading.run(
        [fileName](const std::stop_token& stop) {
            return std::make_shared<HelpSet>(fileName, openSource(fileName), stop);
        },
        [this, reading](std::shared_ptr<HelpSet>&& set) {
            reading->ready = std::move(set);
            proceed(reading);
        });
}

void HelpLibrary::readContents(const QString& fileName, const CurrentRow& current,
                               const ContentsLoaded& loaded)
{
    const auto isAhead = [&](const auto& reading) {
        return reading->loaded == nullptr && reading->fileName == fileName;
    };
    if (std::none_of(m_readings.begin(), m_readings.end(), isAhead)) {
        readAhead(fileName);
    }
    const auto reading = *std::find_if(m_readings.begin(), m_readings.end(), isAhead);
    reading->current = current;
    reading->loaded = loaded;
    Q_EMIT becameBusy();
    proceed(reading);
}

/// Does what can be done with a reading now that something about it has changed.
void HelpLibrary::proceed(const std::shared_ptr<Reading>& reading)
{
    if (reading->loaded == nullptr) {
        return;
    }
    if (reading->ready != nullptr) {
        readRest(reading);
        reading->loaded(adoptContents(std::exchange(reading->ready, {}), reading->current()));
    }
}

void HelpLibrary::readRest(const std::shared_ptr<Reading>& reading)
{
    reading->set = reading->ready.get();
    m_indexReading.run([task = reading->set->indexTask()](
                           const std::stop_token& stop) { return readIndexEntries(task, stop); },
                       [this, reading](IndexEntries&& entries) {
                           if (reading->set != nullptr) {
                               const QString limitReached = entries.limitReached;
                               const bool isRetitled = !entries.titles.empty();
                               reading->set->adoptIndex(std::move(entries));
                               if (isRetitled) {
                                   Q_EMIT rowsRetitled();
                               }
                               if (!limitReached.isNull()) {
                                   Q_EMIT keywordsLeftOut(reading->fileName, limitReached);
                               }
                           }
                           std::erase(m_readings, reading);
                           if (!isReading()) {
                               renewIndex();
                           }
                       });
    // Whoever looks for a page before waits, or does this.
    m_indexReading.run(
        [set = reading->ready](const std::stop_token& /*stop*/) {
            set->indexPages();
            return set;
        },
        [](const std::shared_ptr<HelpSet>& /*set*/) {});
}

bool HelpLibrary::isReading() const
{
    return std::any_of(m_readings.begin(), m_readings.end(),
                       [](const auto& reading) { return reading->loaded != nullptr; });
}

bool HelpLibrary::isBusy() const
{
    return isReading() || !m_indexing.isIdle();
}

void HelpLibrary::adoptWithin(std::chrono::milliseconds time, const std::function<bool()>& isEnough)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + time;
    for (auto* tasks : {&m_reading, &m_indexReading, &m_indexing}) {
        tasks->adoptWithin(std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()), isEnough);
    }
}

void HelpLibrary::cancelReading()
{
    dropReading();
    renewIndex();
}

void HelpLibrary::dropReading()
{
    m_reading.cancel();
    m_indexReading.cancel();
    m_readings.clear();
}

std::vector<HelpContentsRoot*> HelpLibrary::roots() const
{
    std::vector<HelpContentsRoot*> result;
    for (const auto& set : m_helpSets) {
        result.push_back(&set->root());
    }
    return result;
}

bool HelpLibrary::isEmpty() const
{
    return m_helpSets.empty() && m_pageRecords.isEmpty();
}

const HelpSet& HelpLibrary::helpSet(const HelpContentsRoot& root) const
{
    return **std::find_if(m_helpSets.begin(), m_helpSets.end(),
                          [&](const auto& candidate) { return &candidate->root() == &root; });
}

std::vector<Problem> HelpLibrary::problems() const
{
    std::vector<Problem> result;
    for (const auto& set : m_helpSets) {
        result.insert(result.end(), set->problems().begin(), set->problems().end());
    }
    return result;
}

HelpContentsItem* HelpLibrary::findPage(const QString& fileName) const
{
    const QString path = absoluteFilePath(fileName);
    HelpContentsItem* result = nullptr;
    for (const auto& set : m_helpSets) {
        auto* record = set->findPage(path);
        // Help sets stand in load order, the answer is the first one in tree order.
        if (record != nullptr &&
            (result == nullptr ||
             set->topRows().front()->position < helpSet(*result->root()).topRows().front()->position)) {
            result = record;
        }
    }
    return result;
}

/// Record of the row that shows the page without its anchor, and the anchor with its "#".
HelpLibrary::WholePage HelpLibrary::findWholePage(const QString& fileName) const
{
    const HelpContentsItem* record = nullptr;
    const auto found = splitPageName(fileName, [&](const QString& file) {
        record = file.size() < fileName.size() ? findPage(file) : nullptr;
        return record != nullptr;
    });
    return found ? WholePage{record, u'#' + found->anchor} : WholePage();
}

const HelpContentsListViewItem* HelpLibrary::findRow(const QString& fileName) const
{
    const auto* exact = findPage(fileName);
    const auto* record = exact != nullptr ? exact : findWholePage(fileName).record;
    return record == nullptr ? nullptr : record->listViewItem;
}

HelpContentsItem* HelpLibrary::getPage(const QString& fileName, const QString& namedIn, int namedInLine)
{
    if (auto* record = findPage(fileName)) {
        return record;
    }
    const auto* whole = findWholePage(fileName).record;
    return whole == nullptr ? &m_pageRecords.add(fileName, namedIn, namedInLine)
                            : &m_pageRecords.addPlace(fileName, *whole);
}

HelpContentsItem* HelpLibrary::getContentsByFileName(const QString& fileName) const
{
    for (const auto& set : m_helpSets) {
        if (set->root().fileName == fileName && set->firstRecord() != nullptr) {
            return set->firstRecord();
        }
    }
    return nullptr;
}

QString HelpLibrary::pageTitle(const QString& link) const
{
    const auto* record = findPage(link);
    if (record != nullptr && !record->listViewItem->text.isEmpty()) {
        return record->listViewItem->text.toString();
    }
    const auto whole = findWholePage(link);
    if (whole.record != nullptr && !whole.record->listViewItem->text.isEmpty()) {
        return QStringLiteral("%1 (%2)").arg(whole.record->listViewItem->text, whole.anchor);
    }
    const qsizetype hash = anchorPosition(link);
    return link.sliced(link.lastIndexOf(u'/', hash < 0 ? -1 : hash) + 1);
}

bool HelpLibrary::isOpen(const QString& fileName) const
{
    return std::any_of(m_helpSets.begin(), m_helpSets.end(),
                       [&](const auto& set) { return ::isOneFile(set->root().fileName, fileName); });
}

bool HelpLibrary::isOneFile(const QString& a, const QString& b)
{
    return ::isOneFile(a, b);
}

QString HelpLibrary::absoluteName(const QString& fileName)
{
    return absoluteFilePath(fileName);
}

bool HelpLibrary::isFile(const QString& fileName)
{
    return mayBeHelpSet(fileName);
}

std::optional<HelpLibrary::Refusal> HelpLibrary::refusalOf(const QString& fileName)
{
    if (const auto error = sourceError(fileName)) {
        return Refusal{describe(*error), ::isGone(*error)};
    }
    const QString reason = whyNoContentsFile(fileName);
    return reason.isNull() ? std::nullopt : std::optional(Refusal{reason, false});
}

HelpLibrary::Place HelpLibrary::placeOf(const QString& fileName)
{
    auto place = ::placeOf(fileName);
    return {std::move(place.helpSet), std::move(place.page)};
}

QString HelpLibrary::readableName(const QString& page)
{
    return readablePageName(page);
}

QStringList HelpLibrary::fileFilters()
{
    return sourceFilters();
}

QString HelpLibrary::getTitle(const QString& fileName)
{
    return sourceTitle(fileName);
}
