// SPDX-License-Identifier: MIT
#include "mainwindow/loadprogress.h"

#include "library/helplibrary.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QShortcut>
#include <QStatusBar>

#include <utility>

namespace {

constexpr int Delay = 200;    // ms; what takes less is not worth a word
constexpr int BarWidth = 100; // pixels

QWidget* makeIndicator(QStatusBar& statusBar)
{
    auto* indicator = new QWidget(&statusBar);
    auto* label = new QLabel(LoadProgress::tr("Loading (Esc stops)"), indicator);
    auto* bar = new QProgressBar(indicator);
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    bar->setMaximumSize(BarWidth, label->sizeHint().height());
    bar->setAccessibleName(LoadProgress::tr("Loading"));
    auto* layout = new QHBoxLayout(indicator);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(bar);
    return indicator;
}

} // namespace

LoadProgress::LoadProgress(const HelpLibrary& library, QStatusBar& statusBar)
    : QObject(&statusBar), m_escape(new QShortcut(Qt::Key_Escape, &statusBar))
{
    m_escape->setContext(Qt::WindowShortcut);
    m_escape->setEnabled(false);
    m_delay.setSingleShot(true);
    connect(m_escape, &QShortcut::activated, this, &LoadProgress::cancelled);
    connect(&m_delay, &QTimer::timeout, this, [this, &statusBar] {
        m_indicator = makeIndicator(statusBar);
        statusBar.addPermanentWidget(m_indicator);
    });
    connect(&library, &HelpLibrary::becameBusy, this, &LoadProgress::start);
    connect(&library, &HelpLibrary::becameIdle, this, &LoadProgress::finish);
}

void LoadProgress::start()
{
    m_escape->setEnabled(true);
    if (m_indicator == nullptr && !m_delay.isActive()) {
        m_delay.start(Delay);
    }
}

void LoadProgress::finish()
{
    m_escape->setEnabled(false);
    m_delay.stop();
    delete std::exchange(m_indicator, nullptr);
}
