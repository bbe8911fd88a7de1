// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class HelpBrowser;

/// What hands do on a page: the mouse buttons Back and Forward, and two fingers that zoom.
class PageGestures : public QObject {
    Q_OBJECT

public:
    /// The browser owns it.
    explicit PageGestures(HelpBrowser& browser);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// `factor` is how much larger the page has become since the fingers moved last.
    void zoomBy(qreal factor);

    HelpBrowser& m_browser;
    qreal m_factor = 1; ///< since the last step
};
