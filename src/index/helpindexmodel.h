// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>

class KeywordIndex;

/// The rows of a keyword index as a list model; it follows the index's signals.
class HelpIndexModel : public QAbstractListModel {
    Q_OBJECT

public:
    explicit HelpIndexModel(const KeywordIndex& index, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    const KeywordIndex& m_index;
};
