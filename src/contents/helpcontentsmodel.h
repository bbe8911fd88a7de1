// SPDX-License-Identifier: MIT
#pragma once

#include "library/helpcontentslistviewitem.h"

#include <QAbstractItemModel>

#include <memory>
#include <span>
#include <vector>

class HelpLibrary;
struct HelpContentsRoot;

/// The contents tree of a library as an item model; it follows the library's signals. When there are several
/// help sets, each has a row of its own, above the top-level rows that the library gives it.
class HelpContentsModel : public QAbstractItemModel {
    Q_OBJECT

public:
    explicit HelpContentsModel(HelpLibrary& library, QObject* parent = nullptr);

    /// Whether several help sets have rows of their own; they do by default.
    void setGroupsWanted(bool isWanted);

    [[nodiscard]] QModelIndex indexOf(const HelpContentsListViewItem* row) const;
    /// Null for the invalid index. The row of a help set leads to the first page of it.
    [[nodiscard]] static HelpContentsListViewItem* rowAt(const QModelIndex& index);
    /// Whether help sets have rows of their own now.
    [[nodiscard]] bool isGrouped() const { return m_isGrouped; }
    [[nodiscard]] bool isHelpSet(const QModelIndex& index) const { return placeOfSet(rowAt(index)) >= 0; }
    /// Whether a row says all that a row of its help set would, while there is none.
    [[nodiscard]] bool isTitleRow(const QModelIndex& index) const;
    /// The library's row that a row is, or stands for; null for the invalid index.
    [[nodiscard]] const HelpContentsListViewItem* libraryRowAt(const QModelIndex& index) const;
    /// The help set that a row belongs to; null for the invalid index.
    [[nodiscard]] static HelpContentsRoot* rootOf(const QModelIndex& index);
    /// The row of a help set; invalid when it has none.
    [[nodiscard]] QModelIndex indexOf(const HelpContentsRoot* root) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    using QAbstractItemModel::parent;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    /// The row of a help set. Its children are rows of the library, which know nothing of it.
    struct SetRow {
        HelpContentsListViewItem row;
        QString title;
        const HelpContentsRoot* root = nullptr;
        HelpContentsListViewItem* shown =
            nullptr; ///< this row, or the only one below it if that says the same
    };

    void connectLibrary();
    void rowsAboutToCome(int first, int last);
    void rowsHaveCome();
    void rowsAboutToGo(int first, int last);
    void rowsHaveGone();
    void setGrouped(bool isGrouped);
    [[nodiscard]] std::unique_ptr<SetRow> makeSetRow(const HelpContentsRoot& root) const;
    void numberSets();
    [[nodiscard]] bool isOwnRow(const HelpContentsListViewItem* row) const;
    /// Among the rows of help sets; -1 for any other row.
    [[nodiscard]] int placeOfSet(const HelpContentsListViewItem* row) const;
    [[nodiscard]] const SetRow* setAbove(const HelpContentsListViewItem& row) const;
    [[nodiscard]] std::span<HelpContentsListViewItem* const> children(const QModelIndex& parent) const;

    HelpLibrary& m_library;
    std::vector<std::unique_ptr<SetRow>> m_sets; ///< those that have rows, in their order
    std::vector<HelpContentsListViewItem*> m_setRows;
    int m_firstComing = 0;
    bool m_groupsWanted = true;
    bool m_isGrouped = false;
};
