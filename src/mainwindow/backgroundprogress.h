// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

class QProgressBar;
class QStatusBar;
class QWidget;

/// Shows in the status bar that something goes on in the background, once that takes a noticeable time. The
/// status bar owns it.
class BackgroundProgress : public QObject {
    Q_OBJECT

public:
    /// `activity` is what goes on, in a word or two.
    BackgroundProgress(const QString& activity, QStatusBar& statusBar);

    void start();
    void finish();
    /// Of `total` steps, `done` are behind us; without a total only that something goes on is known.
    void setFraction(qint64 done, qint64 total);

private:
    void show();

    const QString m_activity;
    QStatusBar& m_statusBar;
    QWidget* m_indicator = nullptr; ///< while it is shown
    QProgressBar* m_bar = nullptr;  ///< in the indicator
    qint64 m_done = 0;
    qint64 m_total = 0;
    QTimer m_delay;
};
