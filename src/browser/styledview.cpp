// SPDX-License-Identifier: MIT
#include "browser/styledview.h"

#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int HintMargin = 32; // pixels

} // namespace

StyledView::StyledView(QWidget* parent) : QTextBrowser(parent), m_style{QStringLiteral("monospace")}
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
    m_chosen.family = true;
    applyChosenFont();
}

int StyledView::getFontSize() const
{
    return font().pointSize() == -1 ? font().pixelSize() : font().pointSize();
}

void StyledView::setFontSize(int size)
{
    m_fontSize = size;
    m_chosen.size = true;
    applyChosenFont();
}

/// What is not set of a widget's font is the desktop's. Code has no size of its own, so it follows.
void StyledView::applyChosenFont()
{
    const bool isInPixels = font().pointSize() == -1;
    QFont own;
    own.setResolveMask(0);
    if (m_chosen.family) {
        own.setFamily(m_fontFamily);
    }
    if (m_chosen.size && isInPixels) {
        own.setPixelSize(m_fontSize);
    } else if (m_chosen.size) {
        own.setPointSize(m_fontSize);
    }
    applyFont(own);
}

void StyledView::zoomBy(int step)
{
    setFontSize(std::max(1, getFontSize() + step));
}

void StyledView::resetZoom()
{
    m_chosen.size = false;
    applyChosenFont();
}

void StyledView::setFontFixedFamily(const QString& family)
{
    m_style.fixedFamily = family;
    m_chosen.fixedFamily = true;
    restyle();
}

void StyledView::resetChoices()
{
    m_chosen = {};
    m_style = PageStyle{QStringLiteral("monospace")};
    QPalette none;
    none.setResolveMask(0);
    setPalette(none);
    applyChosenFont();
    restyle();
}

QColor StyledView::getLinkColor() const
{
    return palette().color(QPalette::Active, QPalette::Link);
}

void StyledView::setLinkColor(const QColor& color)
{
    m_chosen.linkColor = m_style.hasOwnLinkColor = true;
    QPalette own;
    own.setResolveMask(0);
    for (const auto group : {QPalette::Disabled, QPalette::Active, QPalette::Inactive}) {
        own.setBrush(group, QPalette::Link, color);
    }
    setPalette(own);
    restyle();
}

void StyledView::setLinkUnderline(bool underline)
{
    m_style.linkUnderline = underline;
    m_chosen.linkUnderline = m_style.isUnderlineChosen = true;
    restyle();
}

/// Touchpads send a notch of the wheel in many small pieces.
void StyledView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::ControlModifier) {
        m_wheelAngle = 0;
        QTextBrowser::wheelEvent(event);
        return;
    }
    const int angle = event->angleDelta().y();
    m_wheelAngle = angle * m_wheelAngle < 0 ? angle : m_wheelAngle + angle;
    if (const int steps = m_wheelAngle / QWheelEvent::DefaultDeltasPerStep; steps != 0 && hasPage()) {
        m_wheelAngle %= QWheelEvent::DefaultDeltasPerStep;
        zoomBy(steps);
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
