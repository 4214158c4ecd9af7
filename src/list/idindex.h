#pragma once

#include <QtGlobal>

#include <utility>
#include <vector>

namespace scheduleview {

/// Finds the row of an identifier. A flat hash table: one with a node per entry needs about five times the memory and
/// time.
class IdIndex
{
public:
    void clear()
    {
        m_slots.clear();
        m_count = 0;
    }

    /// Reserves memory for \a count identifiers in total.
    void reserve(std::size_t count)
    {
        std::size_t size = 16;
        while (size < count * 2)
            size *= 2;
        if (size <= m_slots.size())
            return;
        const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(size));
        m_count = 0;
        for (const Slot &slot : old) {
            if (slot.row >= 0)
                insert(slot.id, slot.row);
        }
    }

    /// Does nothing if \a id already has a row: the first one wins.
    void insert(qint32 id, int row)
    {
        reserve(m_count + 1);
        Slot &slot = m_slots[position(id)];
        if (slot.row >= 0)
            return;
        slot = {id, row};
        ++m_count;
    }

    /// Returns -1 if \a id has no row.
    [[nodiscard]] int find(qint32 id) const { return m_slots.empty() ? -1 : m_slots[position(id)].row; }

private:
    struct Slot
    {
        qint32 id = 0;
        qint32 row = -1; ///< -1: free
    };

    /// Returns the slot of \a id, or the free slot to insert it into.
    [[nodiscard]] std::size_t position(qint32 id) const
    {
        const std::size_t mask = m_slots.size() - 1;
        // Fibonacci hashing spreads consecutive identifiers evenly.
        std::size_t at = std::size_t((quint64(quint32(id)) * 0x9E3779B97F4A7C15u) >> 32) & mask;
        while (m_slots[at].row >= 0 && m_slots[at].id != id)
            at = (at + 1) & mask;
        return at;
    }

    std::vector<Slot> m_slots; ///< their number is a power of two; at most half are in use
    std::size_t m_count = 0;
};

} // namespace scheduleview
