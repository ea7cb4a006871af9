#ifndef ORBEL_TABLES_PLUGINPRESETS_H
#define ORBEL_TABLES_PLUGINPRESETS_H

#include <orbel/foundation/Export.h>

#include <map>
#include <string>
#include <vector>

/// The presets of one kind of plug-in, as the presets file has them: named columns of text, one row a preset. Owned
/// by the library, unchanged once it is loaded.
class ORBEL_API PluginPreSets {
public:
    PluginPreSets();
    ~PluginPreSets();
    PluginPreSets(const PluginPreSets&) = delete;
    PluginPreSets& operator=(const PluginPreSets&) = delete;

    /// The index of the column of exactly this name; -1 when unknown.
    int getColumn(const char* variable);
    /// The column "Name"; -1 when the header has none, -999 when there is no header.
    int getNameColumn();
    /// How many columns have different names.
    int getNumColumns();
    /// How many presets there are.
    int getNumRows();
    /// One text for each field of the row's line, which may be fewer than there are columns. Null out of range.
    const std::vector<std::string>* getRow(int index);
    /// The first row whose name is exactly this text; null when there is none.
    const std::vector<std::string>* findRow(const char* presetName);

private:
    friend class AllPluginPreSets;

    static constexpr int noHeader = -999;

    void readLine(std::vector<std::string> fields);
    void readHeader(const std::vector<std::string>& fields);

    std::map<std::string, int> m_columns;
    std::vector<std::vector<std::string>> m_rows;
    int m_nameColumn = noHeader;
};

#endif
