// SPDX-License-Identifier: MIT
#pragma once

#include "library/helpcontentsitem.h"
#include "library/positiontable.h"

#include <vector>

/// Finds the records of a help set by the absolute path of their page. The records must outlive it.
class PageTable {
public:
    /// Made for the records of one sequence, which are entered one by one.
    explicit PageTable(std::vector<HelpContentsItem>& records) : m_records(records), m_table(records.size())
    {
    }

    /// Of several records with one page the first that is entered is found.
    void insert(const HelpContentsItem& record);
    /// Null when there is none.
    [[nodiscard]] HelpContentsItem* find(const QString& path) const;

private:
    std::vector<HelpContentsItem>& m_records;
    PositionTable m_table;
};
