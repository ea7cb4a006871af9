#include "Peers.h"

#include "../Measures.h"
#include "BoostTree.h"
#include "QtObjects.h"
#include "QtProperties.h"

namespace {

/// Objects are found by name one after the other, which takes minutes in larger trees.
constexpr std::size_t mostObjects = 100'000;

} // namespace

void addPeerAccess(Suite& suite, std::size_t leaves) {
    addAccess<BoostTree>(suite, leaves);
    addAccess<QtProperties>(suite, leaves);
    if (leaves <= mostObjects)
        addAccess<QtObjects>(suite, leaves);
}

void addPeerLifetime(Suite& suite, Workload& workload) {
    addLifetime<BoostTree>(suite, workload);
    addLifetime<QtProperties>(suite, workload);
    if (workload.leaves() <= mostObjects)
        addLifetime<QtObjects>(suite, workload);
}
