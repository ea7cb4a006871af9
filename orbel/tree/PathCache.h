#ifndef ORBEL_TREE_PATHCACHE_H
#define ORBEL_TREE_PATHCACHE_H

#include "TextHash.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

class DataField;
class DataStructure;

/// What plain paths have led to: a flat hash table of (structure asked, path), one line of the processor's cache for
/// each, so that a path in use costs one look. Plain are paths without a kind, "..", "*" or a key at the end, through
/// the library's own classes only: resolving those calls nobody and depends on nothing but the tree. What a path leads
/// to changes only when something leaves the tree; then everything is dropped at once, by counting up the epoch that
/// entries belong to. Longer paths, and those beyond `maxEntries`, are walked.
///
/// Lives until the process ends and is never taken apart: trees of static storage may go after it.
class PathCache {
public:
    struct Entry {
        const DataStructure* asked;
        DataField* field;
        /// The structure in which the last segment was looked up.
        DataStructure* searched;
        std::uint32_t hash;
        /// 0 for an entry that was never used.
        std::uint32_t epoch;
        std::uint8_t length;
        char path[31];
    };

    static constexpr std::size_t maxLength = sizeof Entry::path;

    const Entry* find(const DataStructure& asked, std::string_view path) const {
        if (m_used == 0 || path.size() > maxLength)
            return nullptr;
        const std::uint32_t hash = hashOf(asked, path);
        for (std::size_t at = home(hash);; at = next(at)) {
            const Entry& entry = m_entries[at];
            if (entry.epoch != m_epoch)
                return nullptr;
            if (entry.hash == hash && entry.asked == &asked && entry.length == path.size() &&
                std::memcmp(entry.path, path.data(), path.size()) == 0)
                return &entry;
        }
    }

    /// Remembers what is not there yet; without memory for it nothing happens.
    void insert(const DataStructure& asked, std::string_view path, DataField& field, DataStructure& searched);

    /// Something has left the tree.
    void drop() {
        if (m_used != 0)
            dropAll();
    }

private:
    static constexpr std::size_t firstEntries = 64;
    static constexpr std::size_t maxEntries = 3'000'000;

    static std::uint32_t hashOf(const DataStructure& asked, std::string_view path) {
        return texthash::of(path, reinterpret_cast<std::uintptr_t>(&asked));
    }
    std::size_t home(std::uint32_t hash) const {
        return static_cast<std::size_t>((static_cast<std::uint64_t>(hash) * m_capacity) >> 32U);
    }
    std::size_t next(std::size_t at) const { return at + 1 == m_capacity ? 0 : at + 1; }

    Entry& freeEntry(std::uint32_t hash);
    bool grow();
    void dropAll();

    Entry* m_entries = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_used = 0;
    std::uint32_t m_epoch = 1;
};

#endif
