#ifndef ORBEL_FOUNDATION_DATACLASSTYPE_H
#define ORBEL_FOUNDATION_DATACLASSTYPE_H

#include <orbel/foundation/DataType.h>

#include <type_traits>

class DataBaseType;

/// The type record of a class derived from another tree class. `Derived` needs a constructor from `char*`; `Base`
/// needs the statics `classType` and `init()`.
template <class Derived, class Base>
class DataClassType : public DataType {
public:
    /// The record of `Derived`, below that of `Base`, which is made first if there is none yet.
    explicit DataClassType(char* name) : DataType(baseRecord(), name) {}

    DataBaseType* alloc(char* name, int /*ignored*/) override { return new Derived(name); }

private:
    static DataType* baseRecord() {
        if constexpr (!std::is_same_v<Base, DataBaseType>)
            if (!Base::classType)
                Base::init();
        return Base::classType;
    }
};

#endif
