#ifndef ORBEL_TREE_LIMITS_H
#define ORBEL_TREE_LIMITS_H

#include <cstddef>

namespace limits {

/// What an array or a value can hold: a mistyped index in a show must not eat the host's memory.
constexpr int maxElements = 16'777'216;

/// The longest name; what is beyond is cut.
constexpr std::size_t maxNameLength = 99;

/// The longest field path that is resolved.
constexpr std::size_t maxPathLength = 511;

} // namespace limits

#endif
