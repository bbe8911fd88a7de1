// SPDX-License-Identifier: MIT
#pragma once

#include "library/helpindexitem.h"

#include <QString>

#include <deque>
#include <span>
#include <stop_token>
#include <vector>

/// Texts in lower case. Those that are so already are viewed where they stand, the others are kept here.
class LowerCaseTexts {
public:
    [[nodiscard]] QStringView lower(QStringView text);

private:
    std::deque<QString> m_texts; ///< many texts in each
};

/// The rows that keyword entries make, with their groups. A value that any thread can make while others read
/// the entries; the entries must outlive it.
struct KeywordRows {
    std::vector<HelpIndexListBoxItem> rows;
    std::vector<quint64> lookUpMarks;    ///< lookUpMark() of each row's look-up text
    std::vector<quint32> positions;      ///< of each row's entry in load order
    std::vector<QStringView> lowerTexts; ///< keywords in lower case, in load order
    std::vector<HelpIndexItem*> members; ///< of the groups, one group behind the other, each in load order
    std::vector<quint32> groupStarts;    ///< in `members`; with the end of the last group
    LowerCaseTexts texts;

    /// The row's keyword in lower case.
    [[nodiscard]] QStringView lookUpText(size_t row) const { return lowerTexts[positions[row]]; }
    [[nodiscard]] int groupCount() const { return groupStarts.empty() ? 0 : int(groupStarts.size()) - 1; }
    [[nodiscard]] std::span<HelpIndexItem* const> group(int number) const;
};

/// The first eight code units, a byte for each, so that texts with different marks begin differently.
[[nodiscard]] quint64 lookUpMark(QStringView text);

/// The entries of all help sets in load order; sub-keywords stand in the span of their keyword. Once a stop
/// has been asked for, the rows are of no use.
[[nodiscard]] KeywordRows makeKeywordRows(const std::vector<std::span<HelpIndexItem>>& items,
                                          const std::stop_token& stop = {});
