// SPDX-License-Identifier: MIT
#include "library/keywordorder.h"

#include "library/prefetch.h"

#include <algorithm>
#include <span>
#include <utility>

namespace {

constexpr qsizetype Units = 4; ///< code units in one number
constexpr int UnitBits = 16;
constexpr qsizetype Bytes = 8; ///< code units in one number, if they are small
constexpr int ByteBits = 8;
constexpr quint64 LargestByte = 0xFF;

/// The beginning of a text as a number, and the position of the text.
struct Key {
    quint64 start;
    quint32 position;
};

/// The first four code units as a number that compares as they do; shorter texts are filled up with zeros.
quint64 leadingUnits(QStringView text)
{
    quint64 units = 0;
    for (qsizetype i = 0; i < Units; ++i) {
        units = units << UnitBits | (i < text.size() ? text[i].unicode() : 0U);
    }
    return units;
}

/// The same with eight, up to the first that does not fit; the rest is filled up with the largest byte.
quint64 leadingBytes(QStringView text)
{
    quint64 bytes = 0;
    bool isLarge = false;
    for (qsizetype i = 0; i < Bytes; ++i) {
        const quint64 unit = i < text.size() ? text[i].unicode() : 0U;
        isLarge = isLarge || unit >= LargestByte;
        bytes = bytes << ByteBits | (isLarge ? LargestByte : unit);
    }
    return bytes;
}

bool hasLargeUnit(quint64 leadingBytes)
{
    return (leadingBytes & LargestByte) == LargestByte;
}

/// Sorts by the beginnings, then each run of equal ones by what follows.
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
        sortByStart(keys, offset, leadingBytes, [this, offset](std::span<Key> run) {
            if (hasLargeUnit(run.front().start)) {
                sortByStart(run, offset, leadingUnits,
                            [this, offset](std::span<Key> equal) { sortRun(equal, offset + Units); });
            } else {
                sortRun(run, offset + Bytes);
            }
        });
    }

private:
    static constexpr size_t fewKeys = 24;
    static constexpr qsizetype deepOffset = 64;

    /// Calls `sortEqual` for each run of texts with an equal start.
    template <typename StartOf, typename SortEqual>
    void sortByStart(std::span<Key> keys, qsizetype offset, StartOf startOf, SortEqual sortEqual) const
    {
        forEachAhead(
            keys, [&](const Key& key) { return m_texts[key.position].mid(offset).utf16(); },
            [&](size_t /*i*/, Key& key) { key.start = startOf(m_texts[key.position].mid(offset)); });
        sortByNumber(keys);
        for (size_t first = 0; first < keys.size() && !m_stop.stop_requested();) {
            size_t end = first + 1;
            while (end < keys.size() && keys[end].start == keys[first].start) {
                ++end;
            }
            if (end - first > 1) {
                sortEqual(keys.subspan(first, end - first));
            }
            first = end;
        }
    }

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
            key.start = quint64(m_texts[key.position].size()) << positionBits | key.position;
        }
        sortByNumber(keys);
    }

    static void sortByNumber(std::span<Key> keys)
    {
        std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a.start < b.start; });
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
