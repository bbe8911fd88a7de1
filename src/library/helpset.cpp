// SPDX-License-Identifier: MIT
#include "library/helpset.h"

#include "formats/indexreader.h"
#include "formats/paths.h"

#include <QCoreApplication>

#include <numeric>
#include <utility>

namespace {

std::vector<HelpContentsItem> recordsFor(const ContentsOutline& outline)
{
    return std::vector<HelpContentsItem>(outline.entries.size());
}

void addEntries(IndexEntries& entries, const IndexOutline& outline, const HelpIndexSource& source)
{
    const size_t first = entries.items.size();
    for (const auto& line : outline.lines) {
        auto& item = entries.items.emplace_back();
        item.keyword = line.keyword;
        item.pageName = line.page;
        item.source = &source;
        item.parent = line.parent < 0 ? nullptr : &entries.items[first + size_t(line.parent)];
        item.namedInLine = line.line;
    }
}

/// The index files as far as they can be read, in the order of the references.
std::vector<Result<IndexOutline, FileError>> readIndexFiles(const IndexTask& task,
                                                            const std::stop_token& stop)
{
    std::vector<Result<IndexOutline, FileError>> files;
    files.reserve(task.references.size());
    for (const auto& reference : task.references) {
        files.push_back(readIndex(reference.fileName, stop));
    }
    return files;
}

size_t lineCount(const std::vector<Result<IndexOutline, FileError>>& files)
{
    return std::accumulate(files.begin(), files.end(), size_t(0), [](size_t sum, const auto& file) {
        return sum + (file.ok() ? file.value().lines.size() : 0);
    });
}

} // namespace

IndexEntries readIndexEntries(const IndexTask& task, const std::stop_token& stop)
{
    const auto files = readIndexFiles(task, stop);
    IndexEntries entries;
    // The entries point at each other.
    entries.items.reserve(lineCount(files));
    for (size_t i = 0; i < files.size(); ++i) {
        const auto& reference = task.references[i];
        if (!files[i].ok()) {
            entries.problems.push_back(
                {task.files[size_t(reference.file)], reference.line, Problem::Severity::Warning,
                 QCoreApplication::translate("HelpSet", "The index file \"%1\" cannot be read: %2")
                     .arg(reference.fileName, describe(files[i].error()))});
            continue;
        }
        const auto& outline = files[i].value();
        entries.texts.push_back(outline.text);
        entries.sources.push_back(std::make_unique<HelpIndexSource>(HelpIndexSource{
            absoluteFilePath(reference.fileName), outline.directory, reference.title, task.root}));
        addEntries(entries, outline, *entries.sources.back());
    }
    return entries;
}

HelpSet::HelpSet(const QString& fileName, ContentsOutline outline)
    : m_outline(std::move(outline)), m_records(recordsFor(m_outline)), m_pages(m_records)
{
    m_root.fileName = fileName;
    m_root.title = m_outline.title;
    adoptEntries();
    adoptRows();
    indexPages();
    if (m_outline.firstPage >= 0) {
        m_firstPage = &m_records[size_t(m_outline.firstPage)];
        m_root.directory = m_firstPage->directory;
        m_root.pageName = m_firstPage->pageName;
    }
    m_outline.entries = {};
}

QString HelpSet::ownTitle() const
{
    return m_outline.ownTitle.isEmpty() ? m_root.fileName : m_outline.ownTitle;
}

void HelpSet::adoptEntries()
{
    for (size_t i = 0; i < m_records.size(); ++i) {
        const auto& entry = m_outline.entries[i];
        auto& record = m_records[i];
        if (entry.target != EntryTarget::Contents) {
            record.directory = m_outline.directories[size_t(entry.file)];
        }
        record.pageName = entry.page;
        record.title = entry.helpSet < 0 ? QString() : m_outline.titles[size_t(entry.helpSet)];
        record.root = &m_root;
        record.target = entry.target;
        record.namedIn = &m_outline.files[size_t(entry.file)];
        record.namedInLine = entry.line;
    }
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
    m_outline.problems.insert(m_outline.problems.end(), m_index.problems.begin(), m_index.problems.end());
}

// Post-order over the tree without recursion: outlines may be thousands of levels deep.
void HelpSet::indexPages()
{
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
                m_pages.insert(*row->contentsItem);
            }
            path.pop_back();
        }
    }
}
