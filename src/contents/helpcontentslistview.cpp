// SPDX-License-Identifier: MIT
#include "contents/helpcontentslistview.h"

#include "contents/helpcontentsmodel.h"
#include "library/sharedbeginning.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <utility>

namespace {

/// Gives each row the icon of its kind; the model knows nothing of icons. What is beyond the right edge of a
/// tree that is not scrolled sideways is cut, but first what neighbouring titles begin with as well.
class ContentsDelegate : public QStyledItemDelegate {
public:
    ContentsDelegate(const ContentsIcons& icons, QTreeView* view)
        : QStyledItemDelegate(view), m_icons(icons), m_view(view)
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem shown = option;
        initStyleOption(&shown, index);
        fit(shown, index);
        m_view->style()->drawControl(QStyle::CE_ItemViewItem, &shown, painter, m_view);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon = icon(index);
        option->decorationSize = m_view->iconSize();
    }

private:
    void fit(QStyleOptionViewItem& option, const QModelIndex& index) const
    {
        const QRect place = m_view->style()->subElementRect(QStyle::SE_ItemViewItemText, &option, m_view);
        const int gap = m_view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, m_view) + 1;
        const int room = m_view->viewport()->width() - place.left() - 2 * gap;
        const bool isScrolled = m_view->horizontalScrollBar()->value() > 0;
        const auto fits = [&](const QString& text) {
            return option.fontMetrics.horizontalAdvance(text) <= room;
        };
        if (isScrolled || fits(option.text)) {
            return;
        }
        const QString text =
            withoutSharedBeginning(option.text, index.siblingAtRow(index.row() - 1).data().toString(),
                                   index.siblingAtRow(index.row() + 1).data().toString(), fits);
        option.text = option.fontMetrics.elidedText(text, Qt::ElideRight, room);
    }

    [[nodiscard]] const QIcon& icon(const QModelIndex& index) const
    {
        if (!index.model()->hasChildren(index)) {
            return m_icons.bookItem;
        }
        return m_view->isExpanded(index) ? m_icons.bookOpen : m_icons.bookClose;
    }

    ContentsIcons m_icons;
    QTreeView* m_view;
};

constexpr QSize IconSize(16, 16);
constexpr int MeasuredRows = 100; // about the place in sight; measuring a thousand costs a start a tenth

} // namespace

HelpContentsListView::HelpContentsListView(const ContentsIcons& icons, QWidget* parent) : QTreeView(parent)
{
    setIconSize(IconSize);
    setItemDelegate(new ContentsDelegate(icons, this));
    setHeaderHidden(true);
    setRootIsDecorated(true);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setMouseTracking(true);
    setAccessibleName(tr("Contents"));
    // Titles are cut or whole, depending on it.
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { viewport()->update(); });
    // Long titles scroll sideways instead of being cut.
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setResizeContentsPrecision(MeasuredRows);
}

void HelpContentsListView::centre(const QModelIndex& index)
{
    m_isToCentre = !isVisible();
    // The toolkit would bring the middle of a long title into view, too.
    const int left = horizontalScrollBar()->value();
    scrollTo(index, QAbstractItemView::PositionAtCenter);
    horizontalScrollBar()->setValue(left);
}

void HelpContentsListView::showEvent(QShowEvent* event)
{
    QTreeView::showEvent(event);
    if (std::exchange(m_isToCentre, false)) {
        centre(currentIndex());
    }
}

void HelpContentsListView::keyPressEvent(QKeyEvent* event)
{
    const QScopedValueRollback moving(m_isMovedByKey, true);
    QTreeView::keyPressEvent(event);
}

/// A click beside all rows leaves the current one selected; one that is to open a menu does, too.
void HelpContentsListView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::RightButton && indexAt(event->position().toPoint()).isValid()) {
        QTreeView::mousePressEvent(event);
    }
}

void HelpContentsListView::mouseMoveEvent(QMouseEvent* event)
{
    QTreeView::mouseMoveEvent(event);
    if (const auto* row = HelpContentsModel::rowAt(indexAt(event->position().toPoint()))) {
        Q_EMIT rowHovered(row);
    }
}

void HelpContentsListView::resizeEvent(QResizeEvent* event)
{
    header()->setMinimumSectionSize(viewport()->width());
    QTreeView::resizeEvent(event);
}
