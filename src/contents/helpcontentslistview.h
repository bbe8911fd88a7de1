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

Q_SIGNALS:
    /// The pointer moved over this row.
    void rowHovered(const HelpContentsListViewItem* row);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};
