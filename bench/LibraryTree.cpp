#include "LibraryTree.h"

namespace {

std::size_t callCount = 0;

} // namespace

void CountingHandler::onChange(DataField& /*field*/, bool /*changed*/) {
    ++callCount;
}

void CountingHandler::onChange(DataField& /*field*/, bool /*changed*/, int /*from*/, int /*to*/) {
    ++callCount;
}

std::size_t CountingHandler::calls() {
    return callCount;
}

void LibraryTree::build(Workload& workload) {
    for (Workload::Path& path : workload.kindPaths())
        m_tree.root.getField(path.chars(), 0, 0);
}

void LibraryTree::makeObservers(std::size_t count) {
    m_handlers = std::vector<CountingHandler>(count);
}

void LibraryTree::observeAll(Workload& workload) {
    auto handler = m_handlers.begin();
    for (Workload::Path path : workload.paths())
        m_tree.root.registerHandler(path.chars(), &*handler++, 0);
}

void LibraryTree::observeOne(Workload::Path& path) {
    for (CountingHandler& handler : m_handlers)
        m_tree.root.registerHandler(path.chars(), &handler, 0);
}
