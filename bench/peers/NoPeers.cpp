#include "Peers.h"

void addPeerAccess(Suite& /*suite*/, std::size_t /*leaves*/) {}

void addPeerLifetime(Suite& /*suite*/, Workload& /*workload*/) {}
