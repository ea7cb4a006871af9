#include <orbel/foundation/DataType.h>

#include "text/FixedText.h"

#include <string_view>

int DataType::lastId = 0;

DataType::DataType(DataType* parent, char* name) : m_id(lastId++), m_name{}, m_parent(parent) {
    text::copyCut(m_name, name);
}

DataType::~DataType() = default;

void DataType::setName(char* name) {
    if (text::viewOf(name).size() < sizeof m_name)
        text::copyCut(m_name, name);
}

char* DataType::getName() {
    return m_name;
}

void DataType::setID(int id) {
    m_id = id;
}

int DataType::getID() {
    return m_id;
}

int DataType::isDerivedFrom(DataType* type) {
    for (const DataType* record = this; record; record = record->m_parent)
        if (record == type)
            return 1;
    return 0;
}
