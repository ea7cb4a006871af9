#ifndef BENCH_WORKLOAD_H
#define BENCH_WORKLOAD_H

#include <array>
#include <cstddef>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

/// A text as the library takes it (char*), with the length that the floors are given for nothing.
template <std::size_t Capacity>
class Text {
public:
    explicit Text(std::string_view text) : m_length(text.copy(m_text.data(), Capacity - 1)) {}

    char* chars() { return m_text.data(); }
    std::string_view view() const { return {m_text.data(), m_length}; }

private:
    std::array<char, Capacity> m_text{};
    std::size_t m_length;
};

/// In a random order that is the same in every run. By hand, because std::shuffle may order differently from one
/// standard library to the next.
template <class Item>
void shuffle(std::vector<Item>& items) {
    std::mt19937_64 random(20240229);
    for (std::size_t left = items.size(); left > 1; --left)
        std::swap(items[left - 1], items[random() % left]);
}

/// What every subject works on: the paths "scene/nodeN/fieldM" of a number of leaves, and the texts to write.
///
/// The split is square: as many fields in a node as there are nodes (1,000 leaves: 32, 1,000,000 leaves: 1,000).
/// Trees are built node by node, as a configuration would, and visited in a random order that is the same in every
/// run. Nothing here is made while the clock runs.
class Workload {
public:
    using Path = Text<56>;
    using Value = Text<24>;

    explicit Workload(std::size_t leaves);

    std::size_t leaves() const { return m_visits.size(); }

    /// In building order: with kinds ("node:scene/node:nodeN/string:fieldM") and without.
    std::vector<Path>& kindPaths() { return m_kindPaths; }
    const std::vector<Path>& paths() const { return m_paths; }

    /// The next leaf of the random order, and the next text. Both go on where the repetition before stopped, so that
    /// large trees are visited cold.
    Path& nextVisit() { return next(m_visits, m_visit); }
    /// The same for gets, which would otherwise shift the texts against the leaves until one meets its own text again.
    Path& nextLookup() { return next(m_visits, m_lookup); }
    Value& nextValue() { return next(m_values, m_value); }

    /// From the beginning, so that subjects measured one after another do the same.
    void rewind() { m_visit = m_lookup = m_value = 0; }

private:
    template <class Item>
    static Item& next(std::vector<Item>& items, std::size_t& at) {
        Item& item = items[at];
        at = at + 1 == items.size() ? 0 : at + 1;
        return item;
    }

    std::vector<Path> m_kindPaths;
    std::vector<Path> m_paths;
    std::vector<Path> m_visits;
    std::vector<Value> m_values;
    std::size_t m_visit = 0;
    std::size_t m_lookup = 0;
    std::size_t m_value = 0;
};

#endif
