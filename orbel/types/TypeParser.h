#ifndef ORBEL_TYPES_TYPEPARSER_H
#define ORBEL_TYPES_TYPEPARSER_H

#include <optional>
#include <string_view>

class DataObjectField;
class DataObjectType;
class DataObjectTypesTable;
class TypeParseListener;

/// The grammar of type definitions. One pass over the text, whatever it holds; nothing is ever rolled back.
class TypeParser {
public:
    explicit TypeParser(TypeParseListener& listener);

    /// A whole type definition text without "//" comments.
    void parseTypes(std::string_view text, DataObjectTypesTable& table);
    /// What stands behind the "=" of a type statement.
    void parseBody(std::string_view body, DataObjectType& type);
    /// One field statement without its ";". False, and the declaration is unchanged, when its type is not known.
    bool parseField(std::string_view statement, DataObjectField& field);

private:
    /// What a field statement says; without a default text where it has no "=".
    struct WrittenField {
        std::string_view type;
        std::string_view name;
        std::optional<std::string_view> defaultValue;
        int size;
    };

    /// Nothing when the type is not known.
    std::optional<WrittenField> readField(std::string_view statement);
    void parseTypeStatement(std::string_view statement, DataObjectTypesTable& table);
    DataObjectType* createType(std::string_view name, std::string_view body, DataObjectTypesTable& table);
    void reportBodyText(std::string_view text);

    TypeParseListener* m_listener;
};

#endif
