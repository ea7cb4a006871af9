#ifndef ORBEL_TREE_DATAOBJECT_H
#define ORBEL_TREE_DATAOBJECT_H

#include <orbel/tree/DataStructure.h>

/// An element of arrays and hash tables: a structure that never creates fields for a handler itself.
class ORBEL_API DataObject : public DataStructure {
public:
    static DataType* classType;
    static void init();
    static DataType* getClassType();

    explicit DataObject(char* name);

    using DataStructure::registerHandler;
    using DataStructure::unregisterHandler;

    const char* getTypeName() override;
    /// Runs the commands between the braces of `text`; the index text is ignored.
    void parse(char* indexSpec, char* text) override;
    /// Registers on the field at `path` in this object, else through the nearest ancestor that has the path or is an
    /// Orbel. False when there is neither; the handler is then on no field.
    bool registerHandler(char* path, DataHandler* handler, int index) override;
    /// Removes and deletes no field. False when the handler is on no field.
    bool unregisterHandler(DataHandler* handler) override;
};

#endif
