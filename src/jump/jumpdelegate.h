// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

/// Paints the rows of a JumpModel: the text with the matching letters in bold, then in a quieter colour where
/// it stands.
class JumpDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
