#include <orbel/types/DataObjectTypesTable.h>

#include <orbel/types/DataObjectType.h>

#include "../foundation/text/FixedText.h"
#include "PrintingListener.h"
#include "TypeParser.h"
#include "TypeRendering.h"
#include "TypesState.h"

#include <algorithm>
#include <iterator>
#include <ostream>

DataObjectTypesTable::DataObjectTypesTable() {
    auto& names = typesState.knownNames;
    const auto text = names.insert("string").first;
    names.erase(names.begin(), text);
    names.erase(std::next(text), names.end());
}

DataObjectTypesTable::~DataObjectTypesTable() {
    printTableEnd(getNumTypes());
    m_typesByName.clear();
    while (!m_types.empty()) {
        DataObjectType* last = m_types.back();
        m_types.pop_back();
        last->m_table = nullptr;
        delete last;
    }
}

bool DataObjectTypesTable::parse(char* text) {
    PrintingListener listener;
    TypeParser(listener).parseTypes(text::viewOf(text), *this);
    return true;
}

void DataObjectTypesTable::addType(DataObjectType* type) {
    if (!type || type->m_table)
        return;
    m_types.push_back(type);
    try {
        // Last what cannot be taken back: another table may know the name already.
        if (m_indexed)
            m_typesByName.emplace(type->m_name, type);
        typesState.knownNames.insert(type->m_name);
    } catch (...) {
        m_types.pop_back();
        forgetNames();
        throw;
    }
    type->m_table = this;
}

DataObjectType* DataObjectTypesTable::getTypeByName(const char* name) {
    if (!m_indexed) {
        for (DataObjectType* type : m_types)
            m_typesByName.emplace(type->m_name, type);
        m_indexed = true;
    }
    const auto found = m_typesByName.find(text::viewOf(name));
    return found == m_typesByName.end() ? nullptr : found->second;
}

void DataObjectTypesTable::sortTypes() {
    // The first of equal names stays the first, so the index stays right.
    std::stable_sort(m_types.begin(), m_types.end(), [](const DataObjectType* one, const DataObjectType* other) {
        return one->m_name < other->m_name;
    });
}

int DataObjectTypesTable::getNumTypes() {
    return static_cast<int>(m_types.size());
}

DataObjectType* DataObjectTypesTable::getTypeByIndex(int index) {
    return index >= 0 && index < getNumTypes() ? m_types[static_cast<std::size_t>(index)] : nullptr;
}

void DataObjectTypesTable::dumpSpec(std::ostream& os) {
    typesState.indentation = 0;
    for (DataObjectType* type : m_types) {
        os << "Type " << type->m_name << " {\n";
        {
            const rendering::Indentation deeper;
            type->dumpSpec(os, this, -1);
        }
        os << "};\n";
    }
}

void DataObjectTypesTable::forgetNames() {
    m_typesByName.clear();
    m_indexed = false;
}
