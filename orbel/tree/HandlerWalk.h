#ifndef ORBEL_TREE_HANDLERWALK_H
#define ORBEL_TREE_HANDLERWALK_H

#include <orbel/tree/DataField.h>

#include "FieldWatch.h"
#include "HandlerList.h"
#include "TreeState.h"

#include <cstddef>
#include <cstdint>

/// What is left of a walk when the observers have changed during it: they may have come onto a list, or behind a
/// marker.
template <class Call>
[[gnu::noinline]] void DataField::walkOn(const FieldWatch& watch, std::size_t next, Call call) {
    while (!watch.ended() && next < static_cast<std::size_t>(m_handlers.size())) {
        const HandlerList* list = m_handlers.list();
        DataHandler* handler = list ? list->handlers()[next] : m_handlers.single();
        next = list ? next + 1 : static_cast<std::size_t>(m_handlers.size());
        if (handler)
            call(*handler);
    }
}

/// The walk over one handler, which is nearly every walk.
template <class Call>
inline void DataField::walkSingle(const FieldWatch& watch, Call call) {
    DataHandler* handler = m_handlers.single();
    if (!handler)
        return;
    const auto before = m_handlers.state();
    const auto next = static_cast<std::size_t>(m_handlers.size());
    call(*handler);
    if (!watch.ended() && m_handlers.state() != before)
        walkOn(watch, next, call);
}

/// Calls `call` on each handler by position, re-reading the size: the observers may change meanwhile. When the field
/// dies, which `watch` tells, the walk ends. The marker hears nothing.
template <class Call>
inline void DataField::walkHandlers(const FieldWatch& watch, Call call) {
    const HandlerList* list = m_handlers.list();
    if (!list) {
        walkSingle(watch, call);
        return;
    }
    // What a call may have changed is looked at only when anything anywhere has been disturbed.
    const std::uint64_t calm = treeState.disturbances;
    DataHandler* const* const begin = list->handlers().data();
    DataHandler* const* const end = begin + list->handlers().size();
    for (DataHandler* const* at = begin; at != end;)
        if (DataHandler* handler = *at++) {
            call(*handler);
            if (treeState.disturbances != calm) {
                if (!watch.ended())
                    walkOn(watch, static_cast<std::size_t>(at - begin), call);
                return;
            }
        }
}

template <class Call>
inline void DataField::walkHandlers(Call call) {
    const FieldWatch watch(*this);
    walkHandlers(watch, call);
}

#endif
