// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>

/// The list of pages found. Return opens the current row; Up in the first row and typing lead to the field.
class SearchList : public QListView {
    Q_OBJECT

public:
    explicit SearchList(QWidget* parent);

    /// The text painted while the list is empty.
    void setHint(const QString& hint);

Q_SIGNALS:
    void returnPressed(const QModelIndex& index);
    /// Up was pressed in the first row.
    void leftUpwards();
    /// A key was pressed that belongs to a field of text.
    void typed(QKeyEvent* event);
    void rowHovered(const QModelIndex& index);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_hint;
};
