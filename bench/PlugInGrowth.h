#ifndef BENCH_PLUGINGROWTH_H
#define BENCH_PLUGINGROWTH_H

#include "Growth.h"

#include <cstddef>

/// Values that a plug-in each follows, set by path; as they are, and through a conversion table of 1,000 entries.
Growth::Pass plugIns(std::size_t items);
Growth::Pass convertedPlugIns(std::size_t items);
/// One value, followed through a conversion table of so many entries; each is wanted once.
Growth::Pass conversion(std::size_t items);
/// Reading a conversion table of so many rows.
Growth::Pass loadTable(std::size_t items);
/// Asking for the tree of one scene of so many. These trees live until the program ends: fewer come first.
Growth::Pass scenes(std::size_t items);

#endif
