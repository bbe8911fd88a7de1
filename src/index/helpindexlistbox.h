// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>

/// The keyword list. Return opens the current row, a double click the row under the pointer.
class HelpIndexListBox : public QListView {
    Q_OBJECT

public:
    explicit HelpIndexListBox(QWidget* parent);

Q_SIGNALS:
    void returnPressed(int row);
    /// The pointer moved over this row.
    void rowHovered(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
};
