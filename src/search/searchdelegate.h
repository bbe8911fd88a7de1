// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

/// Draws a page that was found: its title, its place in the contents, and some lines of its text with the
/// words in bold. All of it is plain text; what is too long is elided. The model is a SearchModel.
class SearchDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
