#ifndef BENCH_PEERS_PEERS_H
#define BENCH_PEERS_PEERS_H

#include "../Suite.h"
#include "../Workload.h"

#include <cstddef>

/// Other systems that keep texts under paths, each with the same workload: none, unless ORBEL_BENCH_PEERS is on.
void addPeerAccess(Suite& suite, std::size_t leaves);
/// The workload must live until the group has run.
void addPeerLifetime(Suite& suite, Workload& workload);

#endif
