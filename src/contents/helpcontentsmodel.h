// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>

#include <span>

class HelpLibrary;
struct HelpContentsListViewItem;

/// The contents tree of a library as an item model; it follows the library's signals.
class HelpContentsModel : public QAbstractItemModel {
    Q_OBJECT

public:
    explicit HelpContentsModel(HelpLibrary& library, QObject* parent = nullptr);

    [[nodiscard]] QModelIndex indexOf(const HelpContentsListViewItem* row) const;
    /// Null for the invalid index.
    [[nodiscard]] static HelpContentsListViewItem* rowAt(const QModelIndex& index);

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    using QAbstractItemModel::parent;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] std::span<HelpContentsListViewItem* const> children(const QModelIndex& parent) const;

    HelpLibrary& m_library;
};
