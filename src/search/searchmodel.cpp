// SPDX-License-Identifier: MIT
#include "search/searchmodel.h"

#include <QLocale>

#include <algorithm>
#include <utility>

void SearchModel::setHits(std::vector<SearchHit> hits)
{
    const bool isContinued =
        !m_hits.empty() && hits.size() >= m_hits.size() &&
        std::equal(m_hits.begin(), m_hits.end(), hits.begin(),
                   [](const SearchHit& a, const SearchHit& b) { return a.file == b.file; });
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

QModelIndex SearchModel::indexOf(const QString& file) const
{
    const auto found = std::find_if(m_hits.begin(), m_hits.end(),
                                    [&](const SearchHit& candidate) { return candidate.file == file; });
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
            .arg(headlineOf(found).toHtmlEscaped(), placeOf(found).toHtmlEscaped());
    case Qt::AccessibleTextRole:
        return QString(headlineOf(found) + QStringLiteral(", ") + placeOf(found) + QStringLiteral(". ") +
                       found.snippet);
    default:
        return {};
    }
}

QString headlineOf(const SearchHit& hit)
{
    return (QStringList(hit.title) + hit.section).join(QStringLiteral(" › "));
}

QString placeOf(const SearchHit& hit)
{
    QString place = (QStringList(hit.helpSet) + hit.path).join(QStringLiteral(" › "));
    if (hit.copies.isEmpty()) {
        return place;
    }
    return hit.copies.size() == 1 ? SearchModel::tr("%1 (and one page that says the same)").arg(place)
                                  : SearchModel::tr("%1 (and %2 pages that say the same)")
                                        .arg(place, QLocale().toString(hit.copies.size()));
}
