// SPDX-License-Identifier: MIT
#include "browser/styledview.h"

#include <QApplication>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int HintMargin = 32; // pixels

} // namespace

StyledView::StyledView(QWidget* parent)
    : QTextBrowser(parent), m_style{QStringLiteral("monospace")}, m_fontFamily(font().family()),
      m_defaultFontSize(getFontSize())
{
}

void StyledView::setHint(const QString& hint)
{
    m_hint = hint;
    viewport()->update();
}

void StyledView::setFontFamily(const QString& family)
{
    m_fontFamily = family;
    QFont changed = font();
    changed.setFamily(family);
    applyFont(changed);
}

int StyledView::getFontSize() const
{
    return font().pointSize() == -1 ? font().pixelSize() : font().pointSize();
}

void StyledView::setFontSize(int size)
{
    // Code has no size of its own, so it follows without a reload.
    QFont changed = font();
    if (changed.pointSize() == -1) {
        changed.setPixelSize(size);
    } else {
        changed.setPointSize(size);
    }
    applyFont(changed);
}

void StyledView::zoomBy(int step)
{
    setFontSize(std::max(1, getFontSize() + step));
}

void StyledView::resetZoom()
{
    setFontSize(m_defaultFontSize);
}

void StyledView::setFontFixedFamily(const QString& family)
{
    m_style.fixedFamily = family;
    restyle();
}

QColor StyledView::getLinkColor() const
{
    return palette().color(QPalette::Active, QPalette::Link);
}

void StyledView::setLinkColor(const QColor& color)
{
    m_style.hasOwnLinkColor = color != QApplication::palette(this).color(QPalette::Active, QPalette::Link);
    QPalette changed = palette();
    for (const auto group : {QPalette::Disabled, QPalette::Active, QPalette::Inactive}) {
        changed.setBrush(group, QPalette::Link, color);
    }
    setPalette(changed);
    restyle();
}

void StyledView::setLinkUnderline(bool underline)
{
    m_style.linkUnderline = underline;
    restyle();
}

void StyledView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::ControlModifier) {
        QTextBrowser::wheelEvent(event);
    } else if (hasPage() && event->angleDelta().y() != 0) {
        zoomBy(event->angleDelta().y() > 0 ? 1 : -1);
    }
}

void StyledView::paintEvent(QPaintEvent* event)
{
    QTextBrowser::paintEvent(event);
    if (hasPage() || m_hint.isEmpty()) {
        return;
    }
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(HintMargin, HintMargin, -HintMargin, -HintMargin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}
