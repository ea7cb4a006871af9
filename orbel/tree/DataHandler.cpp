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
    // What takes memory comes first, and buffers that clients may hold stay.
    if (other.m_name)
        bufferOf(m_name);
    if (other.m_convTableName)
        bufferOf(m_convTableName);
    leaveAllPlaces();
    write(m_name, other.writtenName());
    write(m_convTableName, textOf(other.m_convTableName));
    m_offset = other.m_offset;
    m_field = other.m_field;
    m_notifyOnValueChange = other.m_notifyOnValueChange;
    m_useConvTable = other.m_useConvTable;
    m_flags = other.m_flags;
    return *this;
}

DataHandler::~DataHandler() {
    leaveAllPlaces();
}

void DataHandler::dump() {
    std::cout << "DataHandler: Name=" << writtenName() << std::endl;
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
    return bufferOf(m_name);
}

void DataHandler::setName(char* name) {
    write(m_name, name);
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
    if (HandlerList* list = m_place.second())
        list->asks(asks());
    for (const HandlerPlace place : m_furtherPlaces)
        if (HandlerList* list = place.second())
            list->asks(asks());
}

int DataHandler::getUseConvTable() {
    return m_useConvTable;
}

void DataHandler::setUseConvTable(int use) {
    m_useConvTable = use;
}

char* DataHandler::getConvTableName() {
    return bufferOf(m_convTableName);
}

void DataHandler::setConvTableName(char* name) {
    write(m_convTableName, name);
}

char* DataHandler::bufferOf(std::unique_ptr<Name>& name) {
    if (!name)
        name = std::make_unique<Name>();
    return name->text;
}

void DataHandler::write(std::unique_ptr<Name>& name, const char* written) {
    if (!name && text::viewOf(written).empty())
        return;
    bufferOf(name);
    text::copyCut(name->text, written);
}

DataField* DataHandler::getField() {
    return m_field;
}

void DataHandler::setField(DataField* field) {
    m_field = field;
}

bool DataHandler::isOn(HandlerPlace place) const {
    return m_place == place ||
           std::find(m_furtherPlaces.begin(), m_furtherPlaces.end(), place) != m_furtherPlaces.end();
}

void DataHandler::joined(HandlerPlace place) {
    if (!m_place)
        m_place = place;
    else
        m_furtherPlaces.push_back(place);
}

void DataHandler::left(HandlerPlace place) {
    if (m_place == place) {
        m_place = {};
        if (!m_furtherPlaces.empty()) {
            m_place = m_furtherPlaces.back();
            m_furtherPlaces.pop_back();
        }
        return;
    }
    m_furtherPlaces.erase(std::remove(m_furtherPlaces.begin(), m_furtherPlaces.end(), place), m_furtherPlaces.end());
}

void DataHandler::moved(HandlerPlace from, HandlerPlace to) {
    if (m_place == from)
        m_place = to;
    else
        std::replace(m_furtherPlaces.begin(), m_furtherPlaces.end(), from, to);
}

void DataHandler::leaveAllPlaces() {
    while (m_place) {
        if (HandlerList* list = m_place.second()) {
            list->remove(this);
            list->recount();
        } else {
            m_place.first()->leave(*this);
        }
    }
}
