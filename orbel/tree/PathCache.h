#ifndef ORBEL_TREE_PATHCACHE_H
#define ORBEL_TREE_PATHCACHE_H

#include "NameHash.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

class DataField;
class DataStructure;

/// What one plain path, asked of one structure, leads to. One line of the processor's cache.
struct alignas(64) PathCacheEntry {
    const DataField* asked;
    DataField* field;
    /// The structure in which the last segment was looked up.
    DataStructure* searched;
    /// The epoch, 0 for an entry that was never used, and below it the hash of the two.
    std::uint64_t mark;
    std::uint8_t length;
    /// Whether both are of the library's own classes, the field a DataValue: then its virtual operations need not be
    /// looked up.
    bool isDirect;
    char path[30];

    /// Who is told of the field in the end stands behind a path that leaves room for it. It may be gone: it is only
    /// brought near, beside the field instead of after it.
    bool hasRoomForObserver() const { return length <= sizeof path - sizeof(void*); }
    void bringObserverNear() const {
        if (hasRoomForObserver())
            __builtin_prefetch(observer());
    }
    void noteObserver(const void* told) {
        if (hasRoomForObserver() && observer() != told)
            std::memcpy(path + sizeof path - sizeof told, &told, sizeof told);
    }

private:
    const void* observer() const {
        const void* noted = nullptr;
        std::memcpy(&noted, path + sizeof path - sizeof noted, sizeof noted);
        return noted;
    }
};

/// The structure that the last path with kinds went through before its last segment, and how it got there. Trees are
/// built structure by structure, so the next path often begins with the same text.
struct PathPlace {
    static constexpr std::size_t maxDepth = 8;
    static constexpr std::size_t maxLength = 120;

    /// From the structure asked down to the one reached; `depth` steps.
    std::array<DataStructure*, maxDepth + 1> chain;
    std::size_t depth;
    std::size_t length;
    std::array<char, maxLength> path;

    /// The last segment of a path whose others led here; no value for other paths.
    std::optional<std::string_view> behind(const DataStructure& asked, std::string_view text) const {
        if (length == 0 || length >= text.size() || chain[0] != &asked || text[length] != '/' ||
            !namehash::areEqual(path.data(), text.data(), length))
            return std::nullopt;
        const std::string_view segment = text.substr(length + 1);
        return segment.find('/') == std::string_view::npos ? std::optional(segment) : std::nullopt;
    }
};

/// What plain paths have led to: a flat hash table of (structure asked, path), one line of the processor's cache for
/// each, so that a path in use costs one look. Plain are paths without a kind, "..", "*" or a key at the end, through
/// the library's own classes only: resolving those calls nobody and depends on nothing but the tree. What a path leads
/// to changes only when something leaves the tree; then everything is dropped at once, by counting up the epoch that
/// entries belong to. Longer paths, and those beyond `maxEntries`, are walked.
///
/// Gives its memory back with the last structure, and has no destructor: trees of static storage may go after it.
class PathCache {
public:
    using Entry = PathCacheEntry;

    static constexpr std::size_t maxLength = sizeof PathCacheEntry::path;
    static constexpr std::size_t maxEntries = 3'000'000;

    PathCache() = default;
    /// As if everything had been dropped so many times; with room for no more than `mostEntries`, 64 or more.
    explicit PathCache(std::uint32_t drops, std::size_t mostEntries = maxEntries)
        : m_mostEntries(mostEntries), m_epoch((std::uint64_t{drops} + 1) << 32U) {}

    Entry* find(const DataField& asked, std::string_view path) const {
        if (path.size() > maxLength)
            return nullptr;
        return path.size() >= usualLength ? look(asked, path) : lookForShort(asked, path);
    }

    /// Remembers what is not there yet; without memory for it nothing happens.
    void insert(DataStructure& asked, std::string_view path, DataField& field, DataStructure& searched);

    /// Something has left the tree.
    void drop() {
        m_place.length = 0;
        if (m_used != 0)
            dropAll();
    }

    PathPlace& place() { return m_place; }

    /// Until something is remembered there is none.
    bool hasMemory() const { return m_entries != &s_nothing; }
    /// Drops everything and gives the memory back.
    void release();

private:
    static constexpr std::size_t firstEntries = 64;
    static constexpr std::size_t usualLength = 8;
    static constexpr std::uint64_t firstEpoch = std::uint64_t{1} << 32U;

    Entry* look(const DataField& asked, std::string_view path) const {
        const std::uint64_t mark = markOf(asked, path);
        Entry* entry = m_entries + home(mark);
        while (entry->mark != mark || entry->asked != &asked || entry->length != path.size() ||
               !namehash::areShortEqual(entry->path, path.data(), path.size())) {
            if (isFree(*entry))
                return nullptr;
            if (++entry == m_entries + m_capacity)
                entry = m_entries;
        }
        return entry;
    }
    /// Nearly all paths are longer, and need fewer registers without these.
    [[gnu::noinline]] Entry* lookForShort(const DataField& asked, std::string_view path) const {
        return look(asked, path);
    }
    std::uint64_t markOf(const DataField& asked, std::string_view path) const {
        return m_epoch | namehash::of(path, reinterpret_cast<std::uintptr_t>(&asked));
    }
    std::size_t home(std::uint64_t mark) const {
        return static_cast<std::size_t>(((mark & UINT32_MAX) * m_capacity) >> 32U);
    }
    bool isFree(const Entry& entry) const { return (entry.mark ^ m_epoch) > UINT32_MAX; }
    std::size_t next(std::size_t at) const { return at + 1 == m_capacity ? 0 : at + 1; }

    Entry& freeEntry(std::uint64_t mark);
    bool grow();
    void dropAll();

    /// What is looked through before anything is remembered: nothing.
    static Entry s_nothing;

    Entry* m_entries = &s_nothing;
    std::size_t m_capacity = 1;
    std::size_t m_used = 0;
    std::size_t m_mostEntries = maxEntries;
    /// Counted in the upper half.
    std::uint64_t m_epoch = firstEpoch;
    PathPlace m_place = {};
};

#endif
