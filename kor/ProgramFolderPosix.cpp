#include "ProgramFolder.h"

#include <filesystem>
#include <system_error>

std::string programFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}
