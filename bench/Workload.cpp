#include "Workload.h"

#include <cstdint>
#include <random>
#include <string>
#include <utility>

namespace {

// A prime, so that a leaf never meets the text it holds when the round comes back to it.
constexpr int valueCount = 251;

} // namespace

Workload::Workload(std::size_t leaves) {
    std::size_t fields = 1;
    while (fields * fields < leaves)
        ++fields;

    m_kindPaths.reserve(leaves);
    m_paths.reserve(leaves);
    for (std::size_t leaf = 0; leaf < leaves; ++leaf) {
        const std::string node = "node" + std::to_string(leaf / fields);
        const std::string field = "field" + std::to_string(leaf % fields);
        m_kindPaths.emplace_back("node:scene/node:" + node + "/string:" + field);
        m_paths.emplace_back("scene/" + node + '/' + field);
    }

    // By hand, because std::shuffle may order differently from one standard library to the next.
    m_visits = m_paths;
    std::mt19937_64 random(20240229);
    for (std::size_t left = leaves; left > 1; --left)
        std::swap(m_visits[left - 1], m_visits[random() % left]);

    for (int value = 0; value < valueCount; ++value)
        m_values.emplace_back("value " + std::to_string(100'000 + value));
}
