#include "Files.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <new>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace files {

namespace {

bool isFolder(int descriptor) {
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

bool isRegularFile(int folder, const char* name) {
    struct stat status = {};
    return fstatat(folder, name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

using Folder = std::unique_ptr<DIR, FolderCloser>;

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
    // Not by the standard library's iterator, which ends the process when memory runs out.
    const Folder open(opendir(folder.c_str()));
    if (!open && errno == ENOMEM)
        throw std::bad_alloc();
    while (const dirent* entry = open ? readdir(open.get()) : nullptr)
        if (matches(entry->d_name, prefix, suffix) && isRegularFile(dirfd(open.get()), entry->d_name))
            names.emplace_back(entry->d_name);
    std::sort(names.begin(), names.end());
    return names;
}

std::string joinPath(std::string_view folder, std::string_view name) {
    return std::string(folder) + '/' + std::string(name);
}

} // namespace files
