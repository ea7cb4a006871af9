#include <orbel/orbel.h>

#include <orbel/tree/ChildTable.h>
#include <orbel/tree/FieldTies.h>
#include <orbel/tree/HandlerList.h>

#include <string>
#include <utility>
#include <vector>

using OrbelText = std::string;
using OrbelTexts = std::vector<std::string>;

/// Compilers leave classes of the library out of a client's debug information. This names those that gdb shows, so that
/// theirs is in a file of its own.
struct OrbelTypes {
    Orbel* root;
    DataValue* value;
    DataArray* array;
    DataHashTable* table;
    DataObjectType* type;
    ChildTable* children;
    FieldTies* ties;
    HandlerList* handlers;
    OrbelText text;
    OrbelTexts texts;
    std::pair<const std::string, DataObject*> entry;
};

extern OrbelTypes* const orbelTypes;
OrbelTypes* const orbelTypes = nullptr;
