// SPDX-License-Identifier: MIT
#include "contents/helpcontents.h"

#include "contents/helpcontentslistview.h"
#include "contents/helpcontentsmodel.h"
#include "library/helplibrary.h"

#include <QGridLayout>
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
    connect(m_listView, &QAbstractItemView::clicked, this, &HelpContents::slotClicked);
    connect(m_listView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (!selected.isEmpty()) {
                    slotClicked(selected.indexes().constFirst());
                }
            });
    connect(m_listView, &HelpContentsListView::rowHovered, this,
            [this](const HelpContentsListViewItem* row) { Q_EMIT linkHovered(row->contentsItem->page()); });
}

void HelpContents::slotClicked(const QModelIndex& index)
{
    const auto* row = HelpContentsModel::rowAt(index);
    if (row != nullptr && !m_quiet) {
        Q_EMIT pageRequested(row->contentsItem);
    }
}

void HelpContents::gotoPage(const HelpContentsListViewItem* row)
{
    if (row == nullptr) {
        Q_EMIT pageRequested(nullptr);
        return;
    }
    const QModelIndex index = m_model->indexOf(row);
    auto* selection = m_listView->selectionModel();
    selection->select(index, QItemSelectionModel::Deselect);
    selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    m_listView->scrollTo(index);
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
    gotoPage(row);
}

void HelpContents::gotoFirstPage()
{
    const auto& rows = m_library.topRows();
    gotoPage(rows.empty() ? static_cast<const HelpContentsListViewItem*>(nullptr) : rows.front());
}

const HelpContentsListViewItem* HelpContents::currentRow() const
{
    return HelpContentsModel::rowAt(m_listView->currentIndex());
}
