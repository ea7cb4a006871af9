#include "Disposal.h"

#include "GrowthTools.h"
#include "Measures.h"
#include "OwnedTree.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

/// The same tree as by kind-prefixed paths.
void makeByHand(OwnedTree& tree, const Workload& workload) {
    DataStructure& scene = OwnedTree::addNode(tree.root, "scene");
    DataStructure* node = nullptr;
    std::string nodeName;
    for (const Workload::Path& path : workload.paths()) {
        const std::string_view text = path.view();
        const std::size_t first = text.find('/') + 1;
        const std::size_t second = text.find('/', first);
        if (const std::string_view name = text.substr(first, second - first); !node || name != nodeName) {
            nodeName = name;
            node = &OwnedTree::addNode(scene, nodeName);
        }
        OwnedTree::addValue(*node, std::string(text.substr(second + 1)));
    }
}

void dispose(benchmark::State& state, const Workload& workload) {
    std::uint64_t allocations = 0;
    while (state.KeepRunningBatch(static_cast<benchmark::IterationCount>(workload.leaves()))) {
        state.PauseTiming();
        settleHeap();
        {
            OwnedTree tree;
            const Memory empty = memoryNow();
            makeByHand(tree, workload);
            const Memory before = memoryNow();
            state.ResumeTiming();
            tree.root.deleteChildren();
            state.PauseTiming();
            allocations += memoryNow().allocations - before.allocations;
            require(bytesSince(empty, workload.leaves()) < 16, "the tree was not deleted");
        }
        state.ResumeTiming();
    }
    countAllocations(state, allocations);
}

} // namespace

void addDisposal(Suite& suite, Workload& workload) {
    suite.add("deleteChildren", library, workload.leaves(),
              [&workload](benchmark::State& state) { dispose(state, workload); });
}
