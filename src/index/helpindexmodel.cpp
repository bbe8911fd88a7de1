// SPDX-License-Identifier: MIT
#include "index/helpindexmodel.h"

#include "library/keywordindex.h"

HelpIndexModel::HelpIndexModel(const KeywordIndex& index, QObject* parent)
    : QAbstractListModel(parent), m_index(index)
{
    connect(&index, &KeywordIndex::aboutToBeRebuilt, this, [this] { beginResetModel(); });
    connect(&index, &KeywordIndex::rebuilt, this, [this] { endResetModel(); });
}

int HelpIndexModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_index.rows().size());
}

QVariant HelpIndexModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole) {
        return {};
    }
    return m_index.rows()[size_t(index.row())].text();
}
