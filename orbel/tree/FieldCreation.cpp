#include "FieldCreation.h"

#include <orbel/tree/DataHashTable.h>

#include "../foundation/text/Scanner.h"
#include "FieldPath.h"

namespace {

std::unique_ptr<DataField> createTable(std::string_view name) {
    const auto parts = readTableName(name);
    if (!parts)
        return nullptr;
    auto table = std::make_unique<DataHashTable>(std::string(parts->table).data());
    table->setObjectType(std::string(parts->entryType).data());
    return table;
}

/// "Point" makes an object, "Point[4]" an array.
std::unique_ptr<DataField> createTyped(std::string_view kind, std::string_view name) {
    DataObject::init();
    std::string typeName(kind.substr(0, kind.find('[')));
    std::string fieldName(name);
    if (typeName.size() == kind.size())
        return std::unique_ptr<DataField>(DataObject::createObject(typeName.data(), fieldName.data()));
    const int size = text::readSignedNumber(kind.substr(typeName.size() + 1));
    return std::unique_ptr<DataField>(DataObject::createArray(typeName.data(), fieldName.data(), size));
}

} // namespace

std::unique_ptr<DataField> createField(std::string_view kind, std::string_view name) {
    if (kind == hashTableKind)
        return createTable(name);
    return createTyped(kind, name);
}
