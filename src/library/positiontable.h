// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <bit>
#include <vector>

/// A hash table of positions in a sequence that it does not know: the caller hashes and compares. Made for a
/// number of positions that is known beforehand; nothing is ever taken out.
class PositionTable {
public:
    static constexpr quint32 None = 0xFFFFFFFF;

    explicit PositionTable(size_t capacity = 0) : m_slots(std::bit_ceil(capacity + capacity / 2 + 1)) {}

    /// The position that is in the table with this hash and for which `isEqual(position)` holds; else None.
    template <typename IsEqual>
    [[nodiscard]] quint32 find(quint32 hash, IsEqual isEqual) const
    {
        return m_slots[slotOf(hash, isEqual)].position;
    }

    /// The same, and `position` is entered, and returned, when there is none.
    template <typename IsEqual>
    quint32 findOrInsert(quint32 hash, quint32 position, IsEqual isEqual)
    {
        auto& slot = m_slots[slotOf(hash, isEqual)];
        if (slot.position == None) {
            slot = {hash, position};
        }
        return slot.position;
    }

    /// Where the search for a hash begins.
    [[nodiscard]] const void* addressOf(quint32 hash) const { return &m_slots[hash & (m_slots.size() - 1)]; }

private:
    struct Slot {
        quint32 hash = 0;
        quint32 position = None;
    };

    /// There is always a free slot to end at.
    template <typename IsEqual>
    [[nodiscard]] size_t slotOf(quint32 hash, IsEqual& isEqual) const
    {
        size_t i = hash & (m_slots.size() - 1);
        while (m_slots[i].position != None && !(m_slots[i].hash == hash && isEqual(m_slots[i].position))) {
            i = (i + 1) & (m_slots.size() - 1);
        }
        return i;
    }

    std::vector<Slot> m_slots;
};
