// SPDX-License-Identifier: MIT
#include "index/helpindexlistbox.h"

#include "index/helpindexmodel.h"
#include "library/sharedbeginning.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

/// Writes behind the text of a row how many topics it leads to, when these are several. A text that is too
/// long is cut, but first what neighbouring keywords begin with as well.
class TopicsDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const int topics = index.data(HelpIndexModel::TopicsRole).toInt();
        const QString count = topics < 2 ? QString() : QString::number(topics);
        const int countWidth =
            count.isEmpty() ? 0 : option.fontMetrics.horizontalAdvance(count) + 2 * CountMargin;
        QStyleOptionViewItem shown = option;
        initStyleOption(&shown, index);
        fit(shown, index, countWidth);
        option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &shown, painter, option.widget);
        if (countWidth > 0) {
            drawCount(*painter, option, count, countWidth);
        }
    }

private:
    static constexpr int CountMargin = 4; ///< pixels

    static void fit(QStyleOptionViewItem& option, const QModelIndex& index, int countWidth)
    {
        const auto* style = option.widget->style();
        const int gap = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
        const int room = style->subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget).width() -
                         2 * gap - countWidth;
        const auto fits = [&](const QString& text) {
            return option.fontMetrics.horizontalAdvance(text) <= room;
        };
        if (!fits(option.text)) {
            const QString text =
                withoutSharedBeginning(option.text, index.siblingAtRow(index.row() - 1).data().toString(),
                                       index.siblingAtRow(index.row() + 1).data().toString(), fits);
            option.text = option.fontMetrics.elidedText(text, Qt::ElideRight, room);
        }
    }

    static void drawCount(QPainter& painter, const QStyleOptionViewItem& option, const QString& count,
                          int width)
    {
        constexpr float opacity = 0.65F; // of the text's colour
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const auto group =
            option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
        QColor color = option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
        color.setAlphaF(opacity);
        QRect rect = option.rect;
        rect.setLeft(rect.right() - width);
        painter.save();
        painter.setPen(color);
        painter.drawText(rect, Qt::AlignCenter, count);
        painter.restore();
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
