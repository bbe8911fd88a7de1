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
struct HelpContentsRoot;

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
    /// The same, unless the current row leads to the same page; null changes nothing.
    void follow(const HelpContentsListViewItem* row);
    /// A row of the library, which stands for its help set, too; null when there is none.
    [[nodiscard]] const HelpContentsListViewItem* currentRow() const;
    /// Whether several help sets have rows of their own, of which those in use are open.
    void setGrouped(bool isGrouped);

Q_SIGNALS:
    /// The user wants this record's page; null: no page at all.
    void pageRequested(HelpContentsItem* record);
    /// The user goes through the rows by keys and has come to the one of this record.
    void passedBy(HelpContentsItem* record);
    void linkHovered(const QString& page);
    /// The user wants to search this help set, or to have it removed.
    void searchRequested(HelpContentsRoot* root);
    void removalRequested(HelpContentsRoot* root);

protected Q_SLOTS:
    virtual void slotClicked(const QModelIndex& index);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void connectView();
    void select(const QModelIndex& index);
    /// Opens the help set in use and closes the others.
    void openHelpSetOf(const QModelIndex& index);
    void openMenu(const QModelIndex& index, const QPoint& point);
    void expandBelow(const QModelIndex& index, bool isExpanded);

    HelpLibrary& m_library;
    HelpContentsModel* m_model;
    HelpContentsListView* m_listView;
    const HelpContentsListViewItem* m_rowBefore = nullptr; ///< current before the rows of help sets changed
    bool m_quiet = false; ///< a change of the selection is no request for a page
};
