#ifndef ORBEL_TABLES_CONVERSIONTABLES_H
#define ORBEL_TABLES_CONVERSIONTABLES_H

#include <cstddef>
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
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    using Table = std::unordered_map<std::string, std::string, Hash, std::equal_to<>>;

    void readFile(const std::string& path);
    Table& tableFor(std::string_view name);

    std::map<std::string, Table, std::less<>> m_tables;
};

#endif
