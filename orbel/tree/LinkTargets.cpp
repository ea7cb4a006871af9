#include "LinkTargets.h"

#include <orbel/tree/DataField.h>

void LinkTargets::append(DataField* field) {
    m_targets.emplace_hint(m_targets.end(), ++m_lastTurn, field);
    m_turns.emplace(field, m_lastTurn);
}

void LinkTargets::remove(const DataField* field) {
    const auto found = m_turns.find(field);
    if (found == m_turns.end())
        return;
    for (Walk* walk = m_walks; walk; walk = walk->outer)
        if (found->second <= walk->turn)
            ++walk->skips;
    m_targets.erase(found->second);
    m_turns.erase(found);
}

DataField* LinkTargets::next(Walk& walk) const {
    auto target = m_targets.upper_bound(walk.turn);
    for (; walk.skips > 0 && target != m_targets.end(); --walk.skips)
        ++target;
    if (target == m_targets.end())
        return nullptr;
    walk.turn = target->first;
    return target->second;
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
