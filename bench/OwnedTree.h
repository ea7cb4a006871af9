#ifndef BENCH_OWNEDTREE_H
#define BENCH_OWNEDTREE_H

#include <orbel/orbel.h>

#include <string>

/// A root that takes everything below it along.
class OwnedTree {
public:
    OwnedTree();
    OwnedTree(const OwnedTree&) = delete;
    OwnedTree& operator=(const OwnedTree&) = delete;
    ~OwnedTree();

    static DataStructure& addNode(DataStructure& parent, std::string name);
    static DataValue& addValue(DataStructure& parent, std::string name);

    /// Takes every field out of its parent and deletes it, from the root down. Not deleteChildren: that spares
    /// observed fields, and what kinds create is observed by the handler they put on it.
    void clear();

    Orbel root;
};

#endif
