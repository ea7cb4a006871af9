#include "WholeFile.h"

#include <orbel/foundation/platform/Files.h>
#include <tools/CommandLine.h>

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace {

std::string readAll(const files::File& file, const std::string& path) {
    if (!file)
        throw Trouble("cannot open " + path);
    std::string bytes;
    char block[65'536];
    while (const std::size_t size = std::fread(block, 1, sizeof block, file.get()))
        bytes.append(block, size);
    if (std::ferror(file.get()) != 0)
        throw Trouble("cannot read " + path);
    return bytes;
}

} // namespace

std::string readWholeFile(const std::string& path) {
    return readAll(files::openForReading(path.c_str()), path);
}

std::string readWholeText(const std::string& path) {
    return readAll(files::openText(path.c_str()), path);
}

bool isFolder(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

bool isFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored) && !isFolder(path);
}
