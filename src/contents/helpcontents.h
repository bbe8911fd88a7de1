// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class HelpContentsListView;
class HelpContentsModel;
class HelpLibrary;
class QModelIndex;
struct ContentsIcons;
struct HelpContentsItem;
struct HelpContentsListViewItem;

/// The contents pane: all loaded help sets as one tree of books and topics. The library must outlive it.
class HelpContents : public QWidget {
    Q_OBJECT

public:
    HelpContents(HelpLibrary& library, const ContentsIcons& icons, QWidget* parent);

    /// Selects a row, even one that is selected already, and so asks for its page; null asks for no page.
    void gotoPage(const HelpContentsListViewItem* row);
    /// The same for the row that shows this record; asks for no page when no row does.
    void gotoPage(const HelpContentsItem* record);
    void gotoFirstPage();
    /// Selects a row and brings it into view without asking for its page.
    void selectRow(const HelpContentsListViewItem* row);
    /// Null when there is none.
    [[nodiscard]] const HelpContentsListViewItem* currentRow() const;

Q_SIGNALS:
    /// The user wants this record's page; null: no page at all.
    void pageRequested(HelpContentsItem* record);
    void linkHovered(const QString& page);

protected Q_SLOTS:
    virtual void slotClicked(const QModelIndex& index);

private:
    HelpLibrary& m_library;
    HelpContentsModel* m_model;
    HelpContentsListView* m_listView;
    bool m_quiet = false; ///< a change of the selection is no request for a page
};
