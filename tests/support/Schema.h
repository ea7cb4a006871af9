#ifndef ORBEL_TESTS_SUPPORT_SCHEMA_H
#define ORBEL_TESTS_SUPPORT_SCHEMA_H

#include <orbel/orbel.h>
#include <support/Console.h>
#include <support/Text.h>

#include <string>
#include <utility>
#include <vector>

/// All declarations of a type: "string:x[1]=0, Point:pos[1]=".
inline std::string fieldsOf(DataObjectType* type) {
    if (!type)
        return "no such type";
    std::vector<DataObjectField*> fields;
    type->getFieldsList(fields);
    std::string all;
    for (DataObjectField* field : fields)
        all += (all.empty() ? "" : ", ") + std::string(field->getType()) + ':' + field->getName() + '[' +
               std::to_string(field->getSize()) + "]=" + field->getDefaultValue();
    return all;
}

/// What users of type files see for a field statement that is left out.
inline std::string ignoredLine(const std::string& statement) {
    return "\nThe line below will be ignored. Probably the variable type is not defined. \nline : \"" + statement +
           ";\"\n";
}

/// A table of types, and everything that is printed meanwhile.
class Schema {
public:
    Schema() = default;
    explicit Schema(const std::string& text) { parse(text); }

    bool parse(const std::string& text) { return table.parse(Text(text)); }
    DataObjectType* type(const std::string& name) { return table.getTypeByName(name.c_str()); }
    std::string fields(const std::string& typeName) { return fieldsOf(type(typeName)); }

    /// The names of all types in their order: "Point, Label".
    std::string names() {
        std::string all;
        for (int index = 0; index < table.getNumTypes(); ++index)
            all += (index == 0 ? "" : ", ") + std::string(table.getTypeByIndex(index)->getName());
        return all;
    }

    Console console;
    DataObjectTypesTable table;
};

#endif
