// SPDX-License-Identifier: MIT
#include "library/keywordrows.h"

#include "library/keywordorder.h"
#include "library/positiontable.h"
#include "library/prefetch.h"

#include <QHash>

#include <algorithm>
#include <future>
#include <numeric>
#include <tuple>
#include <utility>

namespace {

constexpr quint32 None = PositionTable::None;

quint32 mixed(quint32 a, quint32 b, quint32 c)
{
    return quint32(qHashMulti(QHashSeed::globalSeed(), a, b, c));
}

/// Titles that are equal in lower case have the same number.
class TitleClasses {
public:
    quint32 of(const HelpIndexSource& source)
    {
        if (m_last != &source) {
            const QString lower = source.title.toLower();
            m_lastNumber = m_numbers.value(lower, quint32(m_numbers.size()));
            m_numbers.insert(lower, m_lastNumber);
            m_last = &source;
        }
        return m_lastNumber;
    }

private:
    QHash<QString, quint32> m_numbers;
    const HelpIndexSource* m_last = nullptr; ///< neighbours mostly share one
    quint32 m_lastNumber = 0;
};

/// Gives the memory back, which an assignment of {} does not.
template <typename Value>
void release(std::vector<Value>& values)
{
    std::vector<Value>().swap(values);
}

/// Makes the rows of one list of entries, which are known by their positions in load order.
class RowMaker {
public:
    RowMaker(const std::vector<std::span<HelpIndexItem>>& spans, const std::stop_token& stop)
        : m_spans(spans), m_stop(stop)
    {
        for (const auto& span : spans) {
            m_count += span.size();
        }
    }

    KeywordRows make()
    {
        constexpr size_t worthAThread = 20'000;
        auto order = std::async(m_count < worthAThread ? std::launch::deferred : std::launch::async,
                                [this] { return sortedPositions(); });
        flatten();
        classify();
        classifySubKeywords();
        group(order.get());
        if (!m_stop.stop_requested()) {
            collectMembers();
            makeRows();
            collectLookUpMarks();
        }
        return std::move(m_result);
    }

private:
    void flatten()
    {
        m_items.reserve(m_count);
        m_parents.reserve(m_count);
        for (const auto& span : m_spans) {
            for (auto& item : span) {
                const bool isSubKeyword = item.parent() != nullptr;
                m_parents.push_back(isSubKeyword ? quint32(m_items.size()) - quint32(item.parentDistance)
                                                 : None);
                m_items.push_back(&item);
                m_subKeywordCount += isSubKeyword ? 1 : 0;
            }
        }
    }

    /// Entries have the same class when their keywords are equal in lower case.
    void classify()
    {
        m_result.lowerTexts.reserve(m_items.size());
        m_marks.reserve(m_items.size());
        m_classes.reserve(m_items.size());
        for (const auto* item : m_items) {
            const QStringView lower = m_result.texts.lower(item->keyword);
            m_result.lowerTexts.push_back(lower);
            m_marks.push_back(lookUpMark(lower));
            m_classes.push_back(quint32(qHash(lower, QHashSeed::globalSeed())));
        }
        PositionTable table(m_items.size());
        forEachAhead(
            m_classes, [&table](quint32 hash) { return table.addressOf(hash); },
            [&](size_t i, quint32& hashThenClass) {
                hashThenClass = table.findOrInsert(hashThenClass, quint32(i), [&](quint32 other) {
                    return m_result.lowerTexts[other] == m_result.lowerTexts[i];
                });
            });
    }

    /// Sub-keywords have the same class when their keywords and those that they stand under have, and the
    /// titles of their help sets are equal in lower case.
    void classifySubKeywords()
    {
        m_subClasses.resize(m_items.size());
        TitleClasses titles;
        PositionTable table(m_subKeywordCount);
        const auto keyOf = [&](quint32 position) {
            const quint32 parent = m_parents[position];
            return std::tuple(m_classes[position], m_classes[parent], titles.of(*m_items[parent]->source));
        };
        for (quint32 i = 0; i < m_items.size(); ++i) {
            if (m_parents[i] != None) {
                const auto key = keyOf(i);
                m_subClasses[i] = table.findOrInsert(std::apply(mixed, key), i,
                                                     [&](quint32 other) { return keyOf(other) == key; });
            }
        }
    }

    /// Finds the first like entry of each, in sort order, and numbers the groups of those that have others.
    void group(const std::vector<quint32>& order)
    {
        m_firsts.assign(m_items.size(), None);
        m_groups.assign(m_items.size(), -1);
        m_representatives.reserve(m_items.size());
        std::vector<quint32> firstKeywords(m_items.size(), None); // of each class
        std::vector<quint32> firstSubKeywords(m_items.size(), None);
        for (const quint32 position : order) {
            quint32& first = m_parents[position] == None ? firstKeywords[m_classes[position]]
                                                         : firstSubKeywords[m_subClasses[position]];
            if (first == None) {
                first = position;
            }
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
        std::vector<QStringView> keywords;
        keywords.reserve(m_count);
        for (const auto& span : m_spans) {
            std::transform(span.begin(), span.end(), std::back_inserter(keywords),
                           [](const HelpIndexItem& item) { return item.keyword; });
        }
        return orderOf(keywords, m_stop);
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
        release(m_subClasses);
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

    void collectLookUpMarks()
    {
        m_result.lookUpMarks.reserve(m_result.positions.size());
        for (const quint32 position : m_result.positions) {
            m_result.lookUpMarks.push_back(m_marks[position]);
        }
    }

    void append(quint32 position, bool isSubKeyword)
    {
        m_result.rows.push_back({m_items[position], isSubKeyword});
        m_result.positions.push_back(position);
    }

    const std::vector<std::span<HelpIndexItem>>& m_spans;
    const std::stop_token& m_stop;
    size_t m_count = 0; ///< of all entries
    KeywordRows m_result;
    std::vector<HelpIndexItem*> m_items;
    std::vector<quint32> m_parents;
    size_t m_subKeywordCount = 0;
    std::vector<quint64> m_marks;      ///< lookUpMark() of each entry
    std::vector<quint32> m_classes;    ///< known by the first entry of each
    std::vector<quint32> m_subClasses; ///< the same; only of sub-keywords
    std::vector<quint32> m_firsts;
    std::vector<int> m_groups;
    int m_groupCount = 0;
    std::vector<quint32> m_representatives; ///< entries that have a row of their own, in sort order
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
