// SPDX-License-Identifier: MIT
#include "mainwindow/backgroundprogress.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QStatusBar>

#include <utility>

namespace {

constexpr int Delay = 200;    // ms; what takes less is not worth a word
constexpr int BarWidth = 100; // pixels
constexpr int Steps = 1000;   // of the bar

} // namespace

BackgroundProgress::BackgroundProgress(const QString& activity, QStatusBar& statusBar)
    : QObject(&statusBar), m_activity(activity), m_statusBar(statusBar)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(Delay);
    connect(&m_delay, &QTimer::timeout, this, &BackgroundProgress::show);
}

void BackgroundProgress::start()
{
    if (m_indicator == nullptr && !m_delay.isActive()) {
        m_done = 0;
        m_total = 0;
        m_delay.start();
    }
}

void BackgroundProgress::finish()
{
    m_delay.stop();
    m_bar = nullptr;
    delete std::exchange(m_indicator, nullptr);
}

void BackgroundProgress::setFraction(qint64 done, qint64 total)
{
    m_done = done;
    m_total = total;
    if (m_bar == nullptr) {
        return;
    }
    m_bar->setRange(0, total > 0 ? Steps : 0);
    m_bar->setTextVisible(total > 0);
    if (total > 0) {
        m_bar->setValue(int(done * Steps / total));
        m_indicator->setToolTip(
            tr("%1 of %2 pages").arg(QLocale().toString(done), QLocale().toString(total)));
    }
}

void BackgroundProgress::show()
{
    m_indicator = new QWidget(&m_statusBar);
    m_indicator->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    auto* label = new QLabel(tr("%1 (Esc stops)").arg(m_activity), m_indicator);
    m_bar = new QProgressBar(m_indicator);
    m_bar->setMaximumSize(BarWidth, label->sizeHint().height());
    m_bar->setAccessibleName(m_activity);
    auto* layout = new QHBoxLayout(m_indicator);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(m_bar);
    m_statusBar.addPermanentWidget(m_indicator);
    setFraction(m_done, m_total);
}
