// SPDX-License-Identifier: MIT
#include "desk/librarylist.h"

#include "library/tooltip.h"

#include <QHeaderView>
#include <QLocale>

#include <algorithm>

namespace {

constexpr int Indentation = 12;          // pixels
constexpr int ColumnGap = 20;            // pixels between texts of neighbouring columns
constexpr int NarrowList = 460;          // pixels; below, only titles and states are shown
constexpr int NumberRole = Qt::UserRole; // of a row's entry, from 1

enum Column { TitleColumn, TopicsColumn, StateColumn, PlaceColumn, ColumnCount };

QString sectionTitle(LibraryEntry::Kind kind)
{
    switch (kind) {
    case LibraryEntry::Kind::Open:
        return LibraryList::tr("Open");
    case LibraryEntry::Kind::Installed:
        return LibraryList::tr("Installed");
    case LibraryEntry::Kind::Before:
        return LibraryList::tr("Opened before");
    }
    return {};
}

size_t numberOf(const QTreeWidgetItem& row)
{
    return size_t(row.data(TitleColumn, NumberRole).toULongLong());
}

} // namespace

LibraryList::LibraryList(QWidget* parent) : QTreeWidget(parent)
{
    setColumnCount(ColumnCount);
    setHeaderLabels({tr("Help set"), tr("Topics"), tr("State"), tr("Place")});
    setAccessibleName(tr("Help sets"));
    setAllColumnsShowFocus(true);
    setUniformRowHeights(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(Indentation);
    setTextElideMode(Qt::ElideMiddle);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
}

void LibraryList::setEntries(const std::vector<LibraryEntry>& entries)
{
    const auto before = current().value_or(LibraryEntry());
    clear();
    m_entries = entries;
    QTreeWidgetItem* section = nullptr;
    for (size_t i = 0; i < m_entries.size(); ++i) {
        if (i == 0 || m_entries[i].kind != m_entries[i - 1].kind) {
            section = addSection(m_entries[i].kind);
        }
        auto* row = new QTreeWidgetItem(section);
        row->setData(TitleColumn, NumberRole, qulonglong(i + 1));
        row->setTextAlignment(TopicsColumn, Qt::AlignRight | Qt::AlignVCenter);
        describe(*row, m_entries[i]);
    }
    expandAll();
    auto* row = rowOf(before.kind, before.fileName);
    setCurrentItem(row != nullptr || topLevelItemCount() == 0 ? row : topLevelItem(0)->child(0));
    fitColumns();
}

QTreeWidgetItem* LibraryList::addSection(LibraryEntry::Kind kind)
{
    auto* section = new QTreeWidgetItem(this, {sectionTitle(kind)});
    section->setFlags(Qt::ItemIsEnabled);
    section->setFirstColumnSpanned(true);
    QFont bold = font();
    bold.setBold(true);
    section->setFont(TitleColumn, bold);
    return section;
}

void LibraryList::describe(QTreeWidgetItem& row, const LibraryEntry& entry)
{
    row.setText(TitleColumn, entry.title.simplified());
    row.setText(TopicsColumn, entry.topics < 0 ? QString() : QLocale().toString(entry.topics));
    row.setText(StateColumn, entry.state.simplified());
    row.setText(PlaceColumn, entry.fileName);
    QStringList lines{entry.title, entry.fileName, entry.state};
    lines.removeAll(QString());
    const QString toolTip = plainToolTip(lines.join(u'\n')).replace(u'\n', QStringLiteral("<br>"));
    for (int column = 0; column < ColumnCount; ++column) {
        row.setToolTip(column, toolTip);
    }
}

void LibraryList::setFacts(const LibraryEntry& facts)
{
    for (auto& entry : m_entries) {
        if (entry.fileName != facts.fileName) {
            continue;
        }
        entry.title = facts.title;
        entry.topics = facts.topics;
        entry.state = facts.state;
        entry.canBeOpened = facts.canBeOpened;
        if (auto* row = rowOf(entry.kind, entry.fileName)) {
            describe(*row, entry);
        }
    }
    fitColumns();
}

std::optional<LibraryEntry> LibraryList::current() const
{
    const auto* row = currentItem();
    const size_t number = row == nullptr || row->isHidden() ? 0 : numberOf(*row);
    return number == 0 || number > m_entries.size() ? std::nullopt : std::optional(m_entries[number - 1]);
}

QTreeWidgetItem* LibraryList::rowOf(LibraryEntry::Kind kind, const QString& fileName) const
{
    for (int i = 0; i < topLevelItemCount(); ++i) {
        auto* section = topLevelItem(i);
        for (int j = 0; j < section->childCount(); ++j) {
            const auto& entry = m_entries[numberOf(*section->child(j)) - 1];
            if (entry.kind == kind && entry.fileName == fileName) {
                return section->child(j);
            }
        }
    }
    return nullptr;
}

void LibraryList::filter(const QString& text)
{
    QTreeWidgetItem* firstShown = nullptr;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        auto* section = topLevelItem(i);
        bool isAnyShown = false;
        for (int j = 0; j < section->childCount(); ++j) {
            auto* row = section->child(j);
            const bool isShown = row->text(TitleColumn).contains(text, Qt::CaseInsensitive) ||
                                 row->text(PlaceColumn).contains(text, Qt::CaseInsensitive);
            row->setHidden(!isShown);
            isAnyShown = isAnyShown || isShown;
            firstShown = firstShown == nullptr && isShown ? row : firstShown;
        }
        section->setHidden(!isAnyShown);
    }
    if (!current()) {
        setCurrentItem(firstShown);
    }
}

/// Titles are needed most, then states; a narrow list has nothing else.
void LibraryList::fitColumns()
{
    const int width = viewport()->width();
    const bool isNarrow = width < NarrowList;
    setColumnHidden(TopicsColumn, isNarrow);
    setColumnHidden(PlaceColumn, isNarrow);
    const auto wanted = [this](Column column) {
        return std::max(sizeHintForColumn(column) + ColumnGap, header()->sectionSizeHint(column));
    };
    const int topics = isNarrow ? 0 : wanted(TopicsColumn);
    const int state = std::min(wanted(StateColumn), width / 3);
    const int left = width - topics - state;
    const int title = isNarrow ? left : std::min(wanted(TitleColumn), left * 2 / 3);
    setColumnWidth(TitleColumn, title);
    setColumnWidth(TopicsColumn, topics);
    setColumnWidth(StateColumn, state);
    setColumnWidth(PlaceColumn, std::max(0, left - title));
}

/// The rows of sections are passed over.
QModelIndex LibraryList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex index = QTreeWidget::moveCursor(action, modifiers);
    if (!index.isValid() || index.parent().isValid()) {
        return index;
    }
    const bool isUpwards = action == MoveUp || action == MovePrevious || action == MovePageUp;
    const QModelIndex next = isUpwards ? indexAbove(index) : indexBelow(index);
    return next.isValid() ? next : currentIndex();
}

void LibraryList::showEvent(QShowEvent* event)
{
    QTreeWidget::showEvent(event);
    fitColumns();
}

void LibraryList::resizeEvent(QResizeEvent* event)
{
    QTreeWidget::resizeEvent(event);
    fitColumns();
}
