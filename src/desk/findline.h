// SPDX-License-Identifier: MIT
#pragma once

#include "browser/pagematches.h"

#include <QWidget>

class HelpBrowser;
class QLabel;
class QLineEdit;

/// The line under the page that finds a text in it while it is typed: all places are marked and counted, and
/// the view goes to the first of them from where one reads. At the end it goes on from the other one.
class FindLine : public QWidget {
    Q_OBJECT

public:
    /// The browser must outlive it.
    FindLine(HelpBrowser& browser, QWidget* parent);

    /// Shows the line with this text, selected, so that typing replaces it.
    void open(const QString& text);
    /// Goes to the next place or the one before.
    void step(bool forward);
    /// Takes line and marks away and goes back to where one read when it was opened.
    void cancel();
    /// Takes line and marks away; the place stays.
    void finish();

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, QWidget::minimumSizeHint().height()}; }

Q_SIGNALS:
    /// This is looked for now.
    void soughtChanged(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void search();
    void counted();
    void showCount(const QString& sign);
    void pageChanged();

    HelpBrowser& m_browser;
    PageMatches m_matches;
    QLineEdit* m_field;
    QLabel* m_count;
    int m_origin = 0;          ///< where one read when the line was opened
    bool m_isToGoOn = false;   ///< the places are not known yet that a step is to lead to
    bool m_goesForward = true; ///< that step
    bool m_isFirst = true;     ///< it begins where one read, not behind the place one is at
};
