#ifndef ORBEL_TABLES_CONVERSIONTABLES_H
#define ORBEL_TABLES_CONVERSIONTABLES_H

#include "TableListener.h"

#include <map>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>

/// The conversion tables of all "QX_ConvTables*.csv" files of a list of folders. To read the files again, make another.
class ConversionTables {
public:
    using Table = std::pmr::unordered_map<std::string_view, std::string_view>;
    using Tables = std::map<std::string, Table, std::less<>>;

    ConversionTables() = default;
    /// `folders` is separated by ";"; the environment variable QX_OBJECTS_DIR goes before it.
    explicit ConversionTables(std::string_view folders);

    /// Add tables and rows. Files that cannot be opened are left out.
    void readFolder(const std::string& folder, tables::TableListener& listener);
    void readFile(const std::string& path, tables::TableListener& listener);

    const Tables& all() const { return m_tables; }

    /// What a table makes of a value: its entry, else its entry "__DEFAULT__", else the empty text. Valid as long as
    /// this object.
    std::string_view lookup(std::string_view tableName, std::string_view value) const;

private:
    /// Keys, values and rows of all tables, which go together: one for each would be most of the time of reading.
    std::pmr::monotonic_buffer_resource m_memory;
    Tables m_tables;
};

#endif
