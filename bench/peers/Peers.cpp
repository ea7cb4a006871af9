#include "Peers.h"

#include "../Measures.h"
#include "BoostTree.h"
#include "QtObjects.h"
#include "QtProperties.h"

namespace {

/// Objects are found by name one after the other, which takes minutes in larger trees.
constexpr std::size_t mostObjects = 100'000;

} // namespace

void measurePeers(Suite& suite, std::size_t leaves) {
    addAccess<BoostTree>(suite, leaves);
    addAccess<QtProperties>(suite, leaves);
    if (leaves <= mostObjects)
        addAccess<QtObjects>(suite, leaves);
    suite.run();

    Workload workload(leaves);
    addLifetime<BoostTree>(suite, workload);
    addLifetime<QtProperties>(suite, workload);
    if (leaves <= mostObjects)
        addLifetime<QtObjects>(suite, workload);
    suite.run();
}
