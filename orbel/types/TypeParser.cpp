#include "TypeParser.h"

#include <orbel/types/DataObjectField.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>

#include "../foundation/text/Scanner.h"
#include "TypeParseListener.h"
#include "TypesState.h"

#include <memory>
#include <string>

namespace {

bool startsComment(std::string_view rest) {
    return rest.substr(0, 1) == "#";
}

/// The first word of a field statement; `rest` becomes what follows the blank behind it.
std::string_view cutWord(std::string_view& rest) {
    text::skipBlanks(rest);
    const std::string_view word = rest.substr(0, text::blanks.findIn(rest));
    rest.remove_prefix(word.size());
    return word;
}

bool isKnown(std::string_view type) {
    // Most fields are texts, which are known in any table.
    return type == "string" || (!type.empty() && typesState.knownNames.find(type) != typesState.knownNames.end());
}

} // namespace

TypeParser::TypeParser(TypeParseListener& listener) : m_listener(&listener) {}

void TypeParser::parseTypes(std::string_view text, DataObjectTypesTable& table) {
    text::ListScanner statements(text);
    statements.skipBlanks();
    while (!statements.atEnd()) {
        if (startsComment(statements.rest())) {
            m_listener->onCommentSkipped(statements.cut('\n'));
            continue;
        }
        parseTypeStatement(statements.cut(';'), table);
        statements.skipBlanks();
    }
}

void TypeParser::parseTypeStatement(std::string_view statement, DataObjectTypesTable& table) {
    if (statement.find('=') == std::string_view::npos) {
        m_listener->onStatementIgnored(statement);
        return;
    }
    std::string_view body = statement;
    const std::string_view name = text::trim(text::cutAt(body, '='));
    text::skipBlanks(body);
    DataObjectType* type = table.getTypeByName(std::string(name).c_str());
    if (type) {
        m_listener->onTypeExtended(name);
        parseBody(body, *type);
    } else {
        type = createType(name, body, table);
    }
    m_listener->onTypeRead(statement, *type);
}

DataObjectType* TypeParser::createType(std::string_view name, std::string_view body, DataObjectTypesTable& table) {
    m_listener->onTypeCreated(name);
    auto type = std::make_unique<DataObjectType>();
    type->setName(std::string(name).data());
    // Contract: the name becomes known only afterwards, so that no type can contain itself.
    parseBody(body, *type);
    table.addType(type.get());
    return type.release();
}

void TypeParser::parseBody(std::string_view body, DataObjectType& type) {
    const bool hasFields = body.find('{') != std::string_view::npos;
    reportBodyText(text::cutAt(body, '{'));
    if (!hasFields)
        return;
    std::string_view rest = text::cutAt(body, '}');
    while (!rest.empty()) {
        // Contract: blanks are skipped behind a ";" only, so a "#" behind other blanks starts no comment.
        if (startsComment(rest)) {
            m_listener->onCommentSkipped(text::cutAt(rest, '\n'));
            continue;
        }
        const std::string_view statement = text::cutAt(rest, ';');
        if (const auto read = readField(statement)) {
            std::unique_ptr<DataObjectField> field(
                new DataObjectField(read->type, read->name, read->defaultValue.value_or(""), read->size));
            type.addField(field.get());
            m_listener->onFieldAdded(statement, *field.release());
        }
        text::skipBlanks(rest);
    }
    reportBodyText(body);
}

bool TypeParser::parseField(std::string_view statement, DataObjectField& field) {
    const auto read = readField(statement);
    if (read)
        field.replace(std::string(read->type), std::string(read->name),
                      std::string(read->defaultValue.value_or(field.m_defaultValue)), read->size);
    return read.has_value();
}

std::optional<TypeParser::WrittenField> TypeParser::readField(std::string_view statement) {
    const bool hasDefault = statement.find('=') != std::string_view::npos;
    std::string_view defaultValue = statement;
    std::string_view declaration = text::cutAt(defaultValue, '=');
    const std::string_view type = cutWord(declaration);
    if (!isKnown(type)) {
        if (!statement.empty())
            m_listener->onFieldIgnored(statement);
        return std::nullopt;
    }
    text::skipBlanks(declaration);
    const bool hasSize = declaration.find('[') != std::string_view::npos;
    const std::string_view name = text::cutAt(declaration, '[');
    const int size = hasSize ? text::readSignedNumber(text::cutAt(declaration, ']')) : 1;
    text::skipBlanks(defaultValue);
    return WrittenField{type, name, hasDefault ? std::optional(defaultValue) : std::nullopt, size};
}

void TypeParser::reportBodyText(std::string_view text) {
    text = text::trim(text);
    if (!text.empty())
        m_listener->onBodyTextIgnored(text);
}
