#include "OperatorFolder.h"

#include "InputError.h"
#include "Tables.h"

#include <orbel/orbel.h>

#include <filesystem>
#include <fstream>

void enterFolder(const std::string& folder) {
    const std::filesystem::path path = folder;
    // The library does without them, but then has neither settings nor capitals.
    for (const char* name : {"Orbel.ini", "CapitalUnicodeData.txt"})
        if (!std::ifstream(path / name))
            throw InputError((path / name).string() + ": cannot be opened");
    std::error_code error;
    std::filesystem::current_path(path, error);
    if (error)
        throw InputError(folder + ": " + error.message());
}

void startLibrary() {
    IDataHandlerImpl::init();
    for (const char* table : {labelTable, pictureTable})
        if (convert(table, "").empty())
            throw InputError(std::string("QX_ConvTables*.csv: no file has a table ") + table + " with __DEFAULT__");
}
