// SPDX-License-Identifier: MIT
#include "library/helpset.h"

#include "formats/contentsoutline.h"
#include "formats/indexreader.h"
#include "formats/paths.h"

#include <QCoreApplication>

#include <algorithm>

HelpSet::HelpSet(const QString& fileName, const ContentsOutline& outline)
    : m_files(outline.files), m_problems(outline.problems)
{
    m_root.fileName = fileName;
    m_root.title = outline.title;
    adoptEntries(outline);
    adoptRows(outline);
    adoptIndexFiles(outline);
    indexPages();
    if (outline.firstPage >= 0) {
        m_firstPage = &m_records[size_t(outline.firstPage)];
        m_root.page = m_firstPage->page;
    }
}

void HelpSet::adoptEntries(const ContentsOutline& outline)
{
    m_records.resize(outline.entries.size());
    for (size_t i = 0; i < m_records.size(); ++i) {
        const auto& entry = outline.entries[i];
        auto& record = m_records[i];
        record.page = entry.page;
        record.title = entry.helpSet < 0 ? QString() : outline.titles[size_t(entry.helpSet)];
        record.root = &m_root;
        record.target = entry.target;
        record.namedIn = &m_files[size_t(entry.file)];
        record.namedInLine = entry.line;
    }
}

void HelpSet::adoptRows(const ContentsOutline& outline)
{
    m_rows.resize(outline.entries.size());
    const auto adoptSiblings = [&](int first, HelpContentsListViewItem* parent,
                                   std::vector<HelpContentsListViewItem*>& siblings) {
        for (int i = first; i >= 0; i = outline.entries[size_t(i)].nextSibling) {
            auto& row = m_rows[size_t(i)];
            row.parent = parent;
            row.position = int(siblings.size());
            siblings.push_back(&row);
        }
        siblings.shrink_to_fit();
    };
    adoptSiblings(outline.firstTop, nullptr, m_topRows);
    for (size_t i = 0; i < m_rows.size(); ++i) {
        auto& row = m_rows[i];
        row.text = outline.entries[i].title;
        row.contentsItem = &m_records[i];
        m_records[i].listViewItem = &row;
        adoptSiblings(outline.entries[i].firstChild, &row, row.children);
    }
}

void HelpSet::adoptIndexFiles(const ContentsOutline& outline)
{
    m_indexFiles.reserve(outline.indexFiles.size());
    std::vector<std::vector<IndexLine>> contents;
    size_t total = 0;
    for (const auto& reference : outline.indexFiles) {
        m_indexFiles.push_back(absoluteFilePath(reference.fileName));
        const auto lines = readIndex(reference.fileName);
        if (!lines.ok()) {
            m_problems.push_back(
                {outline.files[size_t(reference.file)], reference.line, Problem::Severity::Warning,
                 QCoreApplication::translate("HelpSet", "The index file \"%1\" cannot be read: %2")
                     .arg(reference.fileName, describe(lines.error()))});
        }
        contents.push_back(lines.ok() ? lines.value() : std::vector<IndexLine>());
        total += contents.back().size();
    }
    m_indexItems.reserve(total);
    for (size_t file = 0; file < contents.size(); ++file) {
        const size_t first = m_indexItems.size();
        for (const auto& line : contents[file]) {
            auto& item = m_indexItems.emplace_back();
            item.keyword = line.keyword;
            item.link = line.link;
            item.title = outline.indexFiles[file].title;
            item.contentsItem = &m_root;
            item.parent = line.parent < 0 ? nullptr : &m_indexItems[first + size_t(line.parent)];
            item.hasPage = line.hasPage;
            item.namedIn = &m_indexFiles[file];
            item.namedInLine = line.line;
        }
    }
}

// Post-order over the tree without recursion: outlines may be thousands of levels deep.
void HelpSet::indexPages()
{
    m_pages.reserve(qsizetype(m_records.size()));
    const auto add = [this](HelpContentsItem* record) {
        if (record->target == EntryTarget::Page) {
            const QString path = absoluteFilePath(record->page);
            if (!m_pages.contains(path)) {
                m_pages.insert(path, record);
            }
        }
    };
    for (auto* top : m_topRows) {
        std::vector<std::pair<HelpContentsListViewItem*, size_t>> path{{top, 0}};
        while (!path.empty()) {
            auto& [row, next] = path.back();
            if (next < row->children.size()) {
                path.emplace_back(row->children[next++], 0);
            } else {
                add(row->contentsItem);
                path.pop_back();
            }
        }
    }
}
