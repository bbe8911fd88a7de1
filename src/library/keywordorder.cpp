// SPDX-License-Identifier: MIT
#include "library/keywordorder.h"

#include <algorithm>
#include <span>
#include <utility>

namespace {

constexpr qsizetype Units = 4; ///< code units in one number
constexpr int UnitBits = 16;

/// Four code units of a text as a number, and the position of the text.
struct Key {
    quint64 units;
    quint32 position;
};

/// Sorts by numbers of four code units, then each run of equal ones by the next four.
class Order {
public:
    Order(const std::vector<QStringView>& texts, const std::stop_token& stop) : m_texts(texts), m_stop(stop)
    {
    }

    // Recursion ends with the longest text of a run: it is short, or few texts are left.
    void sort(std::span<Key> keys, qsizetype offset)
    {
        if (keys.size() <= fewKeys || offset >= deepOffset) {
            sortDirectly(keys, offset);
            return;
        }
        for (auto& key : keys) {
            key.units = leadingUnits(m_texts[key.position].mid(offset));
        }
        sortByUnits(keys);
        for (size_t first = 0; first < keys.size() && !m_stop.stop_requested();) {
            size_t end = first + 1;
            while (end < keys.size() && keys[end].units == keys[first].units) {
                ++end;
            }
            if (end - first > 1) {
                sortRun(keys.subspan(first, end - first), offset + Units);
            }
            first = end;
        }
    }

private:
    static constexpr size_t fewKeys = 24;
    static constexpr qsizetype deepOffset = 64;

    /// Sorts texts that are equal up to `offset`, but for zeros at the end.
    void sortRun(std::span<Key> keys, qsizetype offset)
    {
        constexpr int positionBits = 32;
        if (!std::all_of(keys.begin(), keys.end(),
                         [&](const Key& key) { return m_texts[key.position].size() <= offset; })) {
            sort(keys, offset);
            return;
        }
        for (auto& key : keys) {
            key.units = quint64(m_texts[key.position].size()) << positionBits | key.position;
        }
        sortByUnits(keys);
    }

    static void sortByUnits(std::span<Key> keys)
    {
        std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a.units < b.units; });
    }

    void sortDirectly(std::span<Key> keys, qsizetype offset) const
    {
        std::sort(keys.begin(), keys.end(), [&](const Key& a, const Key& b) {
            const int order = m_texts[a.position].mid(offset).compare(m_texts[b.position].mid(offset));
            // Texts that are equal but for zeros at the end differ in length only.
            return order != 0 ? order < 0
                              : std::pair(m_texts[a.position].size(), a.position) <
                                    std::pair(m_texts[b.position].size(), b.position);
        });
    }

    const std::vector<QStringView>& m_texts;
    const std::stop_token& m_stop;
};

} // namespace

quint64 leadingUnits(QStringView text)
{
    quint64 units = 0;
    for (qsizetype i = 0; i < Units; ++i) {
        units = units << UnitBits | (i < text.size() ? text[i].unicode() : 0U);
    }
    return units;
}

std::vector<quint32> orderOf(const std::vector<QStringView>& texts, const std::stop_token& stop)
{
    std::vector<Key> keys(texts.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        keys[i].position = quint32(i);
    }
    Order(texts, stop).sort(keys, 0);
    std::vector<quint32> positions(keys.size());
    std::transform(keys.begin(), keys.end(), positions.begin(), [](const Key& key) { return key.position; });
    return positions;
}
