// SPDX-License-Identifier: MIT
#include "jump/jumpsearch.h"

#include "library/helplibrary.h"
#include "library/helpset.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace {

/// Whether the entry stands for its row of the keyword list.
bool isFirstOfRow(const HelpIndexItem& keyword)
{
    return keyword.listBoxItem != nullptr && keyword.listBoxItem->indexItem == &keyword;
}

QString pageOf(const JumpTarget& target)
{
    if (target.kind == JumpTarget::Kind::Heading) {
        return u'#' + target.anchor;
    }
    if (target.keyword != nullptr) {
        return target.keyword->hasPage() ? target.keyword->link() : QString();
    }
    const auto* record = target.row == nullptr ? target.record : target.row->contentsItem;
    return record->page();
}

} // namespace

bool JumpSearch::Found::operator<(const Found& other) const
{
    if (rank != other.rank) {
        return other.rank < rank;
    }
    return length != other.length ? length < other.length : number < other.number;
}

void JumpSearch::begin(std::vector<JumpTarget> nearby, const HelpContentsRoot* inUse)
{
    end();
    m_nearby = std::move(nearby);
    for (auto& target : m_nearby) {
        target.text = target.ownText;
    }
    m_inUse = inUse;
}

std::vector<JumpSearch::Part> JumpSearch::makeParts() const
{
    auto roots = m_library.roots();
    std::stable_partition(roots.begin(), roots.end(), [this](const auto* root) { return root == m_inUse; });
    std::vector<Part> parts;
    auto number = quint32(m_nearby.size());
    for (const auto* root : roots) {
        const auto& set = m_library.helpSet(*root);
        const auto firstKeyword = number + quint32(set.rows().size());
        const auto end = firstKeyword + quint32(set.indexItems().size());
        parts.push_back({&set, number, firstKeyword, end});
        number = end;
    }
    return parts;
}

void JumpSearch::end()
{
    m_nearby.clear();
    m_inUse = nullptr;
    m_parts.clear();
    m_pattern = FuzzyPattern();
    m_matching = {};
    m_found.clear();
}

const JumpSearch::Part& JumpSearch::partOf(quint32 number) const
{
    const auto behind = std::upper_bound(m_parts.begin(), m_parts.end(), number,
                                         [](quint32 n, const Part& part) { return n < part.firstRow; });
    return *std::prev(behind);
}

QStringView JumpSearch::textOf(quint32 number) const
{
    if (number < m_nearby.size()) {
        return m_nearby[number].text;
    }
    const auto& part = partOf(number);
    return number < part.firstKeyword ? part.set->rows()[number - part.firstRow].text
                                      : part.set->indexItems()[number - part.firstKeyword].keyword;
}

JumpTarget JumpSearch::target(quint32 number) const
{
    if (number < m_nearby.size()) {
        return m_nearby[number];
    }
    const auto& part = partOf(number);
    if (number < part.firstKeyword) {
        const auto& row = part.set->rows()[number - part.firstRow];
        return {.kind = JumpTarget::Kind::Row, .text = row.text, .row = &row};
    }
    const auto& keyword = part.set->indexItems()[number - part.firstKeyword];
    return {.kind = JumpTarget::Kind::Keyword, .text = keyword.keyword, .keyword = &keyword};
}

std::vector<JumpTarget> JumpSearch::find(const QString& query, size_t limit)
{
    FuzzyPattern pattern(query);
    auto parts = makeParts();
    const bool isNarrower = !m_pattern.isEmpty() && pattern.narrows(m_pattern) && parts == m_parts;
    m_pattern = std::move(pattern);
    m_parts = std::move(parts);
    m_found.clear();
    m_limit = limit;
    if (m_pattern.isEmpty()) {
        m_matching.clear();
        std::vector<JumpTarget> read;
        std::copy_if(m_nearby.begin(), m_nearby.end(), std::back_inserter(read),
                     [](const JumpTarget& target) { return target.kind == JumpTarget::Kind::Read; });
        return read;
    }
    isNarrower ? lookThroughMatching() : lookThroughAll();
    return best();
}

void JumpSearch::lookThroughAll()
{
    m_matching.clear();
    const auto look = [this](quint32 number, QStringView text) {
        if (m_pattern.matches(text)) {
            m_matching.push_back(number);
            consider(number, text);
        }
    };
    for (quint32 i = 0; i < m_nearby.size(); ++i) {
        look(i, m_nearby[i].text);
    }
    for (const auto& part : m_parts) {
        quint32 number = part.firstRow;
        for (const auto& row : part.set->rows()) {
            look(number++, row.text);
        }
        for (const auto& keyword : part.set->indexItems()) {
            look(number++, keyword.keyword);
        }
    }
}

void JumpSearch::lookThroughMatching()
{
    std::erase_if(m_matching, [this](quint32 number) {
        const QStringView text = textOf(number);
        const bool isMatch = m_pattern.matches(text);
        if (isMatch) {
            consider(number, text);
        }
        return !isMatch;
    });
}

/// Keeps a target that matches if it is among the best.
void JumpSearch::consider(quint32 number, QStringView text)
{
    const bool isFull = m_found.size() == m_limit;
    if (isFull && m_pattern.kindOf(text) < m_found.front().rank.kind) {
        return;
    }
    const auto rank = m_pattern.rank(text);
    const Found found{rank.value_or(FuzzyPattern::Rank()), text.size(), number};
    if (!rank || (isFull && !(found < m_found.front()))) {
        return;
    }
    if (const auto keyword = target(number).keyword; keyword != nullptr && !isFirstOfRow(*keyword)) {
        return;
    }
    if (isFull) {
        std::pop_heap(m_found.begin(), m_found.end());
        m_found.pop_back();
    }
    m_found.push_back(found);
    std::push_heap(m_found.begin(), m_found.end());
}

/// What leads to the same page under the same text is there once.
std::vector<JumpTarget> JumpSearch::best()
{
    std::sort_heap(m_found.begin(), m_found.end());
    std::vector<JumpTarget> targets;
    QSet<std::pair<QString, QString>> known;
    for (const auto& found : m_found) {
        auto one = target(found.number);
        const std::pair key(one.text.toString(), pageOf(one));
        if (key.second.isEmpty() || !known.contains(key)) {
            known.insert(key);
            targets.push_back(std::move(one));
        }
    }
    return targets;
}
