// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QTimer>
#include <QWidget>

class PageView;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

/// The headings of the page shown, as a list in which the one is current that is read. It looks at the page
/// only while it is visible.
class PageOutline : public QWidget {
    Q_OBJECT

public:
    /// The view must outlive it.
    PageOutline(PageView& view, QWidget* parent);

Q_SIGNALS:
    /// The user wants to go to the heading with this anchor.
    void chosen(const QString& anchor);
    /// The user wants to see it no more.
    void closeRequested();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void buildLayout();
    void connectView();
    void choose(const QTreeWidgetItem& row);
    void renew();
    void fill();
    /// Makes the heading current under which one reads.
    void follow();
    [[nodiscard]] int readingPosition() const;

    PageView& m_view;
    QTreeWidget* m_list;
    QLabel* m_hint;                          ///< while the page has no headings
    QHash<QString, QTreeWidgetItem*> m_rows; ///< by anchors
    QTimer m_renewing;
    bool m_isOutdated = true; ///< the rows are those of another page
    int m_arrivedAt = 0;      ///< position in the text where the view was taken
    int m_scrolledTo = -1;    ///< where the view stood then; -1 for nowhere
};
