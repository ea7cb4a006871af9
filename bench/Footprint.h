#ifndef BENCH_FOOTPRINT_H
#define BENCH_FOOTPRINT_H

#include "Suite.h"
#include "Workload.h"

#include <cstddef>

/// Heap bytes of the library, the objects of handlers not counted.

/// Per leaf, after building by path and a text of twelve characters stored at each path, with no observer.
void weighLeaves(Suite& suite, Workload& workload);
/// Per registration, of one handler by path on each leaf.
void weighRegistrations(Suite& suite, Workload& workload);
/// Per registration, of so many handlers on one leaf.
void weighCrowd(Suite& suite, std::size_t handlers);

#endif
