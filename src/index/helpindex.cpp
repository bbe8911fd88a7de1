// SPDX-License-Identifier: MIT
#include "index/helpindex.h"

#include "index/helpindexfound.h"
#include "index/helpindexlistbox.h"
#include "index/helpindexmodel.h"
#include "library/helplibrary.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace {

constexpr int FieldGap = 3; // pixels

bool movesRow(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

} // namespace

HelpIndex::HelpIndex(HelpLibrary& library, QWidget* parent)
    : QWidget(parent), m_library(library), m_lookForLabel(new QLabel(tr("Look For:"), this)),
      m_lookForEdit(new QLineEdit(this)), m_indexListBox(new HelpIndexListBox(this))
{
    m_lookForEdit->setAccessibleName(tr("Look For"));
    m_lookForEdit->installEventFilter(this);
    m_indexListBox->setModel(new HelpIndexModel(library.keywordIndex(), m_indexListBox));
    setFocusProxy(m_lookForEdit);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addItem(new QSpacerItem(0, FieldGap), 0, 0);
    layout->addWidget(m_lookForLabel, 1, 0);
    layout->addItem(new QSpacerItem(0, FieldGap), 2, 0);
    layout->addWidget(m_lookForEdit, 3, 0);
    layout->addItem(new QSpacerItem(0, FieldGap), 4, 0);
    layout->addWidget(m_indexListBox, 5, 0);

    connect(m_lookForEdit, &QLineEdit::textChanged, this, &HelpIndex::lookForTextChanged);
    connect(m_lookForEdit, &QLineEdit::returnPressed, this, &HelpIndex::lookForEnterPressed);
    connect(m_indexListBox, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& index) { indexClicked(index.row()); });
    connect(m_indexListBox, &HelpIndexListBox::returnPressed, this, &HelpIndex::indexEnterPressed);
    connect(m_indexListBox, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& index) { indexEnterPressed(index.row()); });
    connect(m_indexListBox, &HelpIndexListBox::rowHovered, this,
            [this](int row) { Q_EMIT linkHovered(itemAt(row)->link()); });
}

void HelpIndex::selectLookFor()
{
    m_lookForEdit->selectAll();
}

HelpIndexItem* HelpIndex::itemAt(int row) const
{
    return m_library.keywordIndex().rows()[size_t(row)].indexItem;
}

void HelpIndex::setCurrentRow(int row)
{
    m_indexListBox->setCurrentIndex(m_indexListBox->model()->index(row, 0));
}

void HelpIndex::lookForTextChanged(const QString& str)
{
    const int current = m_indexListBox->currentIndex().row();
    const int found = m_library.keywordIndex().lookFor(str, current);
    if (found != current) {
        setCurrentRow(found);
    }
}

void HelpIndex::lookForEnterPressed()
{
    const QModelIndex current = m_indexListBox->currentIndex();
    if (current.isValid()) {
        indexEnterPressed(current.row());
    }
}

void HelpIndex::indexClicked(int row)
{
    m_lookForEdit->setText(itemAt(row)->keyword.trimmed().toString());
}

void HelpIndex::indexEnterPressed(int row)
{
    auto* item = itemAt(row);
    if (item->group < 0 || m_library.keywordIndex().getIndexByGroupCount(item->group) == 1) {
        Q_EMIT pageRequested(item);
        return;
    }
    auto* dialog = new HelpIndexFound(m_library, item->group, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { Q_EMIT pageRequested(dialog->getIndex()); });
    dialog->open();
}

/// The keys that move the current row work while the field has the keyboard.
bool HelpIndex::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_lookForEdit && event->type() == QEvent::KeyPress &&
        movesRow(static_cast<QKeyEvent*>(event)->key())) {
        QCoreApplication::sendEvent(m_indexListBox, event);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
