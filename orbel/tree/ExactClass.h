#ifndef ORBEL_TREE_EXACTCLASS_H
#define ORBEL_TREE_EXACTCLASS_H

#include <orbel/tree/DataField.h>

#include <typeinfo>

/// Whether a field is of just this class of the library. Classes of clients may override anything, and have type
/// descriptions of their own.
template <class Field>
bool isExactly(const DataField& field) {
    return &typeid(field) == &typeid(Field);
}

#endif
