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
    if (other.m_details)
        details();
    leaveAllPlaces();
    if (m_details) {
        text::copyCut(m_details->name, other.writtenName());
        text::copyCut(m_details->convTableName, other.m_details ? other.m_details->convTableName : "");
    }
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
    return details().name;
}

void DataHandler::setName(char* name) {
    if (m_details || !text::viewOf(name).empty())
        text::copyCut(details().name, name);
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
    if (!m_details)
        return;
    for (const HandlerPlace place : m_details->furtherPlaces)
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
    return details().convTableName;
}

void DataHandler::setConvTableName(char* name) {
    if (m_details || !text::viewOf(name).empty())
        text::copyCut(details().convTableName, name);
}

DataHandler::Details& DataHandler::details() {
    if (!m_details)
        m_details = std::make_unique<Details>();
    return *m_details;
}

DataField* DataHandler::getField() {
    return m_field;
}

void DataHandler::setField(DataField* field) {
    m_field = field;
}

bool DataHandler::isOn(HandlerPlace place) const {
    if (m_place == place || !m_details)
        return m_place == place;
    const std::vector<HandlerPlace>& further = m_details->furtherPlaces;
    return std::find(further.begin(), further.end(), place) != further.end();
}

void DataHandler::joined(HandlerPlace place) {
    if (!m_place)
        m_place = place;
    else
        details().furtherPlaces.push_back(place);
}

void DataHandler::left(HandlerPlace place) {
    const bool isFirst = m_place == place;
    if (isFirst)
        m_place = {};
    if (!m_details)
        return;
    std::vector<HandlerPlace>& further = m_details->furtherPlaces;
    if (!isFirst) {
        further.erase(std::remove(further.begin(), further.end(), place), further.end());
    } else if (!further.empty()) {
        m_place = further.back();
        further.pop_back();
    }
}

void DataHandler::moved(HandlerPlace from, HandlerPlace to) {
    if (m_place == from)
        m_place = to;
    else if (m_details)
        std::replace(m_details->furtherPlaces.begin(), m_details->furtherPlaces.end(), from, to);
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
