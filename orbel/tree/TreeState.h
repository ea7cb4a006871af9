#ifndef ORBEL_TREE_TREESTATE_H
#define ORBEL_TREE_TREESTATE_H

#include "../foundation/text/LentText.h"
#include "PathCache.h"

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

class DataField;
class DataStructure;
class FieldListWatch;
class FieldWatch;
class TypeBuild;

/// All state of the trees that is kept per process.
struct TreeState {
    /// The structure in which the last segment of the last resolved path was looked up.
    DataStructure* lastSearched = nullptr;
    /// Set when a resolution met "*"; `wildcardRest` is then what follows "*/".
    bool wildcard = false;
    char wildcardRest[1000] = {};
    /// Where plain paths have led to. Takes no memory any more when the last structure has gone.
    PathCache paths;
    /// What a plain path in use leads to, as if it were resolved; null when it has to be.
    PathCacheEntry* resolveKnown(const DataField& asked, std::string_view path) {
        PathCacheEntry* known = paths.find(asked, path);
        if (!known)
            return nullptr;
        lastSearched = known->searched;
        wildcard = false;
        return known;
    }
    /// The same when it is a DataValue whose virtual operations need not be looked up; null for everything else.
    DataField* resolveKnownValue(const DataField& asked, std::string_view path) {
        const PathCacheEntry* known = resolveKnown(asked, path);
        return known && known->isDirect ? known->field : nullptr;
    }
    int childTables = 0;
    /// The result of DataField::getFullPath.
    std::string fullPath;
    /// What commands are cut up in.
    text::TextShelf texts;
    /// And for lists of children that commands go over.
    text::Shelf<std::vector<DataField*>> fieldLists;
    /// Counts the changes of lists of handlers and of link targets, and the fields that were destroyed.
    std::uint64_t disturbances = 0;
    /// Where the innermost walk over a list of handlers ends, as a number; 0 without one, and when it has been
    /// disturbed. See WalkEnd.
    std::uintptr_t walkEnd = 0;
    void disturb() {
        ++disturbances;
        walkEnd = 0;
    }
    /// The operations under way, innermost first.
    FieldWatch* watches = nullptr;
    FieldListWatch* listWatches = nullptr;
    /// The object types whose fields are being made, innermost first.
    TypeBuild* builds = nullptr;
    /// How many commands run inside each other, how many of those are repetitions by "*" or by a link, and how much
    /// text all repetitions inside the outermost command have run.
    int commandDepth = 0;
    int repetitionDepth = 0;
    long long repeatedText = 0;
    /// How many links in a row the change under way has been passed along.
    int linkDepth = 0;
    /// Where the dump under way is written, and whether its parts leave the flush to it.
    std::ostream* dumpStream = nullptr;
    bool dumpFlushesOnce = false;
};

extern TreeState treeState;

#endif
