// SPDX-License-Identifier: MIT
#include "index/helpindexlistbox.h"

#include "index/helpindexmodel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

/// Writes behind the text of a row how many topics it leads to, when these are several.
class TopicsDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const int topics = index.data(HelpIndexModel::TopicsRole).toInt();
        if (topics < 2) {
            return;
        }
        constexpr int gap = 4;           // pixels
        constexpr float opacity = 0.65F; // of the text's colour
        const QString text = QString::number(topics);
        QRect rect = option.rect;
        rect.setLeft(rect.right() - option.fontMetrics.horizontalAdvance(text) - 2 * gap);
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const auto group =
            option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
        painter->save();
        painter->fillRect(rect,
                          option.palette.color(group, isSelected ? QPalette::Highlight : QPalette::Base));
        QColor color = option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
        color.setAlphaF(opacity);
        painter->setPen(color);
        painter->drawText(rect, Qt::AlignCenter, text);
        painter->restore();
    }
};

} // namespace

HelpIndexListBox::HelpIndexListBox(QWidget* parent) : QListView(parent)
{
    setUniformItemSizes(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setMouseTracking(true);
    setItemDelegate(new TopicsDelegate(this));
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
