// SPDX-License-Identifier: MIT
#include "contents/helpcontentsmodel.h"

#include "library/helplibrary.h"

HelpContentsModel::HelpContentsModel(HelpLibrary& library, QObject* parent)
    : QAbstractItemModel(parent), m_library(library)
{
    connect(&library, &HelpLibrary::topRowsAboutToBeInserted, this,
            [this](int first, int last) { beginInsertRows({}, first, last); });
    connect(&library, &HelpLibrary::topRowsInserted, this, [this] { endInsertRows(); });
    connect(&library, &HelpLibrary::topRowsAboutToBeRemoved, this,
            [this](int first, int last) { beginRemoveRows({}, first, last); });
    connect(&library, &HelpLibrary::topRowsRemoved, this, [this] { endRemoveRows(); });
}

QModelIndex HelpContentsModel::indexOf(const HelpContentsListViewItem* row) const
{
    return row == nullptr ? QModelIndex() : createIndex(row->position, 0, row);
}

HelpContentsListViewItem* HelpContentsModel::rowAt(const QModelIndex& index)
{
    return static_cast<HelpContentsListViewItem*>(index.internalPointer());
}

std::span<HelpContentsListViewItem* const> HelpContentsModel::children(const QModelIndex& parent) const
{
    return parent.isValid() ? rowAt(parent)->children : std::span(m_library.topRows());
}

QModelIndex HelpContentsModel::index(int row, int column, const QModelIndex& parent) const
{
    const auto rows = children(parent);
    if (column != 0 || row < 0 || size_t(row) >= rows.size()) {
        return {};
    }
    return createIndex(row, 0, rows[size_t(row)]);
}

QModelIndex HelpContentsModel::parent(const QModelIndex& index) const
{
    return index.isValid() ? indexOf(rowAt(index)->parent) : QModelIndex();
}

int HelpContentsModel::rowCount(const QModelIndex& parent) const
{
    return int(children(parent).size());
}

int HelpContentsModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

QVariant HelpContentsModel::data(const QModelIndex& index, int role) const
{
    return index.isValid() && role == Qt::DisplayRole ? QVariant(rowAt(index)->text.toString()) : QVariant();
}
