#include <orbel/types/DataObjectType.h>

#include <orbel/types/DataObjectField.h>
#include <orbel/types/DataObjectTypesTable.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "PrintingListener.h"
#include "TypeParser.h"
#include "TypeRendering.h"
#include "TypesState.h"

#include <algorithm>
#include <ostream>

namespace {

std::string describe(DataObjectField& field) {
    const std::string typeAndName = std::string(field.getType()) + " \t " + field.getName();
    const int size = field.getSize();
    return typeAndName + (size < 2 ? "" : '[' + std::to_string(size) + ']') + ";\n";
}

} // namespace

DataObjectType::DataObjectType() = default;

DataObjectType::~DataObjectType() {
    std::vector<DataObjectField*> fields;
    fields.swap(m_fields);
    m_fieldsByName.clear();
    for (DataObjectField* field : fields)
        if (field) {
            field->m_holder = nullptr;
            delete field;
        }
}

bool DataObjectType::parse(char* body) {
    PrintingListener listener;
    TypeParser(listener).parseBody(text::viewOf(body), *this);
    return true;
}

bool DataObjectType::parseGetName(char** text, char* name) {
    if (!text || !*text || !name)
        return false;
    std::string_view rest = *text;
    const std::size_t separator = rest.find('=');
    if (separator == std::string_view::npos)
        return false;
    const std::string_view trimmed = text::trim(rest.substr(0, separator));
    name[trimmed.copy(name, trimmed.size())] = '\0';
    rest.remove_prefix(separator + 1);
    text::skipBlanks(rest);
    char* start = *text;
    *text = start + (rest.data() - start);
    start[separator] = '\0';
    return true;
}

void DataObjectType::addField(DataObjectField* field) {
    if (!field || field->m_holder)
        return;
    m_fields.push_back(field);
    try {
        m_fieldsByName.emplace(field->m_name.data(), field);
    } catch (...) {
        m_fields.pop_back();
        throw;
    }
    field->m_holder = this;
    field->m_position = m_fields.size() - 1;
}

DataObjectField* DataObjectType::getField(char* name) {
    const auto found = m_fieldsByName.find(name);
    return found == m_fieldsByName.end() ? nullptr : found->second;
}

void DataObjectType::getFieldsList(std::vector<DataObjectField*>& fields) {
    fields = fieldsInOrder();
}

void DataObjectType::getFieldsList(std::vector<char*>& names) {
    names.clear();
    for (DataObjectField* field : fieldsInOrder())
        names.push_back(field->getName());
}

void DataObjectType::getFieldsDescription(char* out) {
    if (!out)
        return;
    std::vector<DataObjectField*> fields = fieldsInOrder();
    std::stable_sort(fields.begin(), fields.end(), [](const DataObjectField* one, const DataObjectField* other) {
        return one->m_name < other->m_name;
    });
    for (DataObjectField* field : fields) {
        const std::string line = describe(*field);
        out += line.copy(out, line.size());
    }
    *out = '\0';
}

void DataObjectType::removeAll() {
    for (DataObjectField* field : m_fields)
        if (field)
            field->m_holder = nullptr;
    m_fields.clear();
    m_fieldsByName.clear();
}

char* DataObjectType::getName() {
    return m_name.data();
}

void DataObjectType::setName(char* name) {
    std::string replacing(text::viewOf(name));
    if (m_table)
        m_table->forgetNames();
    m_name.swap(replacing);
}

DataObject* DataObjectType::createObject() {
    return m_createObject ? m_createObject(getName()) : nullptr;
}

DataArray* DataObjectType::createArray() {
    return m_createArray ? m_createArray(getName()) : nullptr;
}

void DataObjectType::setCreateObjectFunc(DataObject* (*function)(char* typeName)) {
    m_createObject = function;
}

void DataObjectType::setCreateArrayFunc(DataArray* (*function)(char* typeName)) {
    m_createArray = function;
}

void DataObjectType::dumpSpec(std::ostream& os, DataObjectTypesTable* table, int indent) {
    if (indent > 0)
        typesState.indentation = indent;
    const rendering::Expansion expansion(*this);
    for (DataObjectField* field : fieldsInOrder())
        field->dumpSpec(os, table);
}

void DataObjectType::dumpXML(std::ostream& os) {
    rendering::writeIndentation(os);
    os << "<TYPE name=" << m_name << ">\n";
    {
        const rendering::Indentation deeper;
        for (DataObjectField* field : fieldsInOrder())
            field->dumpXML(os);
    }
    rendering::writeIndentation(os);
    os << "</TYPE>" << std::endl;
}

std::vector<DataObjectField*> DataObjectType::fieldsInOrder() const {
    std::vector<DataObjectField*> fields;
    fields.reserve(m_fieldsByName.size());
    std::copy_if(m_fields.begin(), m_fields.end(), std::back_inserter(fields),
                 [](const DataObjectField* field) { return field != nullptr; });
    return fields;
}

void DataObjectType::forget(const DataObjectField& field) {
    m_fields[field.m_position] = nullptr;
    m_fieldsByName.erase(field.m_name.data());
}
