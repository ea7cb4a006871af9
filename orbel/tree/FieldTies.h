#ifndef ORBEL_TREE_FIELDTIES_H
#define ORBEL_TREE_FIELDTIES_H

#include <orbel/tree/DataField.h>
#include <orbel/tree/FieldRef.h>
#include <orbel/tree/SharedPart.h>

#include "FieldWatch.h"
#include "Limits.h"
#include "LinkTargets.h"
#include "NestedCall.h"
#include "TreeState.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The texts of a value of several, which its clones share.
struct ValueTexts {
    int owners = 0;
    std::vector<std::string> list;
};

/// What ties a field to others. Most fields have none of it, so it is made on first need.
struct FieldTies {
    DataField* linkSource = nullptr;
    /// A copy shares them, so copying makes them in the original too.
    SharedPart<LinkTargets> targets;
    SharedPart<FieldHold> hold;
    /// None for a value of a single text that nobody has asked a vector of.
    SharedPart<ValueTexts> texts;
};

inline const SharedPart<FieldHold>& DataField::hold() {
    return m_ties && m_ties->hold ? m_ties->hold : makeHold();
}

inline LinkTargets* DataField::targetsIfAny() const {
    return m_ties && m_ties->targets ? &*m_ties->targets : nullptr;
}

/// Calls `call` on each target of the links, in the manner of LinkTargets::Walk. False when the field has died
/// meanwhile, which `watch` tells. For a field that has targets.
template <class Call>
bool DataField::walkTargets(const FieldWatch& watch, Call call) {
    const NestedCall depth(treeState.linkDepth);
    if (depth.isDeeperThan(limits::maxLinkDepth))
        return true;
    DataField* only = m_ties->targets->only();
    if (!only)
        return walkTargetsFrom(0, watch, call);
    // Nearly every field that is followed has one follower, which need not be found again.
    const std::uint64_t calm = treeState.disturbances;
    call(*only);
    return treeState.disturbances == calm || (!watch.ended() && walkTargetsFrom(1, watch, call));
}

/// Passes over the first `skips`.
template <class Call>
[[gnu::noinline]] bool DataField::walkTargetsFrom(std::size_t skips, const FieldWatch& watch, Call call) {
    // Callbacks may destroy the field, or make it a copy of another.
    const SharedPart<LinkTargets> list = m_ties->targets;
    LinkTargets::Walk walk(*list, skips);
    while (DataField* target = walk.next()) {
        call(*target);
        if (watch.ended())
            return false;
    }
    return true;
}

template <class Call>
bool DataField::walkTargets(Call call) {
    if (!targetsIfAny())
        return true;
    const FieldWatch watch(*this);
    return walkTargets(watch, call);
}

#endif
