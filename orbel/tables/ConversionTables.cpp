#include "ConversionTables.h"

#include "../foundation/text/Scanner.h"
#include "PrintingTableListener.h"
#include "TableFile.h"
#include "TableText.h"

#include <cstdlib>

namespace {

using tables::LineUse;

constexpr std::string_view delimiterMarker = "__DELIMITER__";

/// Adds the lines of one file to tables.
class Reader {
public:
    Reader(ConversionTables::Tables& tables, std::pmr::memory_resource& memory, tables::TableListener& listener)
        : m_tables(tables), m_memory(memory), m_listener(listener) {}

    void read(std::string_view line) {
        // Most lines are no marker, and need not be compared with each.
        const bool mayBeMarker = line.starts_with('_');
        if (const auto table = mayBeMarker ? tables::readName(line, "__TABLE__") : std::nullopt)
            m_listener.onLine(line, openTable(*table), *table);
        else if (!mayBeMarker || !readDelimiter(line))
            readRow(line);
    }

private:
    LineUse openTable(std::string_view name) {
        if (name.empty())
            return LineUse::sectionWithoutName;
        const auto [table, isNew] = m_tables.try_emplace(std::string(name), &m_memory);
        const bool isCurrent = m_current == &table->second;
        m_current = &table->second;
        if (isNew)
            return LineUse::sectionNew;
        return isCurrent ? LineUse::sectionCurrent : LineUse::sectionAgain;
    }

    bool readDelimiter(std::string_view line) {
        if (line.substr(0, delimiterMarker.size()) != delimiterMarker || line.size() <= delimiterMarker.size())
            return false;
        const bool isChanged = changeDelimiters(line);
        m_delimiterSet = std::string_view(m_delimiters);
        m_listener.onLine(line, isChanged ? LineUse::delimiters : LineUse::delimitersUnchanged, m_delimiters);
        return true;
    }

    bool changeDelimiters(std::string_view line) {
        std::string delimiters = m_delimiters;
        if (line.find(',') == std::string_view::npos) {
            // Contract: only the first of the delimiters goes; files in use rely on the line end staying one.
            delimiters.replace(0, 1, ",");
        } else {
            text::cutToken(line, ",");
            if (const auto token = text::cutToken(line, ","))
                delimiters = token->substr(0, tables::maxDelimiters);
        }
        delimiters.swap(m_delimiters);
        return delimiters != m_delimiters;
    }

    void readRow(std::string_view line) {
        std::string_view rest = line;
        const auto key = text::cutToken(rest, m_delimiterSet);
        const auto value = text::cutToken(rest, m_delimiterSet);
        if (!key || !value)
            m_listener.onLine(line, LineUse::rowTooShort, {});
        else if (!m_current)
            m_listener.onLine(line, LineUse::rowOutside, {});
        else
            addRow(line, tables::normalizeKey(*key), tables::normalizeValue(*value));
    }

    void addRow(std::string_view line, std::string_view key, std::string_view value) {
        const bool isNew = m_current->try_emplace(keep(key), keep(value)).second;
        m_listener.onLine(line, isNew ? LineUse::row : LineUse::rowAgain, key);
    }

    std::string_view keep(std::string_view text) {
        char* const kept = static_cast<char*>(m_memory.allocate(text.size(), 1));
        return {kept, text.copy(kept, text.size())};
    }

    ConversionTables::Tables& m_tables;
    std::pmr::memory_resource& m_memory;
    tables::TableListener& m_listener;
    ConversionTables::Table* m_current = nullptr;
    std::string m_delimiters = ",";
    text::CharacterSet m_delimiterSet = ",";
};

} // namespace

ConversionTables::ConversionTables(std::string_view folders) {
    tables::PrintingTableListener listener("Conversion Tables", "table");
    const char* variable = std::getenv("QX_OBJECTS_DIR");
    std::string_view rest = variable ? std::string_view(variable) : folders;
    while (!rest.empty())
        readFolder(std::string(text::cutFolder(rest)), listener);
}

void ConversionTables::readFolder(const std::string& folder, tables::TableListener& listener) {
    for (const std::string& name : files::listFolder(folder, "QX_ConvTables", ".csv"))
        readFile(files::joinPath(folder, name), listener);
}

void ConversionTables::readFile(const std::string& path, tables::TableListener& listener) {
    tables::TableFile file(path, 0, listener);
    Reader reader(m_tables, m_memory, listener);
    while (const auto line = file.next())
        reader.read(*line);
}

std::string_view ConversionTables::lookup(std::string_view tableName, std::string_view value) const {
    const auto table = m_tables.find(tables::normalizeKey(tableName));
    if (table == m_tables.end())
        return {};
    auto entry = table->second.find(tables::normalizeKey(value));
    if (entry == table->second.end())
        entry = table->second.find(tables::defaultKey);
    return entry == table->second.end() ? std::string_view() : entry->second;
}
