#include "PathCache.h"

#include <algorithm>
#include <new>

void PathCache::insert(const DataStructure& asked, std::string_view path, DataField& field, DataStructure& searched) {
    if (path.size() > maxLength)
        return;
    // Three quarters full; then a look that finds takes two or three steps.
    if ((m_used + 1) * 4 > m_capacity * 3 && !grow())
        return;
    const std::uint32_t hash = hashOf(asked, path);
    Entry& entry = freeEntry(hash);
    entry.asked = &asked;
    entry.field = &field;
    entry.searched = &searched;
    entry.hash = hash;
    entry.epoch = m_epoch;
    entry.length = static_cast<std::uint8_t>(path.size());
    path.copy(entry.path, path.size());
    ++m_used;
}

PathCache::Entry& PathCache::freeEntry(std::uint32_t hash) {
    std::size_t at = home(hash);
    while (m_entries[at].epoch == m_epoch)
        at = next(at);
    return m_entries[at];
}

bool PathCache::grow() {
    const std::size_t capacity = std::max(firstEntries, m_capacity + m_capacity / 2);
    if (capacity > maxEntries) {
        dropAll();
        return true;
    }
    PathCache larger;
    larger.m_entries = new (std::nothrow) Entry[capacity]();
    if (!larger.m_entries)
        return false;
    larger.m_capacity = capacity;
    larger.m_epoch = m_epoch;
    for (const Entry* entry = m_entries; entry != m_entries + m_capacity; ++entry)
        if (entry->epoch == m_epoch)
            larger.freeEntry(entry->hash) = *entry;
    larger.m_used = m_used;
    delete[] m_entries;
    *this = larger;
    return true;
}

void PathCache::dropAll() {
    m_used = 0;
    if (++m_epoch != 0)
        return;
    std::fill(m_entries, m_entries + m_capacity, Entry());
    m_epoch = 1;
}
