#include <orbel/tree/Orbel.h>

#include <orbel/foundation/DataClassType.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataValue.h>

#include "../foundation/text/FixedText.h"

#include <ostream>

namespace {

/// The header and the empty body of an item that is not opened.
void writeClosed(std::ostream& os, std::string_view kind, char* typeName, const std::string& name) {
    DataBaseType::indent(os);
    os << kind << '<' << text::viewOf(typeName) << "> " << name << " {\n";
    DataBaseType::indent(os);
    os << "};\n";
}

std::string keysOf(DataHashTable& table) {
    std::string keys;
    for (int index = 0; char* key = table.getObjectKey(index); ++index) {
        if (index > 0)
            keys += ',';
        keys += key;
    }
    return keys;
}

} // namespace

DataType* Orbel::classType = nullptr;

void Orbel::init() {
    if (classType)
        return;
    DataStructure::init();
    char name[] = "Orbel";
    classType = new DataClassType<Orbel, DataStructure>(name);
}

DataType* Orbel::getClassType() {
    init();
    return classType;
}

Orbel::Orbel(char* name) : DataStructure(name) {
    setType(getClassType());
}

const char* Orbel::getTypeName() {
    return "Orbel";
}

void Orbel::dumpSpec(std::ostream& os, DataField* field) {
    if (!field)
        return;
    const std::string name = field->getName();
    if (field->isOfType(getClassType()) != 0) {
        os << "Orbel {\n";
        std::vector<DataField*> children;
        static_cast<Orbel*>(field)->getFieldsVector(&children);
        for (DataField* child : children)
            dumpSpec(os, child);
        os << "};\n";
    } else if (field->isOfType(DataHashTable::getClassType()) != 0) {
        auto* table = static_cast<DataHashTable*>(field);
        writeClosed(os, "Table", table->getObjectTypeName(), name + '[' + keysOf(*table) + ']');
    } else if (field->isOfType(DataArray::getClassType()) != 0) {
        auto* array = static_cast<DataArray*>(field);
        writeClosed(os, "Array", array->getObjectTypeName(), name + '[' + std::to_string(array->getSize()) + ']');
    } else if (field->isOfType(DataObject::classType) != 0) {
        if (char* typeName = static_cast<DataObject*>(field)->getObjectTypeName())
            writeClosed(os, "Object", typeName, name);
    } else if (field->isOfType(DataValue::getClassType()) != 0) {
        if (field->getSize() > 1) {
            indent(os);
            os << "Array<Value> " << name << '[' << std::to_string(field->getSize()) << "];\n";
        } else {
            os << "Value " << name << ";\n";
        }
    }
}
