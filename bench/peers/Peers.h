#ifndef BENCH_PEERS_PEERS_H
#define BENCH_PEERS_PEERS_H

#include "../Suite.h"

#include <cstddef>

/// Other systems that keep texts under paths, each with the same workload: none, unless ORBEL_BENCH_PEERS is on.
void measurePeers(Suite& suite, std::size_t leaves);

#endif
