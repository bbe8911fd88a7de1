// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchanswer.h"

#include <QAbstractListModel>

/// The pages that a search found, best first.
class SearchModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// Shows these pages. Rows stay what they are when the same pages come again, or the same and more.
    void setHits(std::vector<SearchHit> hits);
    [[nodiscard]] const SearchHit& hit(const QModelIndex& index) const { return m_hits[size_t(index.row())]; }
    /// The row of the page of this file; invalid when it is not among those found.
    [[nodiscard]] QModelIndex indexOf(const QString& file) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<SearchHit> m_hits;
};

/// What the page is called, and the headings that the piece of text stands under.
[[nodiscard]] QString headlineOf(const SearchHit& hit);

/// Where the contents have the page: help set and books; and how many other pages say the same.
[[nodiscard]] QString placeOf(const SearchHit& hit);
