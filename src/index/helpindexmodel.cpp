// SPDX-License-Identifier: MIT
#include "index/helpindexmodel.h"

#include "library/keywordindex.h"
#include "library/tooltip.h"

#include <algorithm>
#include <utility>

HelpIndexModel::HelpIndexModel(const KeywordIndex& index, QObject* parent)
    : QAbstractListModel(parent), m_index(index)
{
    connect(&index, &KeywordIndex::aboutToBeRebuilt, this, [this] {
        beginResetModel();
        m_shown.reset();
        m_topics.clear();
    });
    connect(&index, &KeywordIndex::rebuilt, this, [this] { endResetModel(); });
}

void HelpIndexModel::setShown(std::optional<std::vector<int>> rows)
{
    if (!rows && !m_shown) {
        return;
    }
    beginResetModel();
    m_shown = std::move(rows);
    endResetModel();
}

int HelpIndexModel::modelRow(int indexRow) const
{
    if (!m_shown) {
        return indexRow;
    }
    const auto found = std::lower_bound(m_shown->begin(), m_shown->end(), indexRow);
    return found == m_shown->end() || *found != indexRow ? -1 : int(found - m_shown->begin());
}

int HelpIndexModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid()) {
        return 0;
    }
    return m_shown ? int(m_shown->size()) : int(m_index.rows().size());
}

QVariant HelpIndexModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const auto& row = m_index.rows()[size_t(indexRow(index.row()))];
    switch (role) {
    case Qt::DisplayRole:
        return row.text();
    case Qt::ToolTipRole:
        return plainToolTip(row.indexItem->keyword.toString());
    case TopicsRole:
        return topicsOf(row.indexItem->group);
    default:
        return {};
    }
}

/// Of a group with many members they take long to count, and a row is painted often.
int HelpIndexModel::topicsOf(int group) const
{
    if (group < 0) {
        return 1;
    }
    auto known = m_topics.find(group);
    if (known == m_topics.end()) {
        known = m_topics.insert(group, m_index.getIndexByGroupCount(group));
    }
    return *known;
}
