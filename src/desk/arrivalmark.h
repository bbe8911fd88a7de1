// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

class QTextEdit;

/// Marks for a second the paragraph that somebody has been taken to: a soft ground with a bar beside it,
/// which does not move. The view owns it.
class ArrivalMark : public QWidget {
    Q_OBJECT

public:
    explicit ArrivalMark(QTextEdit& view);

    /// The paragraph at this position of the text.
    void mark(int position);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// Puts it over the paragraph, wherever that is now.
    void follow();

    QTextEdit& m_view;
    int m_position = 0;
    QTimer m_time;
};
