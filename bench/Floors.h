#ifndef BENCH_FLOORS_H
#define BENCH_FLOORS_H

#include "Workload.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// The floors: the least that plain containers need to find a text by path, assign it and tell observers.

class Observer {
public:
    Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    virtual ~Observer() = default;
    virtual void onChange(const std::string& text) = 0;

    /// One object per observer, and a class that no caller sees: the compiler can only make a virtual call of it.
    static std::vector<std::unique_ptr<Observer>> make(std::size_t count);
    /// Calls of all observers so far.
    static std::size_t calls();
};

/// A leaf with one observer.
struct Leaf {
    std::string text;
    Observer* observer = nullptr;

    void observe(Observer& added) { observer = &added; }
    void notify() { observer->onChange(text); }
};

/// A leaf with any number of observers, for the fan-out.
struct FanLeaf {
    std::string text;
    std::vector<Observer*> observers;

    void observe(Observer& added) { observers.push_back(&added); }
    void notify() {
        for (Observer* observer : observers)
            observer->onChange(text);
    }
};

/// floor-map: ordered maps inside ordered maps, one for each segment, searched with string views.
template <class LeafType>
class MapContainer {
public:
    static constexpr std::string_view name = "floor-map";

    LeafType& add(std::string_view path) {
        const Segments segments(path);
        return entry(entry(entry(m_scenes, segments.scene), segments.node), segments.field);
    }

    LeafType* find(std::string_view path) {
        const Segments segments(path);
        const auto scene = m_scenes.find(segments.scene);
        if (scene == m_scenes.end())
            return nullptr;
        const auto node = scene->second.find(segments.node);
        if (node == scene->second.end())
            return nullptr;
        const auto field = node->second.find(segments.field);
        return field == node->second.end() ? nullptr : &field->second;
    }

    void clear() { m_scenes.clear(); }

private:
    using Fields = std::map<std::string, LeafType, std::less<>>;
    using Nodes = std::map<std::string, Fields, std::less<>>;
    using Scenes = std::map<std::string, Nodes, std::less<>>;

    struct Segments {
        explicit Segments(std::string_view path) {
            const std::size_t first = path.find('/');
            const std::size_t second = path.find('/', first + 1);
            scene = path.substr(0, first);
            node = path.substr(first + 1, second - first - 1);
            field = path.substr(second + 1);
        }
        std::string_view scene;
        std::string_view node;
        std::string_view field;
    };

    template <class Map>
    static typename Map::mapped_type& entry(Map& map, std::string_view key) {
        const auto at = map.lower_bound(key);
        return at != map.end() && at->first == key ? at->second : map.try_emplace(at, std::string(key))->second;
    }

    Scenes m_scenes;
};

/// floor-hash: one hash map from the whole path.
template <class LeafType>
class HashContainer {
public:
    static constexpr std::string_view name = "floor-hash";

    LeafType& add(std::string_view path) { return m_leaves.try_emplace(std::string(path)).first->second; }

    LeafType* find(std::string_view path) {
        const auto leaf = m_leaves.find(path);
        return leaf == m_leaves.end() ? nullptr : &leaf->second;
    }

    void clear() { m_leaves = {}; }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view path) const { return std::hash<std::string_view>()(path); }
    };

    std::unordered_map<std::string, LeafType, Hash, std::equal_to<>> m_leaves;
};

/// floor-bare: a flat table of our own, searched from the place that the hash of the whole path tells. For information:
/// what is left when nodes, buckets and erasing are given up.
template <class LeafType>
class BareContainer {
public:
    static constexpr std::string_view name = "floor-bare";

    LeafType& add(std::string_view path) {
        if (m_used * 2 >= m_entries.size())
            grow();
        const std::size_t hash = std::hash<std::string_view>()(path);
        Entry& entry = at(hash, path);
        if (entry.path.empty()) {
            entry.hash = hash;
            entry.path = path;
            ++m_used;
        }
        return entry.leaf;
    }

    LeafType* find(std::string_view path) {
        Entry& entry = at(std::hash<std::string_view>()(path), path);
        return entry.path.empty() ? nullptr : &entry.leaf;
    }

    void clear() {
        m_entries = std::vector<Entry>(smallest);
        m_used = 0;
    }

private:
    struct Entry {
        std::size_t hash = 0;
        std::string path;
        LeafType leaf;
    };

    static constexpr std::size_t smallest = 16;

    /// The entry of the path, else the free one where it belongs.
    Entry& at(std::size_t hash, std::string_view path) {
        const std::size_t mask = m_entries.size() - 1;
        std::size_t place = hash & mask;
        while (!m_entries[place].path.empty() && (m_entries[place].hash != hash || m_entries[place].path != path))
            place = (place + 1) & mask;
        return m_entries[place];
    }

    void grow() {
        std::vector<Entry> before(m_entries.size() * 2);
        before.swap(m_entries);
        for (Entry& entry : before)
            if (!entry.path.empty()) {
                Entry& moved = at(entry.hash, entry.path);
                moved = std::move(entry);
            }
    }

    // Always a power of two, at most half full.
    std::vector<Entry> m_entries = std::vector<Entry>(smallest);
    std::size_t m_used = 0;
};

/// A floor with the operations that are measured; LibraryTree has the same.
template <class Container>
class Floor {
public:
    static constexpr std::string_view name = Container::name;
    static constexpr bool observes = true;

    void build(Workload& workload) {
        for (const Workload::Path& path : workload.paths())
            m_container.add(path.view());
    }

    void makeObservers(std::size_t count) { m_observers = Observer::make(count); }

    /// One observer on every leaf.
    void observeAll(Workload& workload) {
        auto observer = m_observers.begin();
        for (const Workload::Path& path : workload.paths())
            m_container.find(path.view())->observe(**observer++);
    }

    /// All observers on one leaf.
    void observeOne(Workload::Path& path) {
        for (const auto& observer : m_observers)
            m_container.find(path.view())->observe(*observer);
    }

    bool set(Workload::Path& path, Workload::Value& value) {
        auto* leaf = m_container.find(path.view());
        if (!leaf)
            return false;
        leaf->text.assign(value.view());
        leaf->notify();
        return true;
    }

    const char* get(Workload::Path& path) {
        auto* leaf = m_container.find(path.view());
        return leaf ? leaf->text.data() : nullptr;
    }

    /// Destroys the containers with all leaves.
    void destroy() { m_container.clear(); }

    static std::size_t calls() { return Observer::calls(); }

private:
    Container m_container;
    std::vector<std::unique_ptr<Observer>> m_observers;
};

#endif
