// SPDX-License-Identifier: MIT
#include "library/helpset.h"

#include "formats/indexreader.h"
#include "formats/linereader.h"
#include "formats/paths.h"
#include "formats/textfile.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>
#include <map>
#include <utility>

namespace {

/// Reads the index files of a help set one after the other, each once, however often it is named.
class IndexReading {
public:
    IndexReading(const IndexTask& task, const std::stop_token& stop) : m_task(task), m_stop(stop) {}

    IndexEntries read()
    {
        for (const auto& reference : m_task.references) {
            const auto* file = textOf(reference);
            if (file == nullptr) {
                continue;
            }
            m_lines += file->lines;
            if (m_lines > MaximumKeywordLines || !addEntries(reference, *file->text)) {
                m_entries.limitReached =
                    QCoreApplication::translate(
                        "HelpSet",
                        "More than %1 keywords, or far too many lines of them; the rest is not read")
                        .arg(MaximumKeywords);
                note(m_task.files[size_t(reference.file)], reference.line, Problem::Severity::Error,
                     m_entries.limitReached);
                break;
            }
        }
        return std::move(m_entries);
    }

private:
    struct File {
        const QString* text;
        size_t lines; ///< at most
    };

    /// Null when it cannot be read.
    const File* textOf(const IndexReference& reference)
    {
        const QString path = absoluteFilePath(reference.fileName);
        if (const auto known = m_files.constFind(path); known != m_files.cend()) {
            return &*known;
        }
        const auto text = readText(reference.fileName);
        if (!text.ok()) {
            note(m_task.files[size_t(reference.file)], reference.line, Problem::Severity::Warning,
                 QCoreApplication::translate("HelpSet", "The index file \"%1\" cannot be read: %2")
                     .arg(reference.fileName, describe(text.error())));
            return nullptr;
        }
        const auto& kept = m_entries.texts.emplace_back(text.value());
        const size_t lines = lineBound(kept);
        const size_t needed = std::min(m_entries.items.size() + lines, MaximumKeywords);
        if (needed > m_entries.items.capacity()) {
            m_entries.items.reserve(std::max(needed, 2 * m_entries.items.capacity()));
        }
        return &*m_files.insert(path, {&kept, lines});
    }

    /// False when there are too many.
    bool addEntries(const IndexReference& reference, QStringView text)
    {
        const auto& source = *m_entries.sources.emplace_back(std::make_unique<HelpIndexSource>(
            HelpIndexSource{absoluteFilePath(reference.fileName), extractRightDir(reference.fileName),
                            reference.title, m_task.root}));
        auto& items = m_entries.items;
        const auto first = int(items.size());
        IndexReader reader(text);
        while (!m_stop.stop_requested() && reader.next()) {
            if (items.size() == MaximumKeywords) {
                return false;
            }
            const auto& line = reader.line();
            auto& item = items.emplace_back();
            item.keyword = line.keyword;
            item.pageName = line.page;
            item.source = &source;
            item.parentDistance = line.parent < 0 ? 0 : int(items.size()) - 1 - (first + line.parent);
            item.namedInLine = line.line;
            if (line.isCut) {
                note(source.fileName, line.line, Problem::Severity::Warning,
                     QCoreApplication::translate("HelpSet", "The line is too long"));
            }
        }
        return true;
    }

    void note(const QString& file, int line, Problem::Severity severity, const QString& message)
    {
        m_entries.problems.push_back({file, line, severity, message});
    }

    const IndexTask& m_task;
    const std::stop_token& m_stop;
    IndexEntries m_entries;
    QHash<QString, File> m_files; ///< by absolute paths
    size_t m_lines = 0;
};

} // namespace

IndexEntries readIndexEntries(const IndexTask& task, const std::stop_token& stop)
{
    return IndexReading(task, stop).read();
}

HelpSet::HelpSet(const QString& fileName, ContentsOutline outline) : m_outline(std::move(outline))
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
