#include <orbel/tree/DataHandler.h>

#include <orbel/tree/DataValue.h>

#include "../foundation/text/FixedText.h"
#include "HandlerList.h"

#include <algorithm>
#include <iostream>

DataHandler::DataHandler() = default;

DataHandler::DataHandler(char* name) {
    setName(name);
}

DataHandler::DataHandler(const DataHandler& other) {
    *this = other;
}

DataHandler& DataHandler::operator=(const DataHandler& other) {
    if (this == &other)
        return *this;
    leaveAllLists();
    text::copyCut(m_name, other.m_name);
    m_offset = other.m_offset;
    m_field = other.m_field;
    m_notifyOnValueChange = other.m_notifyOnValueChange;
    m_useConvTable = other.m_useConvTable;
    text::copyCut(m_convTableName, other.m_convTableName);
    m_flags = other.m_flags;
    return *this;
}

DataHandler::~DataHandler() {
    leaveAllLists();
}

void DataHandler::dump() {
    std::cout << "DataHandler: Name=" << m_name << std::endl;
    if (m_field)
        std::cout << "DataHandler: fieldname=" << m_field->getName() << std::endl;
}

void DataHandler::onChange(DataField& /*field*/, bool /*changed*/) {}

void DataHandler::onChange(DataField& /*field*/, bool /*changed*/, int /*from*/, int /*to*/) {}

void DataHandler::onTypeChange(DataField& /*field*/, char* /*typeName*/) {}

DataType* DataHandler::getFieldType() {
    return DataValue::getClassType();
}

char* DataHandler::getName() {
    return m_name;
}

void DataHandler::setName(char* name) {
    text::copyCut(m_name, name);
}

int DataHandler::getOffset() {
    return m_offset;
}

void DataHandler::setOffset(int offset) {
    m_offset = offset;
}

int DataHandler::getNotifyOnValueChange() {
    return m_notifyOnValueChange;
}

void DataHandler::setNotifyOnValueChange(int notify) {
    const bool asked = asks();
    m_notifyOnValueChange = notify;
    if (asks() == asked)
        return;
    if (m_list)
        m_list->asks(asks());
    for (HandlerList* list : m_furtherLists)
        list->asks(asks());
}

int DataHandler::getUseConvTable() {
    return m_useConvTable;
}

void DataHandler::setUseConvTable(int use) {
    m_useConvTable = use;
}

char* DataHandler::getConvTableName() {
    return m_convTableName;
}

void DataHandler::setConvTableName(char* name) {
    text::copyCut(m_convTableName, name);
}

DataField* DataHandler::getField() {
    return m_field;
}

void DataHandler::setField(DataField* field) {
    m_field = field;
}

bool DataHandler::isOn(const HandlerList* list) const {
    return m_list == list || std::find(m_furtherLists.begin(), m_furtherLists.end(), list) != m_furtherLists.end();
}

void DataHandler::joined(HandlerList* list) {
    if (!m_list)
        m_list = list;
    else
        m_furtherLists.push_back(list);
}

void DataHandler::left(HandlerList* list) {
    if (m_list == list) {
        m_list = nullptr;
        if (!m_furtherLists.empty()) {
            m_list = m_furtherLists.back();
            m_furtherLists.pop_back();
        }
        return;
    }
    m_furtherLists.erase(std::remove(m_furtherLists.begin(), m_furtherLists.end(), list), m_furtherLists.end());
}

void DataHandler::leaveAllLists() {
    while (HandlerList* list = m_list) {
        list->remove(this);
        list->recount();
    }
}
