#ifndef ORBEL_TREE_ORBEL_H
#define ORBEL_TREE_ORBEL_H

#include <orbel/tree/DataStructure.h>

/// The root of a tree. Its name is never part of a full path.
class ORBEL_API Orbel : public DataStructure {
public:
    static DataType* classType;
    static void init();
    static DataType* getClassType();

    explicit Orbel(char* name);

    const char* getTypeName() override;

    /// Writes the schema of an item: of an Orbel with all its children, of objects, tables and arrays the header only.
    static void dumpSpec(std::ostream& os, DataField* field);
};

#endif
