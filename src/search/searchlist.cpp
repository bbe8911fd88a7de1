// SPDX-License-Identifier: MIT
#include "search/searchlist.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int HintMargin = 12; // pixels

bool isText(const QKeyEvent& event)
{
    const bool isPlain =
        (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
    return event.key() == Qt::Key_Backspace ||
           (isPlain && !event.text().isEmpty() && event.text().at(0).isPrint());
}

} // namespace

SearchList::SearchList(QWidget* parent) : QListView(parent)
{
    setAccessibleName(tr("Pages found"));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setResizeMode(QListView::Adjust); // rows are as high as their texts are long
    setMouseTracking(true);
}

void SearchList::setHint(const QString& hint)
{
    m_hint = hint;
    viewport()->update();
}

void SearchList::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && currentIndex().isValid()) {
        Q_EMIT returnPressed(currentIndex());
    } else if (event->key() == Qt::Key_Up && currentIndex().row() <= 0) {
        Q_EMIT leftUpwards();
    } else if (isText(*event)) {
        Q_EMIT typed(event);
    } else {
        QListView::keyPressEvent(event);
    }
}

/// A click beside all rows leaves the current one selected.
void SearchList::mousePressEvent(QMouseEvent* event)
{
    if (indexAt(event->position().toPoint()).isValid()) {
        QListView::mousePressEvent(event);
    }
}

void SearchList::mouseMoveEvent(QMouseEvent* event)
{
    QListView::mouseMoveEvent(event);
    if (const QModelIndex index = indexAt(event->position().toPoint()); index.isValid()) {
        Q_EMIT rowHovered(index);
    }
}

/// The base class would make the first row current without showing that; here the row is selected, too.
void SearchList::focusInEvent(QFocusEvent* event)
{
    if (!currentIndex().isValid() && event->reason() != Qt::MouseFocusReason) {
        setCurrentIndex(model()->index(0, 0));
    }
    QListView::focusInEvent(event);
}

void SearchList::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (model()->rowCount() > 0 || m_hint.isEmpty()) {
        return;
    }
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(HintMargin, HintMargin, -HintMargin, -HintMargin),
                     Qt::AlignTop | Qt::TextWordWrap, m_hint);
}
