// SPDX-License-Identifier: MIT
#pragma once

#include "formats/problem.h"
#include "library/helpcontentsitem.h"
#include "library/helpcontentslistviewitem.h"
#include "library/helpindexitem.h"

#include <QHash>

#include <vector>

struct ContentsOutline;

/// One loaded contents file with all that came from it. Owns its records, rows and keyword entries, which
/// keep their addresses for as long as the set lives.
class HelpSet {
public:
    /// Adopts what was read; the index files that the outline names are read here.
    HelpSet(const QString& fileName, const ContentsOutline& outline);
    Q_DISABLE_COPY_MOVE(HelpSet)

    [[nodiscard]] HelpContentsItem& root() { return m_root; }
    [[nodiscard]] const HelpContentsItem& root() const { return m_root; }
    /// Record of the first entry that is no including line, in reading order; null when there is none.
    [[nodiscard]] HelpContentsItem* firstPage() const { return m_firstPage; }
    /// Record of the first entry in reading order; null when there is none.
    [[nodiscard]] HelpContentsItem* firstRecord() { return m_records.empty() ? nullptr : &m_records.front(); }
    [[nodiscard]] const std::vector<HelpContentsItem>& records() const { return m_records; }
    [[nodiscard]] const std::vector<HelpContentsListViewItem*>& topRows() const { return m_topRows; }
    /// In load order.
    [[nodiscard]] std::vector<HelpIndexItem>& indexItems() { return m_indexItems; }
    [[nodiscard]] const std::vector<HelpIndexItem>& indexItems() const { return m_indexItems; }
    [[nodiscard]] const std::vector<Problem>& problems() const { return m_problems; }

    /// Record of the row that shows exactly this page (absolute path); rows below a row come before it.
    [[nodiscard]] HelpContentsItem* findPage(const QString& path) const { return m_pages.value(path); }

private:
    void adoptEntries(const ContentsOutline& outline);
    void adoptRows(const ContentsOutline& outline);
    void adoptIndexFiles(const ContentsOutline& outline);
    void indexPages();

    HelpContentsItem m_root;
    HelpContentsItem* m_firstPage = nullptr;
    std::vector<HelpContentsItem> m_records;
    std::vector<HelpContentsListViewItem> m_rows;
    std::vector<HelpContentsListViewItem*> m_topRows;
    std::vector<HelpIndexItem> m_indexItems;
    std::vector<QString> m_files;
    std::vector<QString> m_indexFiles;
    std::vector<Problem> m_problems;
    QHash<QString, HelpContentsItem*> m_pages;
};
