#ifndef ORBEL_TYPES_TYPESSTATE_H
#define ORBEL_TYPES_TYPESSTATE_H

#include <functional>
#include <set>
#include <string>
#include <vector>

class DataObjectType;
class DataObjectTypesTable;

struct RetiredTable;

/// All state of the types that is kept per process.
struct TypesState {
    /// The names that a field statement may use as its type.
    std::set<std::string, std::less<>> knownNames{"string"};
    /// The level at which renderings of types write, in tabs.
    int indentation = 0;
    /// The types whose fields are being written, outermost first.
    std::vector<const DataObjectType*> expanding;
    /// How many have been written inside the outermost one.
    int expansions = 0;
    /// The tables that were replaced, the last one first.
    RetiredTable* retired = nullptr;
};

extern TypesState typesState;

/// What a table prints when it goes.
void printTableEnd(int numTypes);

/// Replaces the destruction of a table on a reload: prints the same line and keeps the table for the rest of the
/// process, because objects point to their types. Takes the table over; null is ignored.
void retireTypesTable(DataObjectTypesTable* table);

#endif
