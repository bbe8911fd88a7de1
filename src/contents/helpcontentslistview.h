// SPDX-License-Identifier: MIT
#pragma once

#include <QTreeView>

/// Icons of the rows of the contents tree.
struct ContentsIcons {
    QIcon bookClose;
    QIcon bookOpen;
    QIcon bookItem;
};

struct HelpContentsListViewItem;

/// The contents tree. Rows with children show a closed or an open book, all others a page.
class HelpContentsListView : public QTreeView {
    Q_OBJECT

public:
    HelpContentsListView(const ContentsIcons& icons, QWidget* parent);

    /// Opens the books above a row and brings it into the middle; a view that is not shown does so when it
    /// is.
    void centre(const QModelIndex& index);
    /// Whether a key that is being dealt with moves the selection.
    [[nodiscard]] bool isMovedByKey() const { return m_isMovedByKey; }

Q_SIGNALS:
    /// The pointer moved over this row.
    void rowHovered(const HelpContentsListViewItem* row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool m_isMovedByKey = false;
    bool m_isToCentre = false; ///< the current row, when the view is shown
};
