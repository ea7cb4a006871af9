#ifndef ORBEL_TREE_FIELDTIES_H
#define ORBEL_TREE_FIELDTIES_H

#include <orbel/tree/DataField.h>
#include <orbel/tree/FieldRef.h>
#include <orbel/tree/SharedPart.h>

#include "LinkTargets.h"

/// What ties a field to others. Most fields have none of it, so it is made on first need.
struct FieldTies {
    DataField* linkSource = nullptr;
    /// A copy shares them, so copying makes them in the original too.
    SharedPart<LinkTargets> targets;
    SharedPart<FieldHold> hold;
};

inline LinkTargets* DataField::targetsIfAny() const {
    return m_ties && m_ties->targets ? &*m_ties->targets : nullptr;
}

/// Calls `call` on each target of the links, by position. False when the field has died meanwhile.
template <class Call>
bool DataField::walkTargets(Call call) {
    if (!targetsIfAny())
        return true;
    // Callbacks may destroy the field, or make it a copy of another.
    const SharedPart<LinkTargets> list = m_ties->targets;
    return list->walk(*this, call);
}

#endif
