// SPDX-License-Identifier: MIT
#include "search/searchmodel.h"

#include <algorithm>
#include <utility>

void SearchModel::setHits(std::vector<SearchHit> hits)
{
    const bool isContinued =
        !m_hits.empty() && hits.size() >= m_hits.size() &&
        std::equal(m_hits.begin(), m_hits.end(), hits.begin(),
                   [](const SearchHit& a, const SearchHit& b) { return a.page == b.page; });
    if (!isContinued) {
        beginResetModel();
        m_hits = std::move(hits);
        endResetModel();
        return;
    }
    const int before = int(m_hits.size());
    if (int(hits.size()) > before) {
        beginInsertRows({}, before, int(hits.size()) - 1);
    }
    m_hits = std::move(hits);
    if (int(m_hits.size()) > before) {
        endInsertRows();
    }
    Q_EMIT dataChanged(index(0), index(before - 1));
}

QModelIndex SearchModel::indexOf(const QString& page) const
{
    const auto found = std::find_if(m_hits.begin(), m_hits.end(),
                                    [&](const SearchHit& candidate) { return candidate.page == page; });
    return found == m_hits.end() ? QModelIndex() : index(int(found - m_hits.begin()));
}

int SearchModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_hits.size());
}

QVariant SearchModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const auto& found = hit(index);
    switch (role) {
    case Qt::DisplayRole:
        return found.title;
    case Qt::ToolTipRole:
        // In tags, or the tool tip would guess whether the title is rich text.
        return QStringLiteral("<p><b>%1</b></p><p>%2</p>")
            .arg(found.title.toHtmlEscaped(), placeOf(found).toHtmlEscaped());
    case Qt::AccessibleTextRole:
        return QString(found.title + QStringLiteral(", ") + placeOf(found) + QStringLiteral(". ") +
                       found.snippet);
    default:
        return {};
    }
}

QString placeOf(const SearchHit& hit)
{
    return (QStringList(hit.helpSet) + hit.path).join(QStringLiteral(" › "));
}
