#include <orbel/types/DataObjectField.h>

#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>

#include "../foundation/text/FixedText.h"
#include "PrintingListener.h"
#include "TypeParser.h"
#include "TypeRendering.h"

#include <ostream>
#include <utility>

DataObjectField::DataObjectField() : DataObjectField("Unknown", "No name", "", 1) {}

DataObjectField::DataObjectField(std::string_view type, std::string_view name, std::string_view defaultValue, int size)
    : m_type(type), m_name(name), m_defaultValue(defaultValue), m_size(size) {}

DataObjectField::DataObjectField(const DataObjectField& other)
    : DataObjectField(other.m_type, other.m_name, other.m_defaultValue, other.m_size) {}

DataObjectField& DataObjectField::operator=(const DataObjectField& other) {
    if (this == &other)
        return *this;
    replace(other.m_type, other.m_name, other.m_defaultValue, other.m_size);
    return *this;
}

DataObjectField::~DataObjectField() {
    if (m_holder)
        m_holder->forget(*this);
}

bool DataObjectField::parse(char* line) {
    PrintingListener listener;
    // A copy, for the line may be one of the texts that parsing replaces.
    const std::string statement(text::viewOf(line));
    return TypeParser(listener).parseField(statement, *this);
}

char* DataObjectField::getName() {
    return m_name.data();
}

char* DataObjectField::getType() {
    return m_type.data();
}

char* DataObjectField::getDefaultValue() {
    return m_defaultValue.data();
}

int DataObjectField::getSize() {
    return m_size;
}

void DataObjectField::setName(char* name) {
    rename(std::string(text::viewOf(name)));
}

void DataObjectField::setType(char* type) {
    m_type = text::viewOf(type);
}

void DataObjectField::setDefaultValue(char* value) {
    m_defaultValue = text::viewOf(value);
}

void DataObjectField::setSize(int size) {
    m_size = size;
}

void DataObjectField::dumpSpec(std::ostream& os, DataObjectTypesTable* table) {
    const bool isText = m_type == "string";
    const std::string shownType = isText ? "Value" : m_type;
    rendering::writeIndentation(os);
    if (m_size < 2)
        os << shownType << ' ' << m_name;
    else
        os << "Array<" << shownType << "> " << m_name << '[' << std::to_string(m_size) << ']';
    if (isText) {
        os << ";\n";
        return;
    }
    os << "{\n";
    DataObjectType* type = table ? table->getTypeByName(m_type.c_str()) : nullptr;
    if (type && rendering::Expansion::isPossible(*type)) {
        const rendering::Indentation deeper;
        type->dumpSpec(os, table, -1);
    }
    rendering::writeIndentation(os);
    os << "};\n";
}

void DataObjectField::dumpXML(std::ostream& os) {
    rendering::writeIndentation(os);
    os << '<' << m_type << '>' << m_name << "</" << m_type << ">\n";
}

void DataObjectField::replace(std::string type, std::string name, std::string defaultValue, int size) {
    rename(std::move(name));
    m_type.swap(type);
    m_defaultValue.swap(defaultValue);
    m_size = size;
}

void DataObjectField::rename(std::string name) {
    if (!m_holder) {
        m_name.swap(name);
        return;
    }
    // What was taken out goes in again without memory.
    auto entry = m_holder->m_fieldsByName.extract(m_name.data());
    m_name.swap(name);
    entry.key() = m_name.data();
    m_holder->m_fieldsByName.insert(std::move(entry));
}
