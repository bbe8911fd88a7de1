// SPDX-License-Identifier: MIT
#pragma once

#include "library/keywordrows.h"

#include <QObject>

#include <vector>

struct HelpContentsRoot;

/// The keyword rows of all loaded help sets: entries sorted, like entries merged into one row, sub-keywords
/// under their keyword. Points at entries that the help sets own.
class KeywordIndex : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Takes over rows made of these entries, which are all that there are; without rows none of them has
    /// one.
    void setRows(KeywordRows rows, const std::vector<std::span<HelpIndexItem>>& items);

    [[nodiscard]] const std::vector<HelpIndexListBoxItem>& rows() const { return m_rows.rows; }
    /// The distinct entries of a group in load order: no two have the same title (ignoring case) and the same
    /// link.
    [[nodiscard]] std::vector<HelpIndexItem*> getIndexListByGroup(int group) const;
    [[nodiscard]] int getIndexByGroupCount(int group) const;
    /// The distinct entries that an entry's row stands for: those of its group, else the entry alone.
    [[nodiscard]] std::vector<HelpIndexItem*> topics(HelpIndexItem* item) const;
    /// The rows of the sub-keywords that stand under the row of `item`.
    [[nodiscard]] std::vector<const HelpIndexListBoxItem*> subKeywords(const HelpIndexItem& item) const;
    /// Position of the row to go to when `typed` has been typed while `current` (-1: none) is the current
    /// row; `current` when no row begins so. Accents do not matter. Of several rows the one comes first that
    /// is the whole word, then the one in the same letter case, then the one of the help set `inUse`. When
    /// `only` is not null, the rows of other help sets are passed over.
    [[nodiscard]] int lookFor(const QString& typed, int current, const HelpContentsRoot* inUse = nullptr,
                              const HelpContentsRoot* only = nullptr) const;
    /// Whether a row's keyword begins so, as lookFor() takes it.
    [[nodiscard]] bool beginsWith(int row, const QString& typed) const;
    /// The rows whose keyword contains this, those of one help set if it is not null, in their order; the
    /// first thousand, as nobody goes through more. The empty text is in all of them.
    [[nodiscard]] std::vector<int> rowsContaining(const QString& typed, const HelpContentsRoot* root) const;
    /// Whether a row leads to something in a help set.
    [[nodiscard]] bool isOf(int row, const HelpContentsRoot* root) const;

Q_SIGNALS:
    /// All rows are about to go.
    void aboutToBeRebuilt();
    void rebuilt();

private:
    [[nodiscard]] unsigned rank(size_t row, const QString& typed, const QString& text,
                                const HelpContentsRoot* inUse) const;

    KeywordRows m_rows;
};
