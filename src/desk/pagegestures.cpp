// SPDX-License-Identifier: MIT
#include "desk/pagegestures.h"

#include "browser/helpbrowser.h"

#include <QGestureEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>

namespace {

constexpr qreal StepFactor = 1.1; // of the font size

} // namespace

PageGestures::PageGestures(HelpBrowser& browser) : QObject(&browser), m_browser(browser)
{
    browser.viewport()->grabGesture(Qt::PinchGesture);
    browser.viewport()->installEventFilter(this);
}

bool PageGestures::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        const auto button = static_cast<QMouseEvent*>(event)->button();
        if (button == Qt::BackButton || button == Qt::ForwardButton) {
            button == Qt::BackButton ? m_browser.backward() : m_browser.forward();
            return true;
        }
    } else if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            zoomBy(1 + gesture->value());
            return true;
        }
    } else if (event->type() == QEvent::Gesture) {
        const auto* pinch =
            static_cast<QPinchGesture*>(static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture));
        if (pinch != nullptr) {
            zoomBy(pinch->scaleFactor());
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void PageGestures::zoomBy(qreal factor)
{
    m_factor *= factor;
    while (m_browser.hasPage() && m_factor > StepFactor) {
        m_factor /= StepFactor;
        m_browser.zoomIn();
    }
    while (m_browser.hasPage() && m_factor > 0 && m_factor < 1 / StepFactor) {
        m_factor *= StepFactor;
        m_browser.zoomOut();
    }
}
