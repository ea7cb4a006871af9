#ifndef ORBEL_TYPES_DATAOBJECTTYPE_H
#define ORBEL_TYPES_DATAOBJECTTYPE_H

#include <orbel/foundation/Export.h>

#include <iosfwd>
#include <string>
#include <unordered_map>
#include <vector>

class DataArray;
class DataObject;
class DataObjectField;
class DataObjectTypesTable;

/// A named set of field declarations, which it owns, and the functions that make its objects and arrays.
class ORBEL_API DataObjectType {
public:
    DataObjectType();
    DataObjectType(const DataObjectType&) = delete;
    DataObjectType& operator=(const DataObjectType&) = delete;
    virtual ~DataObjectType();

    /// Adds the fields between the first "{" and the first "}" of `body`; none without a "{". Always true.
    bool parse(char* body);

    /// Splits "Name = rest" at the first "=", which is overwritten: copies the name, trimmed, into `name`, which must
    /// have room for all of the text, and moves `*text` on to the rest. False, and nothing is changed, without a "=" or
    /// when a pointer is null.
    static bool parseGetName(char** text, char* name);

    /// Takes the declaration over. One that this or another type holds already, and null, is left alone.
    void addField(DataObjectField* field);
    /// Contract: finds a declaration by its own name text only, as getFieldsList hands it out or
    /// DataObjectField::getName returns it, never by an equal text elsewhere, so that every one of several
    /// declarations of the same name can be found. Null when there is none.
    DataObjectField* getField(char* name);
    /// Replace the content of the vector, in the order of declaration.
    void getFieldsList(std::vector<DataObjectField*>& fields);
    void getFieldsList(std::vector<char*>& names);
    /// Writes a line for each field, such as "string \t tags[4];", ordered by name; nothing when `out` is null.
    /// Contract: `out` must have room for all of them.
    void getFieldsDescription(char* out);
    /// Lets go of all declarations without destroying them.
    void removeAll();

    /// Valid until the name is set anew.
    char* getName();
    /// Makes the new name known to the table that lists the type.
    void setName(char* name);

    /// Call the installed function with the name of the type; null when none is installed.
    DataObject* createObject();
    /// See createObject.
    DataArray* createArray();
    /// What createObject calls; null for nothing.
    void setCreateObjectFunc(DataObject* (*function)(char* typeName));
    /// What createArray calls; null for nothing.
    void setCreateArrayFunc(DataArray* (*function)(char* typeName));

    /// Writes the fields, with those of their types as far as `table` (which may be null) has them. An `indent` above
    /// 0 sets the level of all further renderings; any other keeps it.
    void dumpSpec(std::ostream& os, DataObjectTypesTable* table, int indent);
    /// Writes "<TYPE name=Label>", the fields one level deeper, and "</TYPE>".
    void dumpXML(std::ostream& os);

private:
    friend class DataObjectField;
    friend class DataObjectTypesTable;

    std::vector<DataObjectField*> fieldsInOrder() const;
    void forget(const DataObjectField& field);

    DataObject* (*m_createObject)(char*) = nullptr;
    DataArray* (*m_createArray)(char*) = nullptr;
    /// In the order of declaration; null where a declaration was destroyed.
    std::vector<DataObjectField*> m_fields;
    /// By the address of the name text.
    std::unordered_map<const char*, DataObjectField*> m_fieldsByName;
    std::string m_name;
    /// The table that lists the type.
    DataObjectTypesTable* m_table = nullptr;
};

#endif
