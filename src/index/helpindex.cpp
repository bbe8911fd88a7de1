// SPDX-License-Identifier: MIT
#include "index/helpindex.h"

#include "index/helpindexfound.h"
#include "index/helpindexlistbox.h"
#include "index/helpindexmodel.h"
#include "library/helplibrary.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

constexpr int FieldGap = 3; // pixels

bool movesRow(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

} // namespace

HelpIndex::HelpIndex(HelpLibrary& library, QWidget* parent)
    : QWidget(parent), m_library(library), m_lookForLabel(new QLabel(tr("Look For:"), this)),
      m_lookForEdit(new QLineEdit(this)), m_scope(new QComboBox(this)), m_note(new QLabel(this)),
      m_searchButton(new QPushButton(tr("Search All Pages"), this)),
      m_indexListBox(new HelpIndexListBox(this)),
      m_model(new HelpIndexModel(library.keywordIndex(), m_indexListBox))
{
    m_lookForEdit->setAccessibleName(tr("Look For"));
    m_lookForEdit->installEventFilter(this);
    m_scope->addItems({tr("In all help sets"), tr("In this help set")});
    m_scope->setAccessibleName(tr("Where to look"));
    m_scope->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_indexListBox->setModel(m_model);
    setFocusProxy(m_lookForEdit);
    buildLayout();
    connectParts();
    setNote({});
    showScope();
}

void HelpIndex::buildLayout()
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addItem(new QSpacerItem(0, FieldGap), 0, 0);
    layout->addWidget(m_lookForLabel, 1, 0);
    layout->addItem(new QSpacerItem(0, FieldGap), 2, 0);
    layout->addWidget(m_lookForEdit, 3, 0);
    layout->addItem(new QSpacerItem(0, FieldGap), 4, 0);
    layout->addWidget(m_scope, 5, 0);
    layout->addWidget(m_note, 6, 0);
    layout->addWidget(m_indexListBox, 7, 0);
    layout->addWidget(m_searchButton, 8, 0);
    layout->setRowStretch(7, 1);
}

void HelpIndex::connectParts()
{
    connect(m_lookForEdit, &QLineEdit::textChanged, this, &HelpIndex::lookForTextChanged);
    connect(m_lookForEdit, &QLineEdit::returnPressed, this, &HelpIndex::lookForEnterPressed);
    connect(m_indexListBox, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& index) { indexClicked(index.row()); });
    connect(m_indexListBox, &HelpIndexListBox::returnPressed, this, &HelpIndex::indexEnterPressed);
    connect(m_indexListBox, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& index) { indexEnterPressed(index.row()); });
    connect(m_indexListBox, &HelpIndexListBox::rowHovered, this,
            [this](int row) { Q_EMIT linkHovered(itemAt(row)->link()); });
    connect(m_searchButton, &QPushButton::clicked, this,
            [this] { Q_EMIT searchRequested(m_lookForEdit->text()); });
    connect(m_scope, &QComboBox::activated, this, [this] {
        showAllRows();
        lookForTextChanged(m_lookForEdit->text());
    });
    // The model shows all rows again.
    connect(&m_library.keywordIndex(), &KeywordIndex::rebuilt, this, [this] {
        setNote({});
        showScope();
        showAllRows();
        // What was typed while there were no rows, or other ones.
        lookForTextChanged(m_lookForEdit->text());
    });
    connect(&m_library, &HelpLibrary::helpSetAboutToBeRemoved, this, [this] { m_inUse = nullptr; });
}

void HelpIndex::selectLookFor()
{
    m_lookForEdit->selectAll();
}

void HelpIndex::setInUse(const HelpContentsRoot* root, const QString& page)
{
    m_page = page;
    if (root == m_inUse || root == nullptr) {
        return;
    }
    m_inUse = root;
    if (only() != nullptr) {
        showAllRows();
        setNote({});
    }
}

const HelpContentsRoot* HelpIndex::only() const
{
    return m_scope->isHidden() || m_scope->currentIndex() == 0 ? nullptr : m_inUse;
}

void HelpIndex::showScope()
{
    m_scope->setHidden(m_library.roots().size() < 2);
}

void HelpIndex::showAllRows()
{
    const auto* root = only();
    m_model->setShown(root == nullptr
                          ? std::nullopt
                          : std::optional(m_library.keywordIndex().rowsContaining(QString(), root)));
}

HelpIndexItem* HelpIndex::itemAt(int row) const
{
    return m_library.keywordIndex().rows()[size_t(m_model->indexRow(row))].indexItem;
}

/// In the upper part of the list, where the rows behind it can be seen.
void HelpIndex::setCurrentRow(int row)
{
    constexpr int partAbove = 4;
    m_indexListBox->setCurrentIndex(m_model->index(row, 0));
    const int height = std::max(1, m_indexListBox->sizeHintForRow(0));
    const int above = m_indexListBox->viewport()->height() / height / partAbove;
    m_indexListBox->scrollTo(m_model->index(std::max(0, row - above), 0), QAbstractItemView::PositionAtTop);
}

void HelpIndex::lookForTextChanged(const QString& str)
{
    const auto& index = m_library.keywordIndex();
    const bool wasNoted = !m_note->isHidden();
    const QModelIndex shown = m_indexListBox->currentIndex();
    const int current = shown.isValid() && !wasNoted ? m_model->indexRow(shown.row()) : -1;
    const int found = index.lookFor(str, current, m_inUse, only());
    if (!str.isEmpty() && !index.rows().empty() && (found < 0 || !index.beginsWith(found, str))) {
        showRowsContaining(str);
        return;
    }
    if (wasNoted) {
        setNote({});
        showAllRows();
    }
    if (found >= 0 && found != current) {
        setCurrentRow(m_model->modelRow(found));
    }
}

/// Nothing begins so; what contains it may be meant.
void HelpIndex::showRowsContaining(const QString& text)
{
    auto rows = m_library.keywordIndex().rowsContaining(text, only());
    setNote(rows.empty() ? tr("No keyword has this in it. Enter searches all pages.")
                         : tr("No keyword begins so. These have it in them:"));
    m_model->setShown(std::move(rows));
    if (m_model->rowCount() > 0) {
        setCurrentRow(0);
    }
}

void HelpIndex::setNote(const QString& note)
{
    m_note->setText(note);
    m_note->setHidden(note.isEmpty());
    m_searchButton->setHidden(note.isEmpty());
}

void HelpIndex::lookForEnterPressed()
{
    const QModelIndex current = m_indexListBox->currentIndex();
    if (current.isValid()) {
        indexEnterPressed(current.row());
    } else if (!m_note->isHidden()) {
        Q_EMIT searchRequested(m_lookForEdit->text());
    }
}

void HelpIndex::indexClicked(int row)
{
    // Rows that were looked for stay, or a second click would meet another one.
    const QSignalBlocker blocker(m_note->isHidden() ? nullptr : m_lookForEdit);
    m_lookForEdit->setText(itemAt(row)->keyword.trimmed().toString());
}

void HelpIndex::indexEnterPressed(int row)
{
    open(*itemAt(row));
}

void HelpIndex::open(const HelpIndexItem& item)
{
    if (item.group < 0 || m_library.keywordIndex().getIndexByGroupCount(item.group) == 1) {
        Q_EMIT pageRequested(&item);
        return;
    }
    auto* dialog = new HelpIndexFound(m_library, item.group, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->prefer(m_inUse, m_page);
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
