// SPDX-License-Identifier: MIT
#include "library/helplibrary.h"

#include "formats/contentsreader.h"
#include "formats/helpsettitle.h"
#include "formats/paths.h"
#include "formats/regularfile.h"
#include "library/helpset.h"

#include <algorithm>

HelpLibrary::HelpLibrary(QObject* parent) : QObject(parent)
{
}

HelpLibrary::~HelpLibrary() = default;

HelpLibrary::Loaded HelpLibrary::loadContents(const QString& fileName,
                                              const HelpContentsListViewItem* current)
{
    const ContentsOutline outline = ContentsReader().read(fileName);
    auto set = std::make_unique<HelpSet>(fileName, outline);
    const auto& rows = set->topRows();
    const size_t first = insertPosition(current);
    if (!rows.empty()) {
        Q_EMIT topRowsAboutToBeInserted(int(first), int(first + rows.size()) - 1);
        m_topRows.insert(m_topRows.begin() + qsizetype(first), rows.begin(), rows.end());
        numberTopRows(first);
    }
    Loaded loaded{&set->root(), set->firstPage(), outline.malformedFiles, outline.readable};
    m_helpSets.push_back(std::move(set));
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
    const auto* root = current->contentsItem->root;
    const auto last = std::find_if(m_topRows.crbegin(), m_topRows.crend(),
                                   [root](const auto* row) { return row->contentsItem->root == root; });
    return size_t(m_topRows.crend() - last);
}

void HelpLibrary::numberTopRows(size_t first)
{
    for (size_t i = first; i < m_topRows.size(); ++i) {
        m_topRows[i]->position = int(i);
    }
}

void HelpLibrary::removeContents(HelpContentsItem* root)
{
    const auto set = std::find_if(m_helpSets.begin(), m_helpSets.end(),
                                  [root](const auto& candidate) { return &candidate->root() == root; });
    if (set == m_helpSets.end()) {
        return;
    }
    Q_EMIT helpSetAboutToBeRemoved(root);
    const auto& rows = (*set)->topRows();
    if (!rows.empty()) {
        const int first = rows.front()->position;
        Q_EMIT topRowsAboutToBeRemoved(first, first + int(rows.size()) - 1);
        m_topRows.erase(m_topRows.begin() + first, m_topRows.begin() + first + qsizetype(rows.size()));
        numberTopRows(size_t(first));
        Q_EMIT topRowsRemoved();
    }
    const auto removed = std::move(*set);
    m_helpSets.erase(set);
    m_pageRecords.clear();
    buildIndex();
    Q_EMIT helpSetRemoved();
}

void HelpLibrary::buildIndex()
{
    std::vector<HelpIndexItem*> items;
    for (const auto& set : m_helpSets) {
        for (auto& item : set->indexItems()) {
            items.push_back(&item);
        }
    }
    m_keywordIndex.buildIndex(items);
}

std::vector<HelpContentsItem*> HelpLibrary::roots() const
{
    std::vector<HelpContentsItem*> result;
    for (const auto& set : m_helpSets) {
        result.push_back(&set->root());
    }
    return result;
}

bool HelpLibrary::isEmpty() const
{
    return m_helpSets.empty() && m_pageRecords.empty();
}

const HelpSet& HelpLibrary::helpSet(const HelpContentsItem& root) const
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
             set->topRows().front()->position < helpSet(*result->root).topRows().front()->position)) {
            result = record;
        }
    }
    return result;
}

/// Record of the row that shows the page without its anchor, and the anchor with its "#".
HelpLibrary::WholePage HelpLibrary::findWholePage(const QString& fileName) const
{
    // From the right: directories may have a "#" in their names, too.
    for (qsizetype hash = fileName.lastIndexOf(u'#'); hash > 0; hash = fileName.lastIndexOf(u'#', hash - 1)) {
        if (const auto* record = findPage(fileName.first(hash))) {
            return {record, fileName.sliced(hash)};
        }
    }
    return {};
}

const HelpContentsListViewItem* HelpLibrary::findRow(const QString& fileName) const
{
    const auto* exact = findPage(fileName);
    const auto* record = exact != nullptr ? exact : findWholePage(fileName).record;
    return record == nullptr ? nullptr : record->listViewItem;
}

HelpContentsItem* HelpLibrary::getPage(const QString& fileName)
{
    if (auto* record = findPage(fileName)) {
        return record;
    }
    auto& record = m_pageRecords.emplace_back();
    record.page = fileName;
    if (const auto* whole = findWholePage(fileName).record) {
        record.listViewItem = whole->listViewItem;
        record.title = whole->title;
        record.root = whole->root;
        record.namedIn = whole->namedIn;
        record.namedInLine = whole->namedInLine;
    }
    return &record;
}

HelpContentsItem* HelpLibrary::getPage(const HelpIndexItem& keyword)
{
    const auto known = std::find_if(m_pageRecords.begin(), m_pageRecords.end(),
                                    [&](const auto& record) { return record.keyword == &keyword; });
    if (known != m_pageRecords.end()) {
        return &*known;
    }
    auto& record = m_pageRecords.emplace_back();
    record.page = keyword.link;
    record.title = keyword.title;
    record.target = EntryTarget::Nothing;
    record.keyword = &keyword;
    record.namedIn = keyword.namedIn;
    record.namedInLine = keyword.namedInLine;
    return &record;
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
        return record->listViewItem->text;
    }
    const auto whole = findWholePage(link);
    if (whole.record != nullptr && !whole.record->listViewItem->text.isEmpty()) {
        return QStringLiteral("%1 (%2)").arg(whole.record->listViewItem->text, whole.anchor);
    }
    const qsizetype hash = anchorPosition(link);
    return link.sliced(link.lastIndexOf(u'/', hash < 0 ? -1 : hash) + 1);
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
    return isRegularFile(fileName);
}

QString HelpLibrary::getTitle(const QString& fileName)
{
    return ::getTitle(fileName);
}
