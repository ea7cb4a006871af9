#include "FieldCreation.h"

#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataValue.h>

#include "FieldPath.h"

namespace {

template <class Field>
std::unique_ptr<DataField> make(std::string_view name) {
    return std::make_unique<Field>(std::string(name).data());
}

} // namespace

std::unique_ptr<DataField> createField(std::string_view kind, std::string_view name) {
    if (kind == "string")
        return make<DataValue>(name);
    if (kind == "node")
        return make<DataStructure>(name);
    if (kind == hashTableKind)
        if (const auto table = readTableName(name))
            return make<DataHashTable>(table->table);
    return nullptr;
}
