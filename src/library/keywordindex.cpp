// SPDX-License-Identifier: MIT
#include "library/keywordindex.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace {

/// Entries with equal keys share a row.
struct GroupKey {
    QString keyword;
    bool hasParent = false;
    QString parentKeyword;
    QString parentTitle;

    friend bool operator==(const GroupKey& a, const GroupKey& b) = default;
    friend size_t qHash(const GroupKey& key, size_t seed)
    {
        return qHashMulti(seed, key.keyword, key.hasParent, key.parentKeyword, key.parentTitle);
    }
};

GroupKey keyOf(const HelpIndexItem& item)
{
    if (item.parent == nullptr) {
        return {item.keyword.toLower(), false, {}, {}};
    }
    return {item.keyword.toLower(), true, item.parent->keyword.toLower(), item.parent->title.toLower()};
}

} // namespace

void KeywordIndex::buildIndex(const std::vector<HelpIndexItem*>& items)
{
    Q_EMIT aboutToBeRebuilt();
    std::vector<HelpIndexItem*> sorted = items;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto* a, const auto* b) { return a->keyword.compare(b->keyword) < 0; });
    for (auto* item : items) {
        item->group = -1;
    }
    const auto representatives = group(sorted);
    m_groups.clear();
    for (auto* item : items) {
        if (item->group >= 0) {
            m_groups.resize(std::max(m_groups.size(), size_t(item->group) + 1));
            m_groups[size_t(item->group)].push_back(item);
        }
    }
    makeRows(representatives);
    Q_EMIT rebuilt();
}

/// Numbers the groups; returns the first entry of each group, and every entry that has none, in sort order.
std::vector<HelpIndexItem*> KeywordIndex::group(const std::vector<HelpIndexItem*>& sorted)
{
    QHash<GroupKey, HelpIndexItem*> firsts;
    firsts.reserve(qsizetype(sorted.size()));
    std::vector<HelpIndexItem*> representatives;
    representatives.reserve(sorted.size());
    int count = 0;
    for (auto* item : sorted) {
        auto*& first = firsts[keyOf(*item)];
        if (first == nullptr) {
            first = item;
            representatives.push_back(item);
            continue;
        }
        if (first->group < 0) {
            first->group = count++;
        }
        item->group = first->group;
    }
    return representatives;
}

void KeywordIndex::makeRows(const std::vector<HelpIndexItem*>& representatives)
{
    // Sub-keywords by the entry whose row they stand under, that is the first one of the parent's group.
    QHash<int, HelpIndexItem*> keywordOfGroup;
    for (auto* item : representatives) {
        if (item->parent == nullptr && item->group >= 0) {
            keywordOfGroup.insert(item->group, item);
        }
    }
    QHash<const HelpIndexItem*, std::vector<HelpIndexItem*>> subKeywordsOf;
    for (auto* item : representatives) {
        if (item->parent != nullptr) {
            const int parentGroup = item->parent->group;
            subKeywordsOf[parentGroup < 0 ? item->parent : keywordOfGroup.value(parentGroup)].push_back(item);
        }
    }

    m_rows.clear();
    m_rows.reserve(representatives.size());
    m_lookUpTexts.clear();
    m_lookUpTexts.reserve(representatives.size());
    const auto append = [this](HelpIndexItem* item, bool isSubKeyword) {
        const auto& row = m_rows.emplace_back(HelpIndexListBoxItem{item, isSubKeyword});
        m_lookUpTexts.push_back(item->keyword.trimmed().toLower());
        item->listBoxItem = &row;
        if (item->group >= 0) {
            for (auto* member : m_groups[size_t(item->group)]) {
                member->listBoxItem = &row;
            }
        }
    };
    for (auto* item : representatives) {
        if (item->parent != nullptr) {
            continue;
        }
        append(item, false);
        const auto subKeywords = subKeywordsOf.constFind(item);
        if (subKeywords != subKeywordsOf.cend()) {
            std::for_each(subKeywords->rbegin(), subKeywords->rend(), [&](auto* sub) { append(sub, true); });
        }
    }
}

std::vector<HelpIndexItem*> KeywordIndex::getIndexListByGroup(int group) const
{
    if (group < 0 || size_t(group) >= m_groups.size()) {
        return {};
    }
    std::vector<HelpIndexItem*> result;
    QSet<std::pair<QString, QString>> seen;
    for (auto* item : m_groups[size_t(group)]) {
        const std::pair key(item->title.toLower(), item->link);
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
    const auto* end = m_rows.data() + m_rows.size();
    for (const auto* row = item.listBoxItem + 1; row != end && row->isSubKeyword; ++row) {
        result.push_back(row);
    }
    return result;
}

int KeywordIndex::lookFor(const QString& typed, int current) const
{
    const QString text = typed.toLower();
    const bool hasCurrent = current >= 0 && size_t(current) < m_lookUpTexts.size();
    if (hasCurrent ? m_lookUpTexts[size_t(current)].startsWith(text) : text.isEmpty()) {
        return current;
    }
    const auto found = std::find_if(m_lookUpTexts.cbegin(), m_lookUpTexts.cend(),
                                    [&](const QString& row) { return row.startsWith(text); });
    return found == m_lookUpTexts.cend() ? current : int(found - m_lookUpTexts.cbegin());
}
