#include "PathCache.h"

#include <orbel/tree/DataValue.h>

#include "ExactClass.h"

#include <algorithm>
#include <new>

PathCacheEntry PathCache::s_nothing = {};

void PathCache::insert(DataStructure& asked, std::string_view path, DataField& field, DataStructure& searched) {
    if (path.size() > maxLength)
        return;
    // Two thirds full; then a look that finds takes two steps.
    if ((m_used + 1) * 16 > m_capacity * 11 && !grow())
        return;
    const std::uint64_t mark = markOf(asked, path);
    Entry& entry = freeEntry(mark);
    entry.asked = &asked;
    entry.field = &field;
    entry.searched = &searched;
    entry.mark = mark;
    entry.isDirect = isExactly<DataValue>(field) && isOwnStructure(asked);
    entry.length = static_cast<std::uint8_t>(path.size());
    path.copy(entry.path, path.size());
    ++m_used;
}

void PathCache::release() {
    if (hasMemory())
        delete[] m_entries;
    *this = PathCache();
}

PathCache::Entry& PathCache::freeEntry(std::uint64_t mark) {
    std::size_t at = home(mark);
    while (!isFree(m_entries[at]))
        at = next(at);
    return m_entries[at];
}

bool PathCache::grow() {
    const std::size_t capacity = std::max(firstEntries, m_capacity + m_capacity / 4);
    if (capacity > m_mostEntries) {
        dropAll();
        return true;
    }
    PathCache larger(0, m_mostEntries);
    larger.m_entries = new (std::nothrow) Entry[capacity]();
    if (!larger.m_entries)
        return false;
    larger.m_capacity = capacity;
    larger.m_epoch = m_epoch;
    for (const Entry* entry = m_entries; entry != m_entries + m_capacity; ++entry)
        if (!isFree(*entry))
            larger.freeEntry(entry->mark) = *entry;
    larger.m_used = m_used;
    larger.m_place = m_place;
    if (hasMemory())
        delete[] m_entries;
    *this = larger;
    return true;
}

void PathCache::dropAll() {
    m_used = 0;
    m_epoch += firstEpoch;
    if (m_epoch != 0)
        return;
    std::fill(m_entries, m_entries + m_capacity, Entry());
    m_epoch = firstEpoch;
}
