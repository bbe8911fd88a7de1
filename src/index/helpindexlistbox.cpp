// SPDX-License-Identifier: MIT
#include "index/helpindexlistbox.h"

#include <QKeyEvent>
#include <QMouseEvent>

HelpIndexListBox::HelpIndexListBox(QWidget* parent) : QListView(parent)
{
    setUniformItemSizes(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setMouseTracking(true);
    setAccessibleName(tr("Keywords"));
}

void HelpIndexListBox::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && currentIndex().isValid()) {
        Q_EMIT returnPressed(currentIndex().row());
        return;
    }
    QListView::keyPressEvent(event);
}

/// A click beside all rows leaves the current one selected.
void HelpIndexListBox::mousePressEvent(QMouseEvent* event)
{
    if (indexAt(event->position().toPoint()).isValid()) {
        QListView::mousePressEvent(event);
    }
}

void HelpIndexListBox::mouseMoveEvent(QMouseEvent* event)
{
    QListView::mouseMoveEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid()) {
        Q_EMIT rowHovered(index.row());
    }
}
