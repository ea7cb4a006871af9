#ifndef ORBEL_TREE_EXACTCLASS_H
#define ORBEL_TREE_EXACTCLASS_H

#include <orbel/tree/DataObject.h>
#include <orbel/tree/Orbel.h>

#include <typeinfo>

/// Whether a field is of just this class of the library. Classes of clients may override anything, and have type
/// descriptions of their own.
template <class Field>
bool isExactly(const DataField& field) {
    return &typeid(field) == &typeid(Field);
}

/// Whether it is a structure that finds its fields, and runs commands, in the library's own way.
inline bool isOwnStructure(const DataField& field) {
    return isExactly<DataStructure>(field) || isExactly<Orbel>(field) || isExactly<DataObject>(field);
}

#endif
