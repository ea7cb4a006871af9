#ifndef ORBEL_TYPES_DATAOBJECTTYPESTABLE_H
#define ORBEL_TYPES_DATAOBJECTTYPESTABLE_H

#include <orbel/foundation/Export.h>

#include <iosfwd>
#include <string_view>
#include <unordered_map>
#include <vector>

class DataObjectType;

/// All known object types, which it owns.
class ORBEL_API DataObjectTypesTable {
public:
    /// From now on "string" is the only known type name of the process.
    DataObjectTypesTable();
    DataObjectTypesTable(const DataObjectTypesTable&) = delete;
    DataObjectTypesTable& operator=(const DataObjectTypesTable&) = delete;
    /// Tells through DataPrintf how many types there are and destroys them, from the last to the first.
    virtual ~DataObjectTypesTable();

    /// Reads a type definition text without "//" comments and adds its types, or its fields to types that exist.
    /// Tells of each through DataPrintf. Always true: what cannot be understood is left out.
    bool parse(char* text);

    /// Takes the type over and makes its name known. One that this or another table lists already, and null, is left
    /// alone.
    void addType(DataObjectType* type);
    /// The first type of exactly this name, null when there is none.
    DataObjectType* getTypeByName(const char* name);
    /// Orders the types by name, ascending byte by byte; equal names keep their order.
    void sortTypes();
    /// How many types there are.
    int getNumTypes();
    /// Null when out of range.
    DataObjectType* getTypeByIndex(int index);

    /// Writes all types with their fields, from level 0 on. Contract: the fill character of the stream is a tab
    /// afterwards.
    void dumpSpec(std::ostream& os);

private:
    friend class DataObjectType;

    void forgetNames();

    std::vector<DataObjectType*> m_types;
    /// The first type of each name; only to be used while `m_indexed`.
    std::unordered_map<std::string_view, DataObjectType*> m_typesByName;
    bool m_indexed = true;
};

#endif
