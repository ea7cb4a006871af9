#ifndef ORBEL_TREE_TREESTATE_H
#define ORBEL_TREE_TREESTATE_H

#include <string>
#include <string_view>

class DataStructure;
class FieldListWatch;
class FieldWatch;

/// All state of the trees that is kept per process.
struct TreeState {
    /// The structure in which the last segment of the last resolved path was looked up.
    DataStructure* lastSearched = nullptr;
    /// Set when a resolution met "*"; `wildcardRest` is then what follows "*/".
    bool wildcard = false;
    char wildcardRest[1000] = {};
    /// The result of DataField::getFullPath.
    std::string fullPath;
    /// The operations under way, innermost first.
    FieldWatch* watches = nullptr;
    FieldListWatch* listWatches = nullptr;
};

extern TreeState treeState;

#endif
