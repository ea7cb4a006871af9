#ifndef ORBEL_TABLES_CONVERSIONTABLES_H
#define ORBEL_TABLES_CONVERSIONTABLES_H

#include "../foundation/text/TextHash.h"

#include "TableListener.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

/// The conversion tables of all "QX_ConvTables*.csv" files of a list of folders. To read the files again, make another.
class ConversionTables {
public:
    using Table = std::unordered_map<std::string, std::string, text::TextHash, std::equal_to<>>;
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
    const std::string& lookup(std::string_view tableName, std::string_view value) const;

private:
    Tables m_tables;
};

#endif
