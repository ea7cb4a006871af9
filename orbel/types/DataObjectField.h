#ifndef ORBEL_TYPES_DATAOBJECTFIELD_H
#define ORBEL_TYPES_DATAOBJECTFIELD_H

#include <orbel/foundation/Export.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

class DataObjectType;
class DataObjectTypesTable;

/// One field declaration of an object type: "string tags[4]=none".
class ORBEL_API DataObjectField {
public:
    /// Type "Unknown", name "No name", no default text, size 1.
    DataObjectField();
    /// Copies the declaration; the copy belongs to no type.
    DataObjectField(const DataObjectField& other);
    DataObjectField& operator=(const DataObjectField& other);
    virtual ~DataObjectField();

    /// Reads one field statement, without its ";". Without "=" the default text stays what it was. False when the type
    /// is not known, in which case the declaration is unchanged and std::cout tells of every statement that is not
    /// empty.
    /// Contract: white space between the name and "=" belongs to the name.
    bool parse(char* line);

    /// The texts are valid until they are set anew or the declaration is destroyed.
    char* getName();
    /// See getName.
    char* getType();
    /// See getName.
    char* getDefaultValue();
    /// As written: below 2, which may be 0 or negative, renderings show a single field.
    int getSize();

    /// Changes the declaration, also in the type that owns it; objects stay as they are.
    void setName(char* name);
    /// See setName.
    void setType(char* type);
    /// See setName.
    void setDefaultValue(char* value);
    /// See setName.
    void setSize(int size);

    /// Writes the declaration, with the fields of its type as far as `table` (which may be null) has it.
    /// Contract: the fill character of the stream is a tab afterwards.
    void dumpSpec(std::ostream& os, DataObjectTypesTable* table);
    /// Writes "<string>tags</string>" and a line end, neither size nor default.
    void dumpXML(std::ostream& os);

private:
    friend class DataObjectType;
    friend class TypeParser;

    DataObjectField(std::string_view type, std::string_view name, std::string_view defaultValue, int size);
    void replace(std::string type, std::string name, std::string defaultValue, int size);
    void rename(std::string name);

    std::string m_type;
    std::string m_name;
    std::string m_defaultValue;
    int m_size;
    /// The type that owns the declaration, and where it stands there.
    DataObjectType* m_holder = nullptr;
    std::size_t m_position = 0;
};

#endif
