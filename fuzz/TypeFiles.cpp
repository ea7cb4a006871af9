#include "FileInput.h"
#include "Input.h"
#include "Target.h"

#include <orbel/orbel.h>
#include <orbel/types/TypesState.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

/// More fields and texts than this are not made, nor printed: types inside types multiply, and the library limits that
/// only where it would cost a host too much. Tests of the limits make such types.
constexpr int enough = 3'000;

/// How many fields and texts an object of the type has, or more than enough.
int countFields(DataObjectType& type, int depth, int soFar) {
    std::vector<DataObjectField*> fields;
    type.getFieldsList(fields);
    for (DataObjectField* field : fields) {
        const int size = std::max(field->getSize(), 1);
        DataObjectType* const inner = DataObject::getTypesTable()->getTypeByName(field->getType());
        for (int element = 0; element < size && soFar <= enough; ++element) {
            ++soFar;
            if (inner && depth < 101)
                soFar = countFields(*inner, depth + 1, soFar);
        }
    }
    return soFar;
}

void checkFields(DataObjectType& type) {
    std::vector<DataObjectField*> fields;
    std::vector<char*> names;
    type.getFieldsList(fields);
    type.getFieldsList(names);
    check(fields.size() == names.size(), "as many names as fields");
    std::size_t length = 1;
    for (std::size_t at = 0; at < fields.size(); ++at) {
        check(fields[at]->getName() == names[at], "the list of names is that of the fields");
        check(type.getField(names[at]) == fields[at], "a field is found by its own name");
        length += std::string_view(fields[at]->getType()).size() + std::string_view(names[at]).size() + 30;
    }
    std::vector<char> description(length);
    type.getFieldsDescription(description.data());
    check(std::string_view(description.data()).size() < length, "a description has the size that it tells");
}

void checkObject(DataObjectType& type) {
    Tree<DataObject> object(DataObject::createObject(&type, Text("object")));
    check(object && object->getObjectType() == &type, "an object is of the type that it was made of");
    std::vector<DataObjectField*> declared;
    type.getFieldsList(declared);
    for (DataObjectField* field : declared) {
        const std::string name(std::string_view(field->getName()).substr(0, 99));
        if (name.find_first_of("/[]:*.") == std::string::npos && std::string_view(field->getType()) == "string")
            check(object->getField(Text(name), 0, 1) != nullptr, "an object has the texts that its type declares");
    }
    std::ostringstream os;
    object->dump(os, -1, -1, 1);
    Tree<DataArray> array(DataObject::createArray(type.getName(), Text("array"), 2));
    check(array && array->getSize() == 2, "an array of the type is as large as asked for");
    array->dump(os, -1, -1, 1);
}

void checkType(DataObjectTypesTable& table, int index) {
    DataObjectType* const type = table.getTypeByIndex(index);
    check(type != nullptr, "there is a type for each index");
    check(table.getTypeByName(type->getName()) == type, "a type is found by its name");
    checkFields(*type);
    if (countFields(*type, 0, 0) > enough)
        return;
    checkObject(*type);
    std::ostringstream os;
    type->dumpSpec(os, &table, 0);
    type->dumpXML(os);
}

std::string schemaOf(DataObjectTypesTable& table) {
    std::ostringstream os;
    for (int index = 0; index < table.getNumTypes(); ++index)
        table.getTypeByIndex(index)->dumpSpec(os, nullptr, 0);
    return os.str();
}

struct ReadTypes {
    explicit ReadTypes(const FileInput& file) {
        // The first object of a process reads the types anew, so the class is made ready before.
        DataObject::init();
        clear();
        check(DataObject::readTypesTable(Text(file.path())), "a type file can be read");
    }
    ReadTypes(const ReadTypes&) = delete;
    ReadTypes& operator=(const ReadTypes&) = delete;
    ~ReadTypes() { clear(); }

private:
    static void clear() {
        delete DataObject::s_tTypes;
        DataObject::s_tTypes = nullptr;
        typesState.knownNames = {"string"};
        DataBaseType::setIndent(0);
    }
};

const Target target("type-files", [](std::string_view input) {
    static const FileInput file("types.qx");
    file.write(input);
    const ReadTypes read(file);
    DataObjectTypesTable& table = *DataObject::s_tTypes;
    check(!table.getTypeByIndex(-1) && !table.getTypeByIndex(table.getNumTypes()), "no type outside");
    const std::string schema = schemaOf(table);
    for (int index = 0; index < table.getNumTypes(); ++index)
        checkType(table, index);
    check(schemaOf(table) == schema, "to make objects changes no type");
    const int before = table.getNumTypes();
    DataObject::readTypesTable(Text(file.path()));
    check(table.getNumTypes() == before, "what is read again adds fields, but no types");
    table.sortTypes();
    for (int index = 1; index < table.getNumTypes(); ++index)
        check(std::string_view(table.getTypeByIndex(index - 1)->getName()) < table.getTypeByIndex(index)->getName(),
              "sorted types are in the order of their names");
});

} // namespace
