#ifndef ORBEL_HOST_CONTAINERWALK_H
#define ORBEL_HOST_CONTAINERWALK_H

#include "Host.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace host {

/// Visits containers that are siblings and all below them, parents before children. `visit` is called with the
/// container, its position among its siblings and the context of its siblings, and returns the context of its children,
/// or nothing to pass them over.
///
/// Siblings are listed before the first of them is visited, and those that are gone by their turn are left out: what is
/// called meanwhile may take containers away. Scenes may be deeper than the stack is.
template <class Context, class Visit>
void walk(std::vector<CONTAINER> containers, Context context, Visit visit) {
    struct Level {
        std::vector<CONTAINER> containers;
        Context context;
        std::size_t next = 0;
    };
    std::vector<Level> levels;
    levels.push_back({std::move(containers), std::move(context)});
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.containers.size()) {
            levels.pop_back();
            continue;
        }
        const CONTAINER container = level.containers[level.next];
        const int index = static_cast<int>(level.next++);
        if (!isValid(container.id))
            continue;
        std::optional<Context> below = visit(container, index, level.context);
        if (!below)
            continue;
        if (auto children = childrenOf(container); !children.empty())
            levels.push_back({std::move(children), std::move(*below)});
    }
}

} // namespace host

#endif
