// SPDX-License-Identifier: MIT
#include "machine/machinedialog.h"

#include "library/installedcontents.h"
#include "library/settingsstore.h"
#include "library/tooltip.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr auto FoldersKey = "machineFolders";
constexpr QSize StartSize(760, 520);
constexpr int NarrowList = 520; // pixels; below, there is no room for places

enum Column { Title, Kind, Pages, Place };

QStringList userFolders()
{
    QStringList folders = SettingsStore(SettingsStore::Access::Read).value(FoldersKey).toStringList();
    folders.removeAll(QString());
    return folders;
}

QString nameOf(const QTreeWidgetItem& item)
{
    return item.data(Title, Qt::UserRole).toString();
}

bool isOffered(const QTreeWidgetItem& item)
{
    return (item.flags() & Qt::ItemIsEnabled) != 0;
}

} // namespace

MachineDialog::MachineDialog(const QStringList& open, QWidget* parent) : QDialog(parent), m_open(open)
{
    setWindowTitle(tr("Documentation on This Machine"));
    build();
    resize(StartSize.boundedTo(screen()->availableGeometry().size() * 9 / 10));
    search();
}

void MachineDialog::build()
{
    m_filter = new QLineEdit(this);
    m_filter->setPlaceholderText(tr("Filter by title, kind or place"));
    m_filter->setAccessibleName(tr("Filter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->installEventFilter(this);
    m_list = new QTreeWidget(this);
    m_list->setHeaderLabels({tr("Documentation"), tr("Kind"), tr("Pages"), tr("Place")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->header()->setSectionResizeMode(Kind, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(Pages, QHeaderView::ResizeToContents);
    m_list->headerItem()->setTextAlignment(Pages, Qt::AlignRight | Qt::AlignVCenter);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setAccessibleName(tr("Documentation"));
    m_state = new QLabel(this);
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    m_openButton = buttons->addButton(tr("&Open"), QDialogButtonBox::ActionRole);
    m_openButton->setDefault(true);
    m_installButton = buttons->addButton(tr("Open and &Install"), QDialogButtonBox::ActionRole);
    m_installButton->setToolTip(tr("Keeps it in the menu of installed contents, too"));
    m_folderButton = buttons->addButton(tr("Add &Folder..."), QDialogButtonBox::ActionRole);
    for (auto* button : buttons->findChildren<QPushButton*>()) {
        button->setAutoDefault(button == m_openButton);
    }
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    for (auto* widget : std::initializer_list<QWidget*>{m_filter, m_list, m_state, buttons}) {
        layout->addWidget(widget);
    }
    connectParts();
}

void MachineDialog::connectParts()
{
    connect(m_filter, &QLineEdit::textChanged, this, &MachineDialog::filter);
    connect(m_list, &QTreeWidget::itemChanged, this, &MachineDialog::showState);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &MachineDialog::showState);
    connect(m_list, &QTreeWidget::itemDoubleClicked, m_openButton, &QPushButton::click);
    connect(m_openButton, &QPushButton::clicked, this, &MachineDialog::openChosen);
    connect(m_installButton, &QPushButton::clicked, this, &MachineDialog::installChosen);
    connect(m_folderButton, &QPushButton::clicked, this, &MachineDialog::addFolder);
}

void MachineDialog::search()
{
    m_tasks.cancel();
    m_list->clear();
    m_state->setText(tr("Looking for documentation…"));
    m_openButton->setEnabled(false);
    m_installButton->setEnabled(false);
    m_tasks.run([places = machinePlaces(userFolders())](
                    const std::stop_token& stop) { return findMachineSets(places, stop); },
                [this](const std::vector<MachineSet>& sets) { showSets(sets); });
}

void MachineDialog::showSets(const std::vector<MachineSet>& sets)
{
    QList<QTreeWidgetItem*> items;
    for (const auto& set : sets) {
        auto* item =
            new QTreeWidgetItem({set.title.simplified(), set.kind, QLocale().toString(set.pages), set.name});
        const bool isOpen = m_open.contains(set.name);
        item->setData(Title, Qt::UserRole, set.name);
        item->setToolTip(Place, plainToolTip(set.name));
        item->setTextAlignment(Pages, Qt::AlignRight | Qt::AlignVCenter);
        item->setCheckState(Title, isOpen ? Qt::Checked : Qt::Unchecked);
        item->setDisabled(isOpen);
        items.append(item);
    }
    const QSignalBlocker blocker(m_list);
    m_list->addTopLevelItems(items);
    fitColumns();
    filter();
}

void MachineDialog::filter()
{
    QTreeWidgetItem* firstShown = nullptr;
    const auto words = m_filter->text().simplified().split(u' ', Qt::SkipEmptyParts);
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        auto* item = m_list->topLevelItem(i);
        const QString all = item->text(Title) + u' ' + item->text(Kind) + u' ' + item->text(Place);
        item->setHidden(!std::all_of(words.begin(), words.end(), [&](const auto& word) {
            return all.contains(word, Qt::CaseInsensitive);
        }));
        const bool isFirst = firstShown == nullptr && !item->isHidden() && isOffered(*item);
        firstShown = isFirst ? item : firstShown;
    }
    if (m_list->currentItem() == nullptr || m_list->currentItem()->isHidden()) {
        m_list->setCurrentItem(firstShown);
    }
    showState();
}

void MachineDialog::showState()
{
    int shown = 0;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        shown += m_list->topLevelItem(i)->isHidden() ? 0 : 1;
    }
    const qsizetype count = ticked().size();
    m_openButton->setEnabled(!chosen().isEmpty());
    m_installButton->setEnabled(!chosen().isEmpty());
    if (m_list->topLevelItemCount() == 0) {
        m_state->setText(
            tr("No documentation was found. Packages whose names end in -doc bring some; Add Folder "
               "looks somewhere else."));
    } else if (shown == 0) {
        m_state->setText(tr("Nothing matches the filter."));
    } else {
        m_state->setText(
            tr("%1 of %2 shown, %3 ticked").arg(shown).arg(m_list->topLevelItemCount()).arg(count));
    }
}

/// What the filter hides stays ticked.
QStringList MachineDialog::ticked() const
{
    QStringList names;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const auto* item = m_list->topLevelItem(i);
        if (item->checkState(Title) == Qt::Checked && isOffered(*item)) {
            names.append(nameOf(*item));
        }
    }
    return names;
}

QStringList MachineDialog::chosen() const
{
    const auto* current = m_list->currentItem();
    const bool isAny = current != nullptr && !current->isHidden() && isOffered(*current);
    const QStringList names = ticked();
    return names.isEmpty() && isAny ? QStringList(nameOf(*current)) : names;
}

void MachineDialog::openChosen()
{
    const QStringList names = chosen();
    accept();
    Q_EMIT openRequested(names);
}

void MachineDialog::installChosen()
{
    if (InstalledContents::installAll(chosen())) {
        openChosen();
    } else {
        m_state->setText(tr("The settings cannot be written, so nothing was installed."));
    }
}

/// Titles are needed most, then kinds.
void MachineDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    fitColumns();
}

void MachineDialog::fitColumns()
{
    const int width = m_list->viewport()->width();
    const bool isNarrow = width < NarrowList;
    m_list->setColumnHidden(Place, isNarrow);
    const int others = m_list->columnWidth(Kind) + m_list->columnWidth(Pages);
    m_list->setColumnWidth(Title, isNarrow ? width - others : (width - others) * 3 / 5);
}

/// In the filter line the arrow keys go through the list.
bool MachineDialog::eventFilter(QObject* watched, QEvent* event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (key == Qt::Key_Down || key == Qt::Key_Up) {
        m_list->setFocus();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void MachineDialog::addFolder()
{
    auto* dialog = new QFileDialog(this, tr("Add Folder"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& folder) {
        QStringList folders = userFolders();
        if (!folders.contains(folder)) {
            SettingsStore store(SettingsStore::Access::Write);
            store.setValue(FoldersKey, folders << folder);
            store.sync();
        }
        search();
    });
    dialog->open();
}
