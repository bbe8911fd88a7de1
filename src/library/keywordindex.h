// SPDX-License-Identifier: MIT
#pragma once

#include "library/helpindexitem.h"

#include <QObject>

#include <vector>

/// The keyword rows of all loaded help sets: entries sorted, like entries merged into one row, sub-keywords
/// under their keyword. Points at entries that the help sets own.
class KeywordIndex : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Rebuilds rows and groups from all entries, given in load order.
    void buildIndex(const std::vector<HelpIndexItem*>& items);

    [[nodiscard]] const std::vector<HelpIndexListBoxItem>& rows() const { return m_rows; }
    /// The distinct entries of a group in load order: no two have the same title (ignoring case) and the same
    /// link.
    [[nodiscard]] std::vector<HelpIndexItem*> getIndexListByGroup(int group) const;
    [[nodiscard]] int getIndexByGroupCount(int group) const;
    /// The distinct entries that an entry's row stands for: those of its group, else the entry alone.
    [[nodiscard]] std::vector<HelpIndexItem*> topics(HelpIndexItem* item) const;
    /// The rows of the sub-keywords that stand under the row of `item`.
    [[nodiscard]] std::vector<const HelpIndexListBoxItem*> subKeywords(const HelpIndexItem& item) const;
    /// Position of the row to go to when `typed` has been typed while `current` (-1: none) is the current
    /// row.
    [[nodiscard]] int lookFor(const QString& typed, int current) const;

Q_SIGNALS:
    /// All rows are about to go.
    void aboutToBeRebuilt();
    void rebuilt();

private:
    [[nodiscard]] std::vector<HelpIndexItem*> group(const std::vector<HelpIndexItem*>& sorted);
    void makeRows(const std::vector<HelpIndexItem*>& representatives);

    std::vector<HelpIndexListBoxItem> m_rows;
    std::vector<std::vector<HelpIndexItem*>> m_groups; ///< members in load order
    std::vector<QString> m_lookUpTexts;                ///< row texts, trimmed and in lower case
};
