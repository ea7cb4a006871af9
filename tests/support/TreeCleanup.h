#ifndef ORBEL_TESTS_SUPPORT_TREECLEANUP_H
#define ORBEL_TESTS_SUPPORT_TREECLEANUP_H

#include <orbel/orbel.h>

#include <memory>
#include <vector>

/// Deletes everything below `node`, whoever refers to it or observes it: deleteChildren spares such fields, which is
/// right for a host and a leak in a test.
inline void deleteSubtree(DataNode& node) {
    if (node.isOfType(DataArray::getClassType()) != 0) {
        auto& array = static_cast<DataArray&>(node);
        std::vector<DataObject*> elements;
        for (int index = 0; index < array.getSize(); ++index) {
            elements.push_back(array.DataArray::getObject(index));
            // With a reference of its own no element is deleted before the walk below is done with it.
            elements.back()->ref(&elements, nullptr);
            deleteSubtree(*elements.back());
        }
        array.removeChildren();
        for (DataObject* element : elements)
            delete element;
        return;
    }
    std::vector<DataField*> children;
    node.getFieldsVector(&children);
    node.removeChildren();
    for (DataField* child : children) {
        if (child->isOfType(DataNode::getClassType()) != 0)
            deleteSubtree(static_cast<DataNode&>(*child));
        delete child;
    }
}

struct SubtreeDeleter {
    void operator()(DataNode* node) const {
        deleteSubtree(*node);
        delete node;
    }
};

/// A node that the library has made, and everything below it.
template <class Node>
using Tree = std::unique_ptr<Node, SubtreeDeleter>;

/// Deletes everything below a node when the scope of both ends. The node stays of just its class, which the library
/// knows shorter ways for than for classes of clients.
///
///     Orbel root(Text("root"));
///     const SubtreeCleanup belowRoot{root};
class SubtreeCleanup {
public:
    explicit SubtreeCleanup(DataNode& node) : m_node(node) {}
    SubtreeCleanup(const SubtreeCleanup&) = delete;
    SubtreeCleanup& operator=(const SubtreeCleanup&) = delete;
    ~SubtreeCleanup() { deleteSubtree(m_node); }

private:
    DataNode& m_node;
};

/// A node that takes everything below it along, as a base of classes of clients.
template <class Node>
class Owned : public Node {
public:
    using Node::Node;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() override { deleteSubtree(*this); }
};

#endif
