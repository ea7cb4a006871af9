#include "FieldCreation.h"

#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataValue.h>

#include "../foundation/text/Scanner.h"
#include "FieldPath.h"
#include "Limits.h"

namespace {

template <class Field>
std::unique_ptr<DataField> make(std::string_view name) {
    char text[limits::maxNameLength + 1];
    text[limits::cutName(name).copy(text, limits::maxNameLength)] = '\0';
    return std::make_unique<Field>(text);
}

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

std::unique_ptr<DataField> createPlainField(std::string_view kind, std::string_view name) {
    if (kind == "string")
        return make<DataValue>(name);
    if (kind == "node")
        return make<DataStructure>(name);
    return nullptr;
}

std::unique_ptr<DataField> createField(std::string_view kind, std::string_view name) {
    if (auto plain = createPlainField(kind, name))
        return plain;
    if (kind == hashTableKind)
        return createTable(name);
    return createTyped(kind, name);
}
