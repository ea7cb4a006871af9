#ifndef ORBEL_TREE_HANDLERWALK_H
#define ORBEL_TREE_HANDLERWALK_H

#include <orbel/tree/DataField.h>

#include "FieldWatch.h"
#include "HandlerList.h"
#include "TreeState.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Out of the way of the walk over one handler, which is nearly every walk.
template <class Call>
[[gnu::noinline]] void DataField::walkList(int first, Call call) {
    const FieldWatch watch(*this);
    auto at = static_cast<std::size_t>(first);
    // What the calls may have changed is looked at again only when anything anywhere has been disturbed.
    do {
        const std::uint64_t calm = treeState.disturbances;
        const std::vector<DataHandler*>& handlers = m_handlers.list()->handlers();
        const std::size_t count = handlers.size();
        DataHandler* const* const begin = handlers.data();
        while (at < count && treeState.disturbances == calm)
            if (DataHandler* handler = begin[at++])
                call(*handler);
        if (treeState.disturbances == calm)
            return;
    } while (!watch.ended());
}

/// What is left of a walk when the observers have changed during it.
template <class Call>
[[gnu::noinline]] void DataField::walkOn(int next, Call call) {
    while (!m_handlers.list()) {
        DataHandler* handler = m_handlers.single();
        if (!handler || m_handlers.size() <= next)
            return;
        const FieldWatch watch(*this);
        next = m_handlers.size();
        call(*handler);
        if (watch.ended())
            return;
    }
    walkList(next, call);
}

/// Calls `call` on each handler by position, re-reading the size: the observers may change meanwhile, and come onto a
/// list, or behind a marker. When the field dies the walk ends. The marker hears nothing.
template <class Call>
inline void DataField::walkHandlers(Call call) {
    if (m_handlers.list()) {
        walkList(0, call);
        return;
    }
    DataHandler* handler = m_handlers.single();
    if (!handler)
        return;
    const FieldWatch watch(*this);
    const auto before = m_handlers.state();
    const int next = m_handlers.size();
    call(*handler);
    if (!watch.ended() && m_handlers.state() != before)
        walkOn(next, call);
}

#endif
