#include "TypeLoading.h"

#include <orbel/foundation/DataPrintf.h>
#include <orbel/types/DataObjectTypesTable.h>

#include "../foundation/platform/Files.h"
#include "../foundation/text/FixedText.h"
#include "../foundation/text/Scanner.h"
#include "TypeFiles.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace {

/// The variables in order of precedence.
struct Variable {
    TypeSource source;
    const char* name;
};
constexpr Variable variables[] = {
    {TypeSource::file, "QX_OBJECTS_FILE"},
    {TypeSource::folder, "QX_OBJECTS_DIR"},
    {TypeSource::path, "QX_OBJECTS_PATH"},
};

constexpr const char* dumpVariable = "QX_DUMP_CONFIG";

} // namespace

TypeSource chooseTypeSource() {
    for (const Variable& variable : variables)
        if (std::getenv(variable.name))
            return variable.source;
    return TypeSource::configured;
}

std::string typeSourceText(TypeSource source) {
    const auto* variable = std::find_if(std::begin(variables), std::end(variables),
                                        [source](const Variable& candidate) { return candidate.source == source; });
    return std::string(text::viewOf(std::getenv(variable->name)));
}

bool isTypeDumpWanted() {
    return std::getenv(dumpVariable) != nullptr;
}

bool loadTypeFile(DataObjectTypesTable*& table, const std::string& path) {
    if (!table)
        table = new DataObjectTypesTable;
    DataPrintf("DataObject: Reading configuration file: %s\n", path.c_str());
    const TypeFile file = readTypeFile(path.c_str());
    if (file.result == TypeFileResult::cannotOpen)
        DataPrintf("DataObject: Couldn't read objects configuration file: %s\n", path.c_str());
    return file.result == TypeFileResult::text && table->parse(withoutComments(file.text).data());
}

void loadTypeFolder(DataObjectTypesTable*& table, const std::string& folder) {
    for (const std::string& name : files::listFolder(folder, "", ".qx"))
        loadTypeFile(table, files::joinPath(folder, name));
}

void loadTypeFolders(DataObjectTypesTable*& table, std::string_view list) {
    while (!list.empty())
        loadTypeFolder(table, std::string(text::cutFolder(list)));
}
