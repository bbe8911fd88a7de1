// SPDX-License-Identifier: MIT
#pragma once

#include "library/helpcontentsitem.h"
#include "library/positiontable.h"

#include <QHash>

#include <vector>

/// Of a text that is given in pieces (FNV-1a). Another one in each run of the program, so that nobody can
/// write a help set whose names all have the same.
class TextHash {
public:
    TextHash() : m_value(0xCBF29CE484222325U ^ quint64(QHashSeed::globalSeed())) {}

    TextHash& add(QStringView text)
    {
        for (const QChar c : text) {
            m_value = (m_value ^ c.unicode()) * 0x100000001B3U;
        }
        return *this;
    }
    [[nodiscard]] quint32 value() const { return quint32(m_value ^ (m_value >> 32U)); }

private:
    quint64 m_value;
};

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
    [[nodiscard]] quint32 hashOf(const HelpContentsItem& record);

    std::vector<HelpContentsItem>& m_records;
    PositionTable m_table;
    const HelpContentsSource* m_source = nullptr; ///< of the last record; neighbours mostly share one
    TextHash m_directoryHash;                     ///< of its directory
};
