// SPDX-License-Identifier: MIT
#pragma once

#include "library/helpcontentsitem.h"
#include "library/helpcontentslistviewitem.h"
#include "library/keywordcollector.h"
#include "library/pagetable.h"
#include "sources/source.h"

#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

/// What is needed to read the keywords of a help set, in any thread.
struct IndexTask {
    std::shared_ptr<Source> source;
    HelpContentsRoot* root = nullptr; ///< not looked at
};

/// Once a stop has been asked for, entries are missing.
[[nodiscard]] IndexEntries readIndexEntries(const IndexTask& task, const std::stop_token& stop = {});

/// One loaded help set with all that came from it. Owns its records, rows and keyword entries, which
/// keep their addresses for as long as the set lives. May be made in any thread.
class HelpSet {
public:
    /// Reads the contents; the keyword entries come with adoptIndex().
    HelpSet(const QString& fileName, std::shared_ptr<Source> source, const std::stop_token& stop = {});
    Q_DISABLE_COPY_MOVE(HelpSet)

    [[nodiscard]] IndexTask indexTask() { return {m_source, &m_root}; }
    /// Takes over what indexTask() led to; once. Rows may have other titles then.
    void adoptIndex(IndexEntries entries);

    [[nodiscard]] HelpContentsRoot& root() { return m_root; }
    [[nodiscard]] const HelpContentsRoot& root() const { return m_root; }
    /// Record of the first entry that is no including line, in reading order; null when there is none.
    [[nodiscard]] HelpContentsItem* firstPage() const { return m_firstPage; }
    /// Record of the first entry in reading order; null when there is none.
    [[nodiscard]] HelpContentsItem* firstRecord() { return m_records.empty() ? nullptr : &m_records.front(); }
    [[nodiscard]] const std::vector<HelpContentsItem>& records() const { return m_records; }
    [[nodiscard]] std::span<HelpContentsListViewItem* const> topRows() const { return m_topRows; }
    /// All of them, in reading order.
    [[nodiscard]] std::span<const HelpContentsListViewItem> rows() const { return m_rows; }
    /// The title that it gives itself, else its name.
    [[nodiscard]] QString ownTitle() const;
    /// The only top-level row when it is called like the help set, so that one of the two says it all; else
    /// null.
    [[nodiscard]] HelpContentsListViewItem* titleRow() const;
    /// In load order.
    [[nodiscard]] std::vector<HelpIndexItem>& indexItems() { return m_index.items; }
    [[nodiscard]] const std::vector<HelpIndexItem>& indexItems() const { return m_index.items; }
    [[nodiscard]] const std::vector<Problem>& problems() const { return m_outline.problems; }
    /// Null when all was read.
    [[nodiscard]] const QString& limitReached() const { return m_outline.limitReached; }
    [[nodiscard]] const QStringList& malformedFiles() const { return m_outline.malformedFiles; }
    [[nodiscard]] bool isReadable() const { return m_outline.readable; }

    /// Record of the row that shows exactly this page (absolute path); rows below a row come before it.
    [[nodiscard]] HelpContentsItem* findPage(const QString& path);
    /// Prepares findPage(), which else does so at its first call. In any thread.
    void indexPages();

private:
    void adoptEntries();
    const HelpContentsSource& addSource(const OutlineEntry& entry);
    void adoptRows();
    void enterPages();

    std::shared_ptr<Source> m_source;
    ContentsOutline m_outline; ///< without its entries, which became records and rows
    HelpContentsRoot m_root;
    HelpContentsItem* m_firstPage = nullptr;
    std::deque<HelpContentsSource> m_sources;
    std::vector<HelpContentsItem> m_records;
    std::vector<HelpContentsListViewItem> m_rows;
    std::vector<HelpContentsListViewItem*> m_siblings; ///< children of each row, one behind the other
    std::span<HelpContentsListViewItem*> m_topRows;
    IndexEntries m_index;
    std::once_flag m_pagesEntered;
    std::optional<PageTable> m_pages;
};
