#include "LinkTargets.h"

#include <orbel/tree/DataField.h>

#include "TreeState.h"

#include <algorithm>

std::size_t LinkTargets::positionOf(const DataField* field) const {
    if (m_positions.empty())
        return static_cast<std::size_t>(std::find(m_targets.begin(), m_targets.end(), field) - m_targets.begin());
    const auto found = m_positions.find(field);
    return found == m_positions.end() ? m_targets.size() : found->second;
}

void LinkTargets::append(DataField* field) {
    treeState.disturb();
    m_targets.push_back(field);
    try {
        notePosition(field);
    } catch (...) {
        m_targets.pop_back();
        throw;
    }
    ++m_live;
    noteOnly();
}

/// Of the last target.
void LinkTargets::notePosition(DataField* field) {
    // Few that are left of many are still looked up, and so must be those that join them.
    if (!m_positions.empty()) {
        m_positions.emplace(field, m_targets.size() - 1);
        return;
    }
    if (m_targets.size() <= fewTargets)
        return;
    std::unordered_map<const DataField*, std::size_t> positions;
    for (std::size_t position = m_first; position < m_targets.size(); ++position)
        if (m_targets[position])
            positions.emplace(m_targets[position], position);
    m_positions.swap(positions);
}

LinkTargets::SilentFollower LinkTargets::prepareSilent(DataField* clone) {
    m_silent.reserve(m_silent.size() + 1);
    std::unordered_set<DataField*> alone{clone};
    return alone.extract(alone.begin());
}

void LinkTargets::remove(const DataField* field) {
    const std::size_t position = field ? positionOf(field) : m_targets.size();
    if (position == m_targets.size())
        return;
    treeState.disturb();
    for (Walk* walk = m_walks; walk; walk = walk->m_outer)
        if (position < walk->m_next)
            ++walk->m_skips;
    m_targets[position] = nullptr;
    m_positions.erase(field);
    --m_live;
    while (m_first < m_targets.size() && !m_targets[m_first])
        ++m_first;
    if (!m_walks && (m_live == 0 || m_targets.size() > 2 * m_live + fewTargets))
        dropHoles();
    noteOnly();
}

void LinkTargets::dropHoles() {
    m_targets.erase(std::remove(m_targets.begin(), m_targets.end(), nullptr), m_targets.end());
    m_first = 0;
    for (std::size_t position = 0; position < m_targets.size() && !m_positions.empty(); ++position)
        m_positions[m_targets[position]] = position;
}

void LinkTargets::releaseSilent(const DataField& source) {
    for (auto clone = m_silent.begin(); clone != m_silent.end();) {
        // Followers of another field that shares this list stay: they must be told when that one dies.
        if ((*clone)->getLinkSource() != &source) {
            ++clone;
            continue;
        }
        (*clone)->setSource(nullptr);
        clone = m_silent.erase(clone);
    }
}
