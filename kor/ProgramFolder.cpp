#include "ProgramFolder.h"

#include <filesystem>
#include <system_error>

std::string pluginFolderOf(const std::string& folder) {
    const std::filesystem::path beside = std::filesystem::path(folder) / "plugins";
    const std::filesystem::path installed = std::filesystem::path(folder) / KOR_INSTALLED_PLUGINS;
    std::error_code error;
    if (!std::filesystem::is_directory(beside, error) && std::filesystem::is_directory(installed, error))
        return installed.lexically_normal().string();
    return beside.string();
}
