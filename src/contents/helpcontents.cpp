// SPDX-License-Identifier: MIT
#include "contents/helpcontents.h"

#include "contents/helpcontentslistview.h"
#include "contents/helpcontentsmodel.h"
#include "library/helplibrary.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QMenu>
#include <QScopedValueRollback>

HelpContents::HelpContents(HelpLibrary& library, const ContentsIcons& icons, QWidget* parent)
    : QWidget(parent), m_library(library), m_model(new HelpContentsModel(library, this)),
      m_listView(new HelpContentsListView(icons, this))
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_listView);
    setFocusProxy(m_listView);

    m_listView->setModel(m_model);
    // The tree moves its selection off rows that go.
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, this, [this] { m_quiet = true; });
    connect(&library, &HelpLibrary::helpSetRemoved, this, [this] { m_quiet = false; });
    connectView();
}

void HelpContents::connectView()
{
    connect(m_listView, &QAbstractItemView::clicked, this, &HelpContents::slotClicked);
    connect(m_listView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (selected.isEmpty() || m_quiet) {
                    return;
                }
                const QModelIndex index = selected.indexes().constFirst();
                if (m_listView->isMovedByKey()) {
                    Q_EMIT passedBy(HelpContentsModel::rowAt(index)->contentsItem);
                } else {
                    slotClicked(index);
                }
            });
    connect(m_listView, &HelpContentsListView::rowHovered, this,
            [this](const HelpContentsListViewItem* row) { Q_EMIT linkHovered(row->contentsItem->page()); });
    // The rows of help sets come and go closed; with the row of one goes a selection of it.
    connect(m_model, &QAbstractItemModel::layoutAboutToBeChanged, this,
            [this] { m_rowBefore = currentRow(); });
    connect(m_model, &QAbstractItemModel::layoutChanged, this, [this] {
        if (m_rowBefore != nullptr && !m_listView->currentIndex().isValid()) {
            selectRow(m_rowBefore);
        }
        openHelpSetOf(m_listView->currentIndex());
    });
}

void HelpContents::slotClicked(const QModelIndex& index)
{
    const auto* row = HelpContentsModel::rowAt(index);
    if (row == nullptr || m_quiet) {
        return;
    }
    if (m_model->isHelpSet(index)) {
        m_listView->expand(index);
    }
    Q_EMIT pageRequested(row->contentsItem);
}

void HelpContents::gotoPage(const HelpContentsListViewItem* row)
{
    if (row == nullptr) {
        Q_EMIT pageRequested(nullptr);
        return;
    }
    const QModelIndex index = m_model->indexOf(row);
    m_listView->selectionModel()->select(index, QItemSelectionModel::Deselect);
    select(index);
}

void HelpContents::gotoPage(const HelpContentsItem* record)
{
    // A record may point at a row that shows another one.
    const bool hasRow =
        record != nullptr && record->listViewItem != nullptr && record->listViewItem->contentsItem == record;
    gotoPage(hasRow ? record->listViewItem : static_cast<const HelpContentsListViewItem*>(nullptr));
}

void HelpContents::selectRow(const HelpContentsListViewItem* row)
{
    const QScopedValueRollback quiet(m_quiet, true);
    select(m_model->indexOf(row));
}

void HelpContents::follow(const HelpContentsListViewItem* row)
{
    // While the selection moves, the current row does not know it yet.
    const auto selected = m_listView->selectionModel()->selectedIndexes();
    const bool isThere = row != nullptr && !selected.isEmpty() &&
                         HelpContentsModel::rowAt(selected.constFirst())->contentsItem == row->contentsItem;
    if (row != nullptr && !isThere) {
        selectRow(row);
    }
}

void HelpContents::select(const QModelIndex& index)
{
    openHelpSetOf(index);
    m_listView->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    m_listView->centre(index);
}

void HelpContents::openHelpSetOf(const QModelIndex& index)
{
    const auto* root = HelpContentsModel::rootOf(index);
    if (m_model->isTitleRow(index)) {
        m_listView->expand(index);
    }
    for (int i = 0; m_model->isGrouped() && i < m_model->rowCount(); ++i) {
        const QModelIndex row = m_model->index(i, 0);
        m_listView->setExpanded(row, HelpContentsModel::rootOf(row) == root);
    }
}

void HelpContents::gotoFirstPage()
{
    const auto& rows = m_library.topRows();
    gotoPage(rows.empty() ? static_cast<const HelpContentsListViewItem*>(nullptr) : rows.front());
}

const HelpContentsListViewItem* HelpContents::currentRow() const
{
    return m_model->libraryRowAt(m_listView->currentIndex());
}

void HelpContents::setGrouped(bool isGrouped)
{
    m_model->setGroupsWanted(isGrouped);
}

void HelpContents::contextMenuEvent(QContextMenuEvent* event)
{
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    auto* viewport = m_listView->viewport();
    const QModelIndex index = isByKey ? m_listView->currentIndex()
                                      : m_listView->indexAt(viewport->mapFromGlobal(event->globalPos()));
    if (index.isValid()) {
        openMenu(index, isByKey ? viewport->mapToGlobal(m_listView->visualRect(index).center())
                                : event->globalPos());
    }
}

void HelpContents::openMenu(const QModelIndex& index, const QPoint& point)
{
    const auto* row = HelpContentsModel::rowAt(index);
    const QPersistentModelIndex place(index);
    auto* root = HelpContentsModel::rootOf(index);
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("rowMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // What it offers is about a help set that is there.
    connect(&m_library, &HelpLibrary::helpSetAboutToBeRemoved, menu, &QWidget::close);
    menu->addAction(tr("&Open"), this, [this, place] {
        const QScopedValueRollback quiet(m_quiet, true);
        m_listView->setCurrentIndex(place);
        Q_EMIT pageRequested(HelpContentsModel::rowAt(place)->contentsItem);
    });
    menu->addAction(tr("&Search Here"), this, [this, root] { Q_EMIT searchRequested(root); });
    menu->addSeparator();
    if (m_model->hasChildren(index)) {
        menu->addAction(tr("&Expand All"), this, [this, place] { expandBelow(place, true); });
        menu->addAction(tr("C&ollapse All"), this, [this, place] { expandBelow(place, false); });
        menu->addSeparator();
    }
    menu->addAction(tr("Copy &Title"), this,
                    [title = row->text.toString()] { QApplication::clipboard()->setText(title); });
    menu->addAction(tr("Copy &Path"), this,
                    [path = row->contentsItem->page()] { QApplication::clipboard()->setText(path); });
    menu->addSeparator();
    menu->addAction(tr("&Remove Help Set"), this, [this, root] { Q_EMIT removalRequested(root); });
    menu->popup(point);
}

void HelpContents::expandBelow(const QModelIndex& index, bool isExpanded)
{
    if (isExpanded) {
        m_listView->expandRecursively(index);
        return;
    }
    const auto* row = HelpContentsModel::rowAt(index);
    for (const auto* child : row->children) {
        if (!child->children.empty()) {
            expandBelow(m_model->indexOf(child), false);
        }
    }
    m_listView->collapse(index);
}
