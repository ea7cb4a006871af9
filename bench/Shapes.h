#ifndef BENCH_SHAPES_H
#define BENCH_SHAPES_H

#include "Suite.h"

#include <cstddef>

/// The same number of leaves in one structure and in a square of structures, each found by path in a random order: the
/// breadth of a structure must not show.
void addShapes(Suite& suite, std::size_t leaves);

#endif
