#include "OwnedTree.h"

#include "Workload.h"

#include <vector>

namespace {

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

OwnedTree::OwnedTree() : root(Workload::Value("bench").chars()) {}

OwnedTree::~OwnedTree() {
    clear();
}

DataStructure& OwnedTree::addNode(DataStructure& parent, std::string name) {
    auto* node = new DataStructure(name.data());
    parent.addField(node, -1);
    return *node;
}

DataValue& OwnedTree::addValue(DataStructure& parent, std::string name) {
    auto* value = new DataValue(name.data());
    parent.addField(value, -1);
    return *value;
}

void OwnedTree::clear() {
    destroyChildren(root);
}
