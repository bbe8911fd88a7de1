// SPDX-License-Identifier: MIT
#include "library/keywordrows.h"

#include "library/keywordorder.h"
#include "library/positiontable.h"
#include "library/prefetch.h"

#include <QHash>

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace {

constexpr quint32 None = PositionTable::None;

quint32 mixed(quint32 a, quint32 b, quint32 c = 0)
{
    return quint32(qHashMulti(0, a, b, c));
}

/// Gives the memory back, which an assignment of {} does not.
template <typename Value>
void release(std::vector<Value>& values)
{
    std::vector<Value>().swap(values);
}

/// Makes the rows of one list of entries, which are known by their positions in load order.
class RowMaker {
public:
    RowMaker(const std::vector<std::span<HelpIndexItem>>& items, const std::stop_token& stop) : m_stop(stop)
    {
        for (const auto& span : items) {
            flatten(span);
        }
    }

    KeywordRows make()
    {
        classify();
        group();
        if (!m_stop.stop_requested()) {
            collectMembers();
            makeRows();
            makeLookUpMarks();
        }
        return std::move(m_result);
    }

private:
    void flatten(std::span<HelpIndexItem> span)
    {
        const auto first = quint32(m_items.size());
        for (auto& item : span) {
            m_items.push_back(&item);
            m_parents.push_back(item.parent == nullptr ? None : first + quint32(item.parent - span.data()));
            m_subKeywordCount += item.parent == nullptr ? 0 : 1;
        }
    }

    /// Entries have the same class when their keywords are equal in lower case.
    void classify()
    {
        m_result.lowerTexts.reserve(m_items.size());
        m_classes.reserve(m_items.size());
        std::vector<quint32> hashes;
        hashes.reserve(m_items.size());
        for (const auto* item : m_items) {
            const QStringView lower = m_result.texts.lower(item->keyword);
            m_result.lowerTexts.push_back(lower);
            hashes.push_back(quint32(qHash(lower)));
        }
        PositionTable table(m_items.size());
        forEachAhead(
            hashes, [&table](quint32 hash) { return table.addressOf(hash); },
            [&](size_t i, quint32 hash) {
                m_classes.push_back(table.findOrInsert(hash, quint32(i), [&](quint32 other) {
                    return m_result.lowerTexts[other] == m_result.lowerTexts[i];
                }));
            });
    }

    /// Titles that are equal in lower case have the same number.
    quint32 titleClass(const HelpIndexSource& source)
    {
        const auto known = m_titleClasses.constFind(&source);
        if (known != m_titleClasses.cend()) {
            return *known;
        }
        const QString lower = source.title.toLower();
        const quint32 number = m_titles.value(lower, quint32(m_titles.size()));
        m_titles.insert(lower, number);
        m_titleClasses.insert(&source, number);
        return number;
    }

    /// Finds the first like entry of each, in sort order, and numbers the groups of those that have others.
    void group()
    {
        const auto order = sortedPositions();
        m_firsts.assign(m_items.size(), None);
        m_groups.assign(m_items.size(), -1);
        m_representatives.reserve(m_items.size());
        std::vector<quint32> firstOfClass(m_items.size(), None);
        PositionTable subKeywords(m_subKeywordCount);
        for (const quint32 position : order) {
            const quint32 first = m_parents[position] == None
                                      ? firstKeyword(firstOfClass[m_classes[position]], position)
                                      : firstSubKeyword(subKeywords, position);
            m_firsts[position] = first;
            if (first == position) {
                m_representatives.push_back(position);
                continue;
            }
            if (m_groups[first] < 0) {
                m_groups[first] = m_groupCount++;
            }
            m_groups[position] = m_groups[first];
        }
    }

    [[nodiscard]] std::vector<quint32> sortedPositions() const
    {
        std::vector<QStringView> keywords(m_items.size());
        std::transform(m_items.begin(), m_items.end(), keywords.begin(),
                       [](auto* item) { return item->keyword; });
        return orderOf(keywords, m_stop);
    }

    static quint32 firstKeyword(quint32& first, quint32 position)
    {
        return first == None ? first = position : first;
    }

    quint32 firstSubKeyword(PositionTable& table, quint32 position)
    {
        const auto keyOf = [this](quint32 of) {
            const quint32 parent = m_parents[of];
            return std::tuple(m_classes[of], m_classes[parent], titleClass(*m_items[parent]->source));
        };
        const auto key = keyOf(position);
        return table.findOrInsert(mixed(std::get<0>(key), std::get<1>(key), std::get<2>(key)), position,
                                  [&](quint32 other) { return keyOf(other) == key; });
    }

    void collectMembers()
    {
        auto& starts = m_result.groupStarts;
        starts.assign(size_t(m_groupCount) + 1, 0);
        for (const int number : m_groups) {
            if (number >= 0) {
                ++starts[size_t(number) + 1];
            }
        }
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        m_result.members.resize(starts.back());
        auto next = starts;
        for (size_t i = 0; i < m_items.size(); ++i) {
            if (m_groups[i] >= 0) {
                m_result.members[next[size_t(m_groups[i])]++] = m_items[i];
            }
        }
        release(m_groups);
        release(m_classes);
    }

    void makeRows()
    {
        // Chains of sub-keywords under the entry whose row they stand under; each new one goes to the front.
        std::vector<quint32> firstSub(m_items.size(), None);
        std::vector<quint32> nextSub(m_items.size(), None);
        for (const quint32 position : m_representatives) {
            if (m_parents[position] != None) {
                auto& first = firstSub[m_firsts[m_parents[position]]];
                nextSub[position] = std::exchange(first, position);
            }
        }
        release(m_firsts);
        m_result.rows.reserve(m_representatives.size());
        m_result.positions.reserve(m_representatives.size());
        for (const quint32 position : m_representatives) {
            if (m_parents[position] != None) {
                continue;
            }
            append(position, false);
            for (quint32 sub = firstSub[position]; sub != None; sub = nextSub[sub]) {
                append(sub, true);
            }
        }
    }

    void makeLookUpMarks()
    {
        release(m_items);
        release(m_parents);
        release(m_representatives);
        m_result.lookUpMarks.resize(m_result.rows.size());
        forEachAhead(
            m_result.positions, [this](quint32 position) { return m_result.lowerTexts[position].utf16(); },
            [this](size_t row, quint32 position) {
                m_result.lookUpMarks[row] = lookUpMark(m_result.lowerTexts[position]);
            });
    }

    void append(quint32 position, bool isSubKeyword)
    {
        m_result.rows.push_back({m_items[position], isSubKeyword});
        m_result.positions.push_back(position);
    }

    const std::stop_token& m_stop;
    KeywordRows m_result;
    std::vector<HelpIndexItem*> m_items;
    std::vector<quint32> m_parents;
    size_t m_subKeywordCount = 0;
    std::vector<quint32> m_classes; ///< known by the first entry of each
    std::vector<quint32> m_firsts;
    std::vector<int> m_groups;
    int m_groupCount = 0;
    std::vector<quint32> m_representatives; ///< entries that have a row of their own, in sort order
    QHash<const HelpIndexSource*, quint32> m_titleClasses;
    QHash<QString, quint32> m_titles;
};

} // namespace

