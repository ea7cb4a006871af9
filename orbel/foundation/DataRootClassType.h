#ifndef ORBEL_FOUNDATION_DATAROOTCLASSTYPE_H
#define ORBEL_FOUNDATION_DATAROOTCLASSTYPE_H

#include <orbel/foundation/DataType.h>

/// The type record of the class at the top of the hierarchy.
template <class Root>
class DataRootClassType : public DataType {
public:
    /// The record of `Root`, which has none above it.
    explicit DataRootClassType(char* name) : DataType(nullptr, name) {}

    DataBaseType* alloc(char* name, int /*ignored*/) override { return new Root(name); }
};

#endif
