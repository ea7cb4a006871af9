#include <orbel/tables/PluginPreSets.h>

#include "../foundation/text/FixedText.h"

#include <algorithm>
#include <utility>

PluginPreSets::PluginPreSets() = default;

PluginPreSets::~PluginPreSets() = default;

int PluginPreSets::getColumn(const char* variable) {
    const auto column = m_columns.find(std::string(text::viewOf(variable)));
    return column == m_columns.end() ? -1 : column->second;
}

int PluginPreSets::getNameColumn() {
    return m_nameColumn;
}

int PluginPreSets::getNumColumns() {
    return static_cast<int>(m_columns.size());
}

int PluginPreSets::getNumRows() {
    return static_cast<int>(m_rows.size());
}

const std::vector<std::string>* PluginPreSets::getRow(int index) {
    return index >= 0 && index < getNumRows() ? &m_rows[static_cast<std::size_t>(index)] : nullptr;
}

const std::vector<std::string>* PluginPreSets::findRow(const char* presetName) {
    const std::string_view name = text::viewOf(presetName);
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [&](const std::vector<std::string>& candidate) {
        return candidate[static_cast<std::size_t>(m_nameColumn)] == name;
    });
    return row == m_rows.end() ? nullptr : &*row;
}

void PluginPreSets::readLine(std::vector<std::string> fields) {
    if (m_nameColumn == noHeader)
        readHeader(fields);
    else if (m_nameColumn >= 0 && static_cast<int>(fields.size()) > m_nameColumn)
        m_rows.push_back(std::move(fields));
}

void PluginPreSets::readHeader(const std::vector<std::string>& fields) {
    for (std::size_t index = 0; index < fields.size(); ++index)
        m_columns.try_emplace(fields[index], static_cast<int>(index));
    m_nameColumn = getColumn("Name");
}
