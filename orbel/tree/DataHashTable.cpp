#include <orbel/tree/DataHashTable.h>

#include <orbel/foundation/DataClassType.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "DumpUnderWay.h"
#include "FieldWatch.h"

#include <algorithm>
#include <ostream>

DataType* DataHashTable::classType = nullptr;

void DataHashTable::init() {
    if (classType)
        return;
    DataArray::init();
    char name[] = "DataHashTable";
    classType = new DataClassType<DataHashTable, DataArray>(name);
}

DataType* DataHashTable::getClassType() {
    init();
    return classType;
}

DataHashTable::DataHashTable(char* name) : DataArray(name) {
    setType(getClassType());
}

DataHashTable::~DataHashTable() = default;

const char* DataHashTable::getTypeName() {
    return "DataHashTable";
}

void DataHashTable::dump(std::ostream& os, int /*first*/, int /*last*/, int /*withName*/) {
    dumpKeys(os, nullptr, 1);
}

void DataHashTable::setSize(int /*n*/) {}

void DataHashTable::parse(char* keys, char* textToRead) {
    if (!keys)
        return;
    std::string_view values = text::behindBrace(text::viewOf(textToRead)).value_or("");
    std::string_view list(keys);
    list = list.substr(0, list.find(']'));
    const FieldWatch watch(*this);
    while (!list.empty() && !values.empty() && !watch.ended()) {
        DataObject* entry = entryOf(text::cutAt(list, ','));
        std::string value(text::cutListItem(values, ','));
        if (entry)
            entry->parse(nullptr, value.data());
    }
}

void DataHashTable::removeChildren() {
    m_order.clear();
    m_entries.clear();
    DataArray::removeChildren();
}

void DataHashTable::getFieldsByRange(char* keys, std::vector<DataField*>* out) {
    if (!keys || !out)
        return;
    std::string_view list(keys);
    while (!list.empty()) {
        const std::string_view key = text::cutAt(list, ',');
        out->push_back(entryOf(text::trim(key.substr(0, key.rfind(']')))));
    }
}

DataHashTable::Entries::value_type* DataHashTable::entryAt(int index) {
    const auto at = static_cast<std::size_t>(std::max(index, 0));
    return at < m_order.size() ? m_order[at] : nullptr;
}

DataObject* DataHashTable::entryOf(std::string_view key) {
    const auto found = m_entries.find(key);
    return found == m_entries.end() ? nullptr : found->second;
}

DataObject* DataHashTable::getObject(int index) {
    const auto* entry = entryAt(index);
    return entry ? entry->second : nullptr;
}

DataObject* DataHashTable::getObject(char* key) {
    return entryOf(text::viewOf(key));
}

char* DataHashTable::getObjectKey(int index) {
    auto* entry = entryAt(index);
    return entry ? const_cast<char*>(entry->first.c_str()) : nullptr;
}

DataObject* DataHashTable::newObject(char* key) {
    if (DataObject* present = entryOf(text::viewOf(key)))
        return present;
    DataObject* element = appendElement();
    if (!element)
        return nullptr;
    try {
        m_order.push_back(nullptr);
        const auto [entry, added] = m_entries.try_emplace(std::string(text::viewOf(key)), element);
        if (added)
            m_order.back() = &*entry;
        else
            m_order.pop_back();
        return entry->second;
    } catch (...) {
        if (!m_order.empty() && !m_order.back())
            m_order.pop_back();
        removeLastElement();
        throw;
    }
}

void DataHashTable::setObjectData(char* data, char* key) {
    if (DataObject* entry = entryOf(text::viewOf(key)))
        entry->setData(data, 0);
}

void DataHashTable::dumpKeys(std::ostream& os, char* keys, int withName) {
    DumpUnderWay dump(os);
    std::vector<std::string> list;
    if (keys) {
        std::string_view rest(keys);
        text::skipBlanks(rest);
        while (!rest.empty())
            list.emplace_back(text::cutAt(rest, ','));
    } else {
        for (const auto* entry : m_order)
            list.push_back(entry->first);
    }

    indent(os);
    os << getName() << '[';
    for (std::size_t at = 0; at < list.size(); ++at)
        if (entryOf(list[at]))
            os << list[at] << (at + 1 < list.size() ? "," : "");
    os << "]={\n";
    incrIndent();
    for (std::size_t at = 0; at < list.size(); ++at)
        if (DataObject* entry = entryOf(list[at])) {
            entry->dump(os, -1, -1, withName);
            os << (at + 1 < list.size() ? ",\n" : "\n");
        }
    decrIndent();
    indent(os);
    os << "};\n";
    dump.endFlushed();
}
