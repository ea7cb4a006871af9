#ifndef ORBEL_TABLES_CONVERSIONTABLES_H
#define ORBEL_TABLES_CONVERSIONTABLES_H

#include "../foundation/text/TextHash.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

/// The conversion tables of all "QX_ConvTables*.csv" files of a list of folders. Made once; to read the files again,
/// make another.
class ConversionTables {
public:
    /// `folders` is separated by ";"; the environment variable QX_OBJECTS_DIR goes before it.
    explicit ConversionTables(std::string_view folders);

    /// What a table makes of a value: its entry, else its entry "__DEFAULT__", else the empty text. Valid as long as
    /// this object.
    const std::string& lookup(std::string_view tableName, std::string_view value) const;

private:
    using Table = std::unordered_map<std::string, std::string, text::TextHash, std::equal_to<>>;

    void readFile(const std::string& path);
    Table& tableFor(std::string_view name);

    std::map<std::string, Table, std::less<>> m_tables;
};

#endif
