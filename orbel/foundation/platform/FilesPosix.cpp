#include "Files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace files {

namespace {

bool isFolder(int descriptor) {
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

bool matches(std::string_view name, std::string_view prefix, std::string_view suffix) {
    return name.size() >= prefix.size() + suffix.size() && name.substr(0, prefix.size()) == prefix &&
           name.substr(name.size() - suffix.size()) == suffix;
}

} // namespace

File openForReading(const char* path) {
    const int descriptor = path ? open(path, O_RDONLY | O_CLOEXEC) : -1;
    if (descriptor < 0)
        return nullptr;
    File file(isFolder(descriptor) ? nullptr : fdopen(descriptor, "rb"));
    if (!file)
        close(descriptor);
    return file;
}

File openText(const char* path) {
    return openForReading(path);
}

std::vector<std::string> listFolder(const std::string& folder, std::string_view prefix, std::string_view suffix) {
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code unknownKind;
        const std::string name = entry->path().filename().string();
        if (matches(name, prefix, suffix) && entry->is_regular_file(unknownKind))
            names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string joinPath(std::string_view folder, std::string_view name) {
    return std::string(folder) + '/' + std::string(name);
}

} // namespace files
