#ifndef ORBEL_TESTS_SUPPORT_DECLAREDTYPES_H
#define ORBEL_TESTS_SUPPORT_DECLAREDTYPES_H

#include <orbel/orbel.h>
#include <support/Console.h>
#include <support/Environment.h>
#include <support/Text.h>

#include <string>
#include <vector>

/// The types of the process, from a text instead of files; what is printed meanwhile is collected.
class DeclaredTypes {
public:
    explicit DeclaredTypes(const std::string& text) {
        clearTypeVariables();
        DataObject::init();
        declare(text);
        console.takeMessages();
        console.takeOutput();
    }

    void declare(const std::string& text) { DataObject::getTypesTable()->parse(Text(text)); }

    DataObjectType* operator[](const char* name) { return DataObject::getTypesTable()->getTypeByName(name); }

    /// The declaration of a field, for what the language of type files cannot say.
    DataObjectField* field(const char* typeName, const std::string& name) {
        std::vector<DataObjectField*> fields;
        (*this)[typeName]->getFieldsList(fields);
        for (DataObjectField* field : fields)
            if (field->getName() == name)
                return field;
        return nullptr;
    }

    Console console;
};

#endif