QStringView LowerCaseTexts::lower(QStringView text)
{
    constexpr qsizetype blockSize = 1 << 15; // code units
    const bool isLower = std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x80 && (c.unicode() < u'A' || c.unicode() > u'Z');
    });
    if (isLower) {
        return text;
    }
    const QString lowered = text.toString().toLower();
    if (lowered == text) {
        return text;
    }
    if (m_texts.empty() || m_texts.back().capacity() - m_texts.back().size() < lowered.size()) {
        m_texts.emplace_back().reserve(std::max(blockSize, lowered.size()));
    }
    auto& block = m_texts.back();
    const qsizetype start = block.size();
    block += lowered;
    return QStringView(block).sliced(start);
}

quint64 lookUpMark(QStringView text)
{
    constexpr qsizetype length = 8;
    quint64 mark = 0;
    for (qsizetype i = 0; i < length; ++i) {
        mark = mark << 8U | (i < text.size() ? std::min<quint64>(text[i].unicode(), 0xFF) : 0);
    }
    return mark;
}

std::span<HelpIndexItem* const> KeywordRows::group(int number) const
{
    const size_t first = groupStarts[size_t(number)];
    return std::span(members).subspan(first, groupStarts[size_t(number) + 1] - first);
}

KeywordRows makeKeywordRows(const std::vector<std::span<HelpIndexItem>>& items, const std::stop_token& stop)
{
    return RowMaker(items, stop).make();
}
