#ifndef BENCH_SCENEGROWTH_H
#define BENCH_SCENEGROWTH_H

#include "Growth.h"

/// The traversal of a scene of a host in memory; an item is a container with a plug-in.

/// All containers side by side, below one structure.
Growth::Pass wideScene(std::size_t items);

/// Structures below each other, in a hundred chains: as deep as a hundredth of the items.
Growth::Pass deepScene(std::size_t items);

#endif
