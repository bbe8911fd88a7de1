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
    if (!index.isValid()) {
        return {};
    }
    const auto& row = m_index.rows()[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return row.text();
    case Qt::ToolTipRole:
        // In a tag, or the tool tip would guess whether the keyword is rich text.
        return QString(QStringLiteral("<span>") + row.indexItem->keyword.toString().toHtmlEscaped() +
                       QStringLiteral("</span>"));
    default:
        return {};
    }
}
