// SPDX-License-Identifier: MIT
#include "library/keywordindex.h"

#include "library/prefetch.h"

#include <QSet>

#include <algorithm>
#include <utility>

void KeywordIndex::setRows(KeywordRows rows, const std::vector<std::span<HelpIndexItem>>& items)
{
    Q_EMIT aboutToBeRebuilt();
    m_rows = std::move(rows);
    for (const auto& span : items) {
        for (auto& item : span) {
            item.group = -1;
            item.listBoxItem = nullptr;
        }
    }
    for (int number = 0; number < m_rows.groupCount(); ++number) {
        for (auto* member : m_rows.group(number)) {
            member->group = number;
        }
    }
    forEachAhead(
        m_rows.rows, [](const HelpIndexListBoxItem& row) { return row.indexItem; },
        [this](size_t /*i*/, const HelpIndexListBoxItem& row) {
            row.indexItem->listBoxItem = &row;
            if (row.indexItem->group >= 0) {
                for (auto* member : m_rows.group(row.indexItem->group)) {
                    member->listBoxItem = &row;
                }
            }
        });
    Q_EMIT rebuilt();
}

std::vector<HelpIndexItem*> KeywordIndex::getIndexListByGroup(int group) const
{
    if (group < 0 || group >= m_rows.groupCount()) {
        return {};
    }
    std::vector<HelpIndexItem*> result;
    QSet<std::pair<QString, QString>> seen;
    for (auto* item : m_rows.group(group)) {
        const std::pair key(item->title().toLower(), item->link());
        if (!seen.contains(key)) {
            seen.insert(key);
            result.push_back(item);
        }
    }
    return result;
}

int KeywordIndex::getIndexByGroupCount(int group) const
{
    return int(getIndexListByGroup(group).size());
}

std::vector<HelpIndexItem*> KeywordIndex::topics(HelpIndexItem* item) const
{
    return item->group < 0 ? std::vector{item} : getIndexListByGroup(item->group);
}

std::vector<const HelpIndexListBoxItem*> KeywordIndex::subKeywords(const HelpIndexItem& item) const
{
    std::vector<const HelpIndexListBoxItem*> result;
    if (item.listBoxItem == nullptr || item.listBoxItem->isSubKeyword) {
        return result;
    }
    const auto* end = m_rows.rows.data() + m_rows.rows.size();
    for (const auto* row = item.listBoxItem + 1; row != end && row->isSubKeyword; ++row) {
        result.push_back(row);
    }
    return result;
}

int KeywordIndex::lookFor(const QString& typed, int current) const
{
    const QString text = typed.toLower();
    const bool hasCurrent = current >= 0 && size_t(current) < m_rows.rows.size();
    if (hasCurrent ? m_rows.lookUpText(size_t(current)).startsWith(text) : text.isEmpty()) {
        return current;
    }
    // The marks alone rule nearly all rows out, without a look at their texts.
    const quint64 mask = lookUpMark(QString(text.size(), QChar(0xFF)));
    const quint64 mark = lookUpMark(text);
    for (size_t row = 0; row < m_rows.rows.size(); ++row) {
        if ((m_rows.lookUpMarks[row] & mask) == mark && m_rows.lookUpText(row).startsWith(text)) {
            return int(row);
        }
    }
    return current;
}
