// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

class HelpLibrary;
class QShortcut;
class QStatusBar;
class QWidget;

/// Shows in the status bar that help sets are being loaded, once that takes a noticeable time, and lets
/// Escape give it up. The library must outlive it.
class LoadProgress : public QObject {
    Q_OBJECT

public:
    LoadProgress(const HelpLibrary& library, QStatusBar& statusBar);

Q_SIGNALS:
    void cancelled();

private:
    void start();
    void finish();

    QWidget* m_indicator = nullptr; ///< while it is shown
    QShortcut* m_escape;
    QTimer m_delay;
};
