// SPDX-License-Identifier: MIT
#include "library/helpset.h"

#include <map>
#include <utility>

IndexEntries readIndexEntries(const IndexTask& task, const std::stop_token& stop)
{
    KeywordCollector collector(task.root);
    task.source->readKeywords(collector, stop);
    return collector.take();
}

HelpSet::HelpSet(const QString& fileName, std::shared_ptr<Source> source, const std::stop_token& stop)
    : m_source(std::move(source)), m_outline(m_source->readContents(stop))
{
    m_root.fileName = fileName;
    m_root.own.title = m_outline.title;
    adoptEntries();
    adoptRows();
    if (m_outline.firstPage >= 0) {
        m_firstPage = &m_records[size_t(m_outline.firstPage)];
        m_root.own.directory = m_firstPage->source->directory;
        m_root.pageName = m_firstPage->pageName;
    }
    m_outline.entries = std::vector<OutlineEntry>();
    constexpr size_t many = 200'000; // take 50 ms, which must not fall on a click
    if (m_records.size() > many) {
        indexPages();
    }
}

QString HelpSet::ownTitle() const
{
    return m_outline.ownTitle.isEmpty() ? m_root.fileName : m_outline.ownTitle;
}

HelpContentsListViewItem* HelpSet::titleRow() const
{
    const bool isTitle =
        m_topRows.size() == 1 && m_topRows.front()->text.toString().simplified() == ownTitle().simplified();
    return isTitle ? m_topRows.front() : nullptr;
}

void HelpSet::adoptEntries()
{
    std::map<std::pair<int, int>, const HelpContentsSource*> sources; // by file and title
    std::pair key(-1, -1);
    const HelpContentsSource* source = nullptr;
    m_records.reserve(m_outline.entries.size());
    for (const auto& entry : m_outline.entries) {
        if (const std::pair entryKey(entry.file, entry.helpSet); source == nullptr || key != entryKey) {
            key = entryKey;
            auto& known = sources[key];
            known = known == nullptr ? &addSource(entry) : known;
            source = known;
        }
        auto& record = m_records.emplace_back();
        record.source = source;
        record.pageName = entry.page;
        record.target = entry.target;
        record.namedInLine = entry.line;
    }
}

const HelpContentsSource& HelpSet::addSource(const OutlineEntry& entry)
{
    return m_sources.emplace_back(
        HelpContentsSource{m_outline.files[size_t(entry.file)], m_outline.directories[size_t(entry.file)],
                           entry.helpSet < 0 ? QString() : m_outline.titles[size_t(entry.helpSet)], &m_root});
}

void HelpSet::adoptRows()
{
    const auto& entries = m_outline.entries;
    m_rows.resize(entries.size());
    m_siblings.reserve(entries.size());
    const auto adoptSiblings = [&](int firstEntry, HelpContentsListViewItem* parent) {
        const size_t first = m_siblings.size();
        for (int i = firstEntry; i >= 0; i = entries[size_t(i)].nextSibling) {
            auto& row = m_rows[size_t(i)];
            row.parent = parent;
            row.position = int(m_siblings.size() - first);
            m_siblings.push_back(&row);
        }
        return std::span(m_siblings).subspan(first);
    };
    m_topRows = adoptSiblings(m_outline.firstTop, nullptr);
    for (size_t i = 0; i < m_rows.size(); ++i) {
        auto& row = m_rows[i];
        row.text = entries[i].title;
        row.contentsItem = &m_records[i];
        m_records[i].listViewItem = &row;
        row.children = adoptSiblings(entries[i].firstChild, &row);
    }
}

void HelpSet::adoptIndex(IndexEntries entries)
{
    m_index = std::move(entries);
    for (const auto& [row, title] : m_index.titles) {
        m_rows[size_t(row)].text = title;
    }
    m_outline.problems.insert(m_outline.problems.end(), m_index.problems.begin(), m_index.problems.end());
}

HelpContentsItem* HelpSet::findPage(const QString& path)
{
    indexPages();
    return m_pages->find(path);
}

void HelpSet::indexPages()
{
    std::call_once(m_pagesEntered, [this] { enterPages(); });
}

// Post-order over the tree without recursion: outlines may be thousands of levels deep.
void HelpSet::enterPages()
{
    m_pages.emplace(m_records);
    std::vector<std::pair<HelpContentsListViewItem*, size_t>> path;
    for (auto* top : m_topRows) {
        path.assign(1, {top, 0});
        while (!path.empty()) {
            auto& [row, next] = path.back();
            if (next < row->children.size()) {
                path.emplace_back(row->children[next++], 0);
                continue;
            }
            if (row->contentsItem->target == EntryTarget::Page) {
                m_pages->insert(*row->contentsItem);
            }
            path.pop_back();
        }
    }
}
