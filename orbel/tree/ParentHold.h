#ifndef ORBEL_TREE_PARENTHOLD_H
#define ORBEL_TREE_PARENTHOLD_H

class DataNode;

/// How fields name their parent: shared by the node and all fields that were put into it, it turns to null when the
/// node is destroyed. So neither side touches the other when it dies, whichever goes first.
class ParentHold {
public:
    explicit ParentHold(DataNode& parent) : node(&parent) {}

    int owners = 0;
    DataNode* node;
};

#endif
