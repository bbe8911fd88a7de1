// SPDX-License-Identifier: MIT
#include "contents/helpcontentsmodel.h"

#include "library/helplibrary.h"
#include "library/helpset.h"
#include "library/tooltip.h"

#include <QFont>

#include <algorithm>

HelpContentsModel::HelpContentsModel(HelpLibrary& library, QObject* parent)
    : QAbstractItemModel(parent), m_library(library)
{
    connectLibrary();
}

void HelpContentsModel::connectLibrary()
{
    connect(&m_library, &HelpLibrary::topRowsAboutToBeInserted, this, &HelpContentsModel::rowsAboutToCome);
    connect(&m_library, &HelpLibrary::topRowsInserted, this, &HelpContentsModel::rowsHaveCome);
    connect(&m_library, &HelpLibrary::rowsRetitled, this, [this] {
        Q_EMIT layoutAboutToBeChanged();
        Q_EMIT layoutChanged();
    });
    connect(&m_library, &HelpLibrary::topRowsAboutToBeRemoved, this, &HelpContentsModel::rowsAboutToGo);
    connect(&m_library, &HelpLibrary::topRowsRemoved, this, &HelpContentsModel::rowsHaveGone);
}

void HelpContentsModel::rowsAboutToCome(int first, int last)
{
    m_firstComing = first;
    // The help set that was alone moves below a row of its own before another one comes.
    setGrouped(m_groupsWanted && !m_sets.empty());
    if (!m_isGrouped) {
        beginInsertRows({}, first, last);
    }
}

void HelpContentsModel::rowsHaveCome()
{
    const auto* root = m_library.topRows()[size_t(m_firstComing)]->contentsItem->root();
    const auto place = std::find_if(m_sets.begin(), m_sets.end(), [this](const auto& set) {
        return set->row.children.front()->position > m_firstComing;
    });
    const int position = int(place - m_sets.begin());
    if (m_isGrouped) {
        beginInsertRows({}, position, position);
    }
    m_sets.insert(place, makeSetRow(*root));
    numberSets();
    endInsertRows();
}

void HelpContentsModel::rowsAboutToGo(int first, int last)
{
    const auto gone = std::find_if(m_sets.begin(), m_sets.end(), [first](const auto& set) {
        return set->row.children.front()->position == first;
    });
    if (m_isGrouped) {
        const int position = int(gone - m_sets.begin());
        beginRemoveRows({}, position, position);
    } else {
        beginRemoveRows({}, first, last);
    }
    m_sets.erase(gone);
    numberSets();
    if (m_isGrouped) {
        endRemoveRows();
    }
}

void HelpContentsModel::rowsHaveGone()
{
    if (!m_isGrouped) {
        endRemoveRows();
    }
    setGrouped(m_groupsWanted && m_sets.size() > 1);
}

void HelpContentsModel::setGroupsWanted(bool isWanted)
{
    m_groupsWanted = isWanted;
    setGrouped(isWanted && m_sets.size() > 1);
}

