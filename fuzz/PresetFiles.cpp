#include "FileInput.h"
#include "Input.h"
#include "Target.h"

#include <orbel/tables/AllPluginPreSets.h>

#include <climits>
#include <string>

namespace {

void checkPresets(PluginPreSets& presets) {
    const int rows = presets.getNumRows();
    for (const int outside : {-1, rows, INT_MAX, INT_MIN})
        check(!presets.getRow(outside), "there is no row outside");
    check(presets.getColumn("there is no such column\x01") == -1, "an unknown column has no number");
    const int nameColumn = presets.getNameColumn();
    check(nameColumn == presets.getColumn("Name") || nameColumn == -999, "names are in the column Name");
    check(nameColumn >= 0 || rows == 0, "without names there are no rows");
    check(presets.getNumColumns() <= 64, "there are no more columns than fields in a line");
    for (int index = 0; index < rows; ++index) {
        const std::vector<std::string>& row = *presets.getRow(index);
        check(static_cast<int>(row.size()) > nameColumn && row.size() <= 64, "a row has a name");
        const std::string& name = row[static_cast<std::size_t>(nameColumn)];
        const std::vector<std::string>* const found = presets.findRow(name.c_str());
        check(found && (*found)[static_cast<std::size_t>(nameColumn)] == name, "a row is found by its name");
    }
}

const Target target("presets", [](std::string_view input) {
    static const FileInput file("QX_PreSets.csv");
    file.write(input);
    const AllPluginPreSets presets(file.folder());
    check(!presets.find(""), "no plug-in is without a name");
    constexpr std::string_view marker = "__PLUGIN__,";
    forEachLine(input, [&](std::string_view line) {
        if (line.substr(0, marker.size()) != marker)
            return;
        const std::string_view rest = line.substr(marker.size());
        if (PluginPreSets* const found = presets.find(rest.substr(0, rest.find_first_of(",\r"))))
            checkPresets(*found);
    });
});

} // namespace
