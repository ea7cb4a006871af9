#include "ConversionTables.h"

#include "../foundation/text/Scanner.h"
#include "TableFile.h"
#include "TableText.h"

#include <cstdlib>
#include <iostream>

namespace {

constexpr std::string_view defaultKey = "__DEFAULT__";
constexpr std::string_view delimiterMarker = "__DELIMITER__";
constexpr std::size_t maxDelimiters = 15;

/// Takes the lines of one file apart; tells what it meets.
class Reader {
public:
    template <class OnTable, class OnRow>
    void read(std::string_view line, OnTable onTable, OnRow onRow) {
        // Most lines are no marker, and need not be compared with each.
        const bool mayBeMarker = line.starts_with('_');
        if (const auto table = mayBeMarker ? tables::readName(line, "__TABLE__") : std::nullopt) {
            if (!table->empty())
                onTable(*table);
        } else if (!mayBeMarker || !readDelimiter(line)) {
            readRow(line, onRow);
        }
    }

private:
    bool readDelimiter(std::string_view line) {
        if (line.substr(0, delimiterMarker.size()) != delimiterMarker || line.size() <= delimiterMarker.size())
            return false;
        if (line.find(',') == std::string_view::npos) {
            // Contract: only the first of the delimiters goes; files in use rely on the line end staying one.
            m_delimiters.replace(0, 1, ",");
        } else {
            text::cutToken(line, ",");
            if (const auto token = text::cutToken(line, ","))
                m_delimiters = token->substr(0, maxDelimiters);
        }
        m_delimiterSet = std::string_view(m_delimiters);
        return true;
    }

    template <class OnRow>
    void readRow(std::string_view line, OnRow onRow) const {
        const auto key = text::cutToken(line, m_delimiterSet);
        const auto value = text::cutToken(line, m_delimiterSet);
        if (key && value)
            onRow(tables::normalizeKey(*key), tables::normalizeValue(*value));
    }

    std::string m_delimiters = ",";
    text::CharacterSet m_delimiterSet = ",";
};

} // namespace

ConversionTables::ConversionTables(std::string_view folders) {
    const char* variable = std::getenv("QX_OBJECTS_DIR");
    std::string_view rest = variable ? std::string_view(variable) : folders;
    while (!rest.empty()) {
        const std::string folder(text::cutFolder(rest));
        for (const std::string& name : files::listFolder(folder, "QX_ConvTables", ".csv"))
            readFile(files::joinPath(folder, name));
    }
}

void ConversionTables::readFile(const std::string& path) {
    tables::TableFile file(path, 0);
    if (!file.isOpen())
        return;
    std::cout << "\nReading Orbel Conversion Tables file " << path << std::endl;
    Reader reader;
    Table* current = nullptr;
    const auto onTable = [&](std::string_view name) { current = &tableFor(name); };
    const auto onRow = [&](std::string_view key, std::string_view value) {
        if (current)
            current->try_emplace(std::string(key), value);
    };
    while (const auto line = file.next())
        reader.read(*line, onTable, onRow);
}

ConversionTables::Table& ConversionTables::tableFor(std::string_view name) {
    const auto [table, isNew] = m_tables.try_emplace(std::string(name));
    if (isNew)
        std::cout << "    Adding table : " << name << std::endl;
    return table->second;
}

const std::string& ConversionTables::lookup(std::string_view tableName, std::string_view value) const {
    static const std::string none;
    const auto table = m_tables.find(tables::normalizeKey(tableName));
    if (table == m_tables.end())
        return none;
    auto entry = table->second.find(tables::normalizeKey(value));
    if (entry == table->second.end())
        entry = table->second.find(defaultKey);
    return entry == table->second.end() ? none : entry->second;
}
