#include "ProgramFolder.h"

#include <filesystem>

#include <windows.h>

std::string programFolder() {
    char path[MAX_PATH];
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    return length < MAX_PATH ? std::filesystem::path(path, path + length).parent_path().string() : "";
}
