// SPDX-License-Identifier: MIT
#include "desk/arrivalmark.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

#include <algorithm>

namespace {

constexpr int MarkTime = 1000;      // ms
constexpr int BarWidth = 4;         // pixels
constexpr int BarGap = 6;           // pixels between bar and text
constexpr int HighestMark = 8;      // lines
constexpr float GroundAlpha = 0.2F; // of the highlight colour

} // namespace

ArrivalMark::ArrivalMark(QTextEdit& view) : QWidget(view.viewport()), m_view(view)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    m_time.setSingleShot(true);
    m_time.setInterval(MarkTime);
    connect(&m_time, &QTimer::timeout, this, &QWidget::hide);
    connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, &ArrivalMark::follow);
    connect(view.document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &ArrivalMark::follow);
    // Positions hold for one text only.
    connect(&view, &QTextEdit::textChanged, this, &QWidget::hide);
}

void ArrivalMark::mark(int position)
{
    m_position = position;
    m_time.start();
    show();
    raise();
    follow();
}

void ArrivalMark::follow()
{
    if (isHidden()) {
        return;
    }
    QTextCursor cursor(m_view.document());
    cursor.setPosition(std::clamp(m_position, 0, std::max(0, m_view.document()->characterCount() - 1)));
    const QRect line = m_view.cursorRect(cursor);
    const QRectF block = m_view.document()->documentLayout()->blockBoundingRect(cursor.block());
    const int left =
        std::max(0, int(block.left()) - m_view.horizontalScrollBar()->value() - BarWidth - BarGap);
    const int height = std::clamp(int(block.bottom()) - m_view.verticalScrollBar()->value() - line.top(),
                                  line.height(), HighestMark * line.height());
    const int right = std::min(m_view.viewport()->width(), left + int(block.width()) + BarWidth + 2 * BarGap);
    setGeometry(left, line.top(), std::max(line.height(), right - left), height);
}

void ArrivalMark::paintEvent(QPaintEvent* /*event*/)
{
    QColor color = palette().color(QPalette::Active, QPalette::Highlight);
    QPainter painter(this);
    painter.fillRect(0, 0, BarWidth, height(), color);
    color.setAlphaF(GroundAlpha);
    painter.fillRect(rect(), color);
}
