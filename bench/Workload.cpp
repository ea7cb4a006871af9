#include "Workload.h"

#include <string>

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

    m_visits = m_paths;
    shuffle(m_visits);

    for (int value = 0; value < valueCount; ++value)
        m_values.emplace_back("value " + std::to_string(100'000 + value));
}
