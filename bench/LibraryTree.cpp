#include "LibraryTree.h"

namespace {

std::size_t callCount = 0;

void destroyChildren(DataNode& node) {
    std::vector<DataField*> children;
    node.getFieldsVector(&children);
    node.removeChildren();
    for (DataField* child : children) {
        if (child->isOfType(DataNode::getClassType()) != 0)
            destroyChildren(static_cast<DataNode&>(*child));
        delete child;
    }
}

} // namespace

void LibraryTree::CountingHandler::onChange(DataField& /*field*/, bool /*changed*/) {
    ++callCount;
}

void LibraryTree::CountingHandler::onChange(DataField& /*field*/, bool /*changed*/, int /*from*/, int /*to*/) {
    ++callCount;
}

LibraryTree::LibraryTree() : m_root(Workload::Value("bench").chars()) {}

LibraryTree::~LibraryTree() {
    destroy();
}

void LibraryTree::build(Workload& workload) {
    for (Workload::Path& path : workload.kindPaths())
        m_root.getField(path.chars(), 0, 0);
}

void LibraryTree::makeObservers(std::size_t count) {
    m_handlers = std::vector<CountingHandler>(count);
}

void LibraryTree::observeAll(Workload& workload) {
    auto handler = m_handlers.begin();
    for (Workload::Path path : workload.paths())
        m_root.registerHandler(path.chars(), &*handler++, 0);
}

void LibraryTree::observeOne(Workload::Path& path) {
    for (CountingHandler& handler : m_handlers)
        m_root.registerHandler(path.chars(), &handler, 0);
}

void LibraryTree::destroy() {
    destroyChildren(m_root);
}

std::size_t LibraryTree::calls() {
    return callCount;
}
