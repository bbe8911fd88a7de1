// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <QHash>

#include <optional>
#include <vector>

class KeywordIndex;

/// The rows of a keyword index as a list model, all of them or some; it follows the index's signals.
class HelpIndexModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// How many topics the row leads to.
    static constexpr int TopicsRole = Qt::UserRole;

    explicit HelpIndexModel(const KeywordIndex& index, QObject* parent = nullptr);

    /// Shows these rows of the index only, in ascending order; none for all of them.
    void setShown(std::optional<std::vector<int>> rows);
    /// The row of the index that a row of the model shows.
    [[nodiscard]] int indexRow(int row) const { return m_shown ? (*m_shown)[size_t(row)] : row; }
    /// The row of the model that shows a row of the index; -1 when none does.
    [[nodiscard]] int modelRow(int indexRow) const;
    [[nodiscard]] bool isWhole() const { return !m_shown.has_value(); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] int topicsOf(int group) const;

    const KeywordIndex& m_index;
    std::optional<std::vector<int>> m_shown;
    mutable QHash<int, int> m_topics; ///< by groups, as far as they have been asked for
};
