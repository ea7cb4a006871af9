#include "Footprint.h"

#include "GrowthTools.h"
#include "LibraryTree.h"
#include "Measures.h"
#include "OwnedTree.h"

namespace {

void setAll(LibraryTree& tree, Workload& workload) {
    workload.rewind();
    for (std::size_t leaf = 0; leaf < workload.leaves(); ++leaf)
        require(tree.set(workload.nextVisit(), workload.nextValue()), "a leaf is missing");
}

double bytesPerLeaf(Workload& workload) {
    LibraryTree tree;
    const Memory before = memoryNow();
    tree.build(workload);
    setAll(tree, workload);
    return bytesSince(before, workload.leaves());
}

double bytesPerRegistration(Workload& workload) {
    LibraryTree tree;
    tree.build(workload);
    setAll(tree, workload);
    tree.makeObservers(workload.leaves());
    const Memory before = memoryNow();
    tree.observeAll(workload);
    return bytesSince(before, workload.leaves());
}

/// On leaves that were made by hand, which have no handler yet.
double bytesOfFirstRegistration(std::size_t leaves) {
    std::vector<CountingHandler> handlers(leaves);
    OwnedTree tree;
    std::vector<DataField*> fields;
    for (std::size_t leaf = 0; leaf < leaves; ++leaf) {
        fields.push_back(&OwnedTree::addValue(tree.root, numbered("field", leaf)));
        fields.back()->setData("value 100000");
    }
    const Memory before = memoryNow();
    for (std::size_t leaf = 0; leaf < leaves; ++leaf)
        fields[leaf]->registerHandler(&handlers[leaf]);
    return bytesSince(before, leaves);
}

double bytesInCrowd(std::size_t count) {
    std::vector<CountingHandler> handlers(count);
    OwnedTree tree;
    DataField& field = OwnedTree::addValue(tree.root, "field");
    field.setData("value 100000");
    const Memory before = memoryNow();
    for (CountingHandler& handler : handlers)
        field.registerHandler(&handler);
    return bytesSince(before, count);
}

} // namespace

void weighLeaves(Suite& suite, Workload& workload) {
    suite.weigh("leaf-bytes", library, workload.leaves(), [&] { return bytesPerLeaf(workload); });
}

void weighRegistrations(Suite& suite, Workload& workload) {
    const std::size_t leaves = workload.leaves();
    suite.weigh("handler-bytes", library, leaves, [&] { return bytesPerRegistration(workload); });
    suite.weigh("first-handler-bytes", library, leaves, [&] { return bytesOfFirstRegistration(leaves); });
}

void weighCrowd(Suite& suite, std::size_t handlers) {
    suite.weigh("crowd-bytes", library, handlers, [&] { return bytesInCrowd(handlers); });
}
