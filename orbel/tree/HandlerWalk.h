#ifndef ORBEL_TREE_HANDLERWALK_H
#define ORBEL_TREE_HANDLERWALK_H

#include <orbel/tree/DataField.h>

#include "FieldWatch.h"
#include "HandlerList.h"
#include "TreeState.h"

#include <cstddef>
#include <cstdint>

/// Marks the end of a walk over a list of handlers, in a place where whatever disturbs a list or a field can take it
/// away: so a walk asks one question after each call. Lives on the stack, walks run inside each other.
class WalkEnd {
public:
    explicit WalkEnd(DataHandler* const* end) : m_outer(treeState.walkEnd) { treeState.walkEnd = numberOf(end); }
    WalkEnd(const WalkEnd&) = delete;
    WalkEnd& operator=(const WalkEnd&) = delete;
    ~WalkEnd() {
        // What has disturbed this walk has disturbed those around it.
        if (!isDisturbed())
            treeState.walkEnd = m_outer;
    }

    bool isBehind(DataHandler* const* at) const { return numberOf(at) < treeState.walkEnd; }
    bool isDisturbed() const { return treeState.walkEnd == 0; }

private:
    static std::uintptr_t numberOf(DataHandler* const* place) { return reinterpret_cast<std::uintptr_t>(place); }

    std::uintptr_t m_outer;
};

/// Goes from one handler to the next until the end, or until anything anywhere has been disturbed: then it tells where
/// it has come to, else null. There is no marker among them that nobody has asked for.
template <class Call>
DataHandler* const* walkUndisturbed(DataHandler* const* at, DataHandler* const* end, Call call) {
    const WalkEnd walk(end);
    while (walk.isBehind(at))
        call(**at++);
    return walk.isDisturbed() ? at : nullptr;
}

/// What is left of a walk when the observers have changed during it: they may have come onto a list, or behind a
/// marker.
template <class Call>
[[gnu::noinline]] void DataField::walkOn(const FieldWatch& watch, std::size_t next, Call call) {
    while (next < static_cast<std::size_t>(m_handlers.size())) {
        const HandlerList* list = m_handlers.list();
        DataHandler* handler = list ? list->handlers()[next] : m_handlers.single();
        next = list ? next + 1 : static_cast<std::size_t>(m_handlers.size());
        if (!handler)
            continue;
        call(*handler);
        if (watch.ended())
            return;
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
    DataHandler* const* const begin = list->handlers().data();
    DataHandler* const* const end = begin + list->handlers().size();
    DataHandler* const* const marker = begin + list->unmadeMarker();
    // It nearly always stands in front, or there is none.
    const bool isInFront = marker == begin && marker != end;
    DataHandler* const* const firstEnd = isInFront ? end : marker;
    DataHandler* const* disturbed = walkUndisturbed(isInFront ? begin + 1 : begin, firstEnd, call);
    if (!disturbed && firstEnd != end)
        disturbed = walkUndisturbed(firstEnd + 1, end, call);
    // What a call may have changed is looked at only then.
    if (disturbed && !watch.ended())
        walkOn(watch, static_cast<std::size_t>(disturbed - begin), call);
}

template <class Call>
inline void DataField::walkHandlers(Call call) {
    const FieldWatch watch(*this);
    walkHandlers(watch, call);
}

#endif