/// All rows stay what they are, but for the rows above them.
void HelpContentsModel::setGrouped(bool isGrouped)
{
    if (isGrouped == m_isGrouped) {
        return;
    }
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    m_isGrouped = isGrouped;
    QModelIndexList after;
    for (const auto& index : before) {
        after.append(!isGrouped && isOwnRow(rowAt(index)) ? QModelIndex() : indexOf(rowAt(index)));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

std::unique_ptr<HelpContentsModel::SetRow> HelpContentsModel::makeSetRow(const HelpContentsRoot& root) const
{
    const auto& set = m_library.helpSet(root);
    auto result = std::make_unique<SetRow>();
    result->title = set.ownTitle().simplified();
    result->root = &root;
    result->row.text = result->title;
    result->row.children = set.topRows();
    result->row.contentsItem =
        set.firstPage() != nullptr ? set.firstPage() : set.topRows().front()->contentsItem;
    result->shown = set.titleRow() != nullptr ? set.titleRow() : &result->row;
    return result;
}

void HelpContentsModel::numberSets()
{
    m_setRows.clear();
    for (const auto& set : m_sets) {
        m_setRows.push_back(set->shown);
    }
}

/// Whether the library does not know it.
bool HelpContentsModel::isOwnRow(const HelpContentsListViewItem* row) const
{
    return std::any_of(m_sets.begin(), m_sets.end(), [row](const auto& set) { return &set->row == row; });
}

int HelpContentsModel::placeOfSet(const HelpContentsListViewItem* row) const
{
    const auto found = std::find(m_setRows.begin(), m_setRows.end(), row);
    return m_isGrouped && found != m_setRows.end() ? int(found - m_setRows.begin()) : -1;
}

bool HelpContentsModel::isTitleRow(const QModelIndex& index) const
{
    const auto* row = rowAt(index);
    return std::any_of(m_sets.begin(), m_sets.end(),
                       [row](const auto& set) { return set->shown == row && set->shown != &set->row; });
}

const HelpContentsListViewItem* HelpContentsModel::libraryRowAt(const QModelIndex& index) const
{
    const auto* row = rowAt(index);
    return isOwnRow(row) ? row->children.front() : row;
}

/// The help set of a top-level row of the library, while it has a row.
const HelpContentsModel::SetRow* HelpContentsModel::setAbove(const HelpContentsListViewItem& row) const
{
    if (!m_isGrouped || row.parent != nullptr) {
        return nullptr;
    }
    const auto* root = row.contentsItem->root();
    const auto set = std::find_if(m_sets.begin(), m_sets.end(),
                                  [root](const auto& candidate) { return candidate->root == root; });
    return set == m_sets.end() ? nullptr : set->get();
}

QModelIndex HelpContentsModel::indexOf(const HelpContentsListViewItem* row) const
{
    if (row == nullptr) {
        return {};
    }
    if (const int place = placeOfSet(row); place >= 0) {
        return createIndex(place, 0, row);
    }
    const auto* set = setAbove(*row);
    return createIndex(set == nullptr ? row->position : row->position - set->row.children.front()->position,
                       0, row);
}

QModelIndex HelpContentsModel::indexOf(const HelpContentsRoot* root) const
{
    const auto set = std::find_if(m_sets.begin(), m_sets.end(),
                                  [root](const auto& candidate) { return candidate->root == root; });
    return m_isGrouped && set != m_sets.end() ? indexOf((*set)->shown) : QModelIndex();
}

HelpContentsListViewItem* HelpContentsModel::rowAt(const QModelIndex& index)
{
    return static_cast<HelpContentsListViewItem*>(index.internalPointer());
}

HelpContentsRoot* HelpContentsModel::rootOf(const QModelIndex& index)
{
    const auto* row = rowAt(index);
    return row == nullptr ? nullptr : row->contentsItem->root();
}

std::span<HelpContentsListViewItem* const> HelpContentsModel::children(const QModelIndex& parent) const
{
    if (parent.isValid()) {
        return rowAt(parent)->children;
    }
    return m_isGrouped ? std::span<HelpContentsListViewItem* const>(m_setRows)
                       : std::span<HelpContentsListViewItem* const>(m_library.topRows());
}

QModelIndex HelpContentsModel::index(int row, int column, const QModelIndex& parent) const
{
    const auto rows = children(parent);
    if (column != 0 || row < 0 || size_t(row) >= rows.size()) {
        return {};
    }
    return createIndex(row, 0, rows[size_t(row)]);
}

QModelIndex HelpContentsModel::parent(const QModelIndex& index) const
{
    if (!index.isValid()) {
        return {};
    }
    const auto* row = rowAt(index);
    if (row->parent != nullptr) {
        return indexOf(row->parent);
    }
    const auto* set = placeOfSet(row) >= 0 ? nullptr : setAbove(*row);
    return set == nullptr ? QModelIndex() : indexOf(&set->row);
}

int HelpContentsModel::rowCount(const QModelIndex& parent) const
{
    return int(children(parent).size());
}

int HelpContentsModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

QVariant HelpContentsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return rowAt(index)->text.toString();
    case Qt::ToolTipRole:
        return plainToolTip(rowAt(index)->text.toString());
    case Qt::FontRole:
        if (isHelpSet(index)) {
            QFont font;
            font.setBold(true);
            return font;
        }
        return {};
    default:
        return {};
    }
}
