#include "../text/Scanner.h"
#include "Files.h"

#include <memory>

#include <windows.h>

namespace files {

namespace {

/// A 32-bit process sees the folders of the system as they are for its lifetime.
class PlainSystemFolders {
public:
    PlainSystemFolders() : m_isOn(Wow64DisableWow64FsRedirection(&m_before) != FALSE) {}
    ~PlainSystemFolders() {
        if (m_isOn)
            Wow64RevertWow64FsRedirection(m_before);
    }
    PlainSystemFolders(const PlainSystemFolders&) = delete;
    PlainSystemFolders& operator=(const PlainSystemFolders&) = delete;

private:
    void* m_before = nullptr;
    bool m_isOn;
};

bool matches(std::string_view name, std::string_view prefix, std::string_view suffix) {
    return name.size() >= prefix.size() + suffix.size() &&
           text::equalsIgnoringCase(name.substr(0, prefix.size()), prefix) &&
           text::equalsIgnoringCase(name.substr(name.size() - suffix.size()), suffix);
}

bool isFolder(const WIN32_FIND_DATAA& found) {
    return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

struct SearchCloser {
    void operator()(HANDLE search) const { FindClose(search); }
};

} // namespace

File openForReading(const char* path) {
    // Folders cannot be opened by this function here.
    return File(path ? std::fopen(path, "rb") : nullptr);
}

File openText(const char* path) {
    return File(path ? std::fopen(path, "r") : nullptr);
}

std::vector<std::string> listFolder(const std::string& folder, std::string_view prefix, std::string_view suffix) {
    std::vector<std::string> names;
    if (folder.empty())
        return names;
    const PlainSystemFolders plain;
    WIN32_FIND_DATAA found = {};
    const std::string pattern = joinPath(folder, std::string(prefix) + '*' + std::string(suffix));
    const HANDLE first = FindFirstFileA(pattern.c_str(), &found);
    if (first == INVALID_HANDLE_VALUE)
        return names;
    const std::unique_ptr<void, SearchCloser> search(first);
    do {
        // The search also looks at the short names of files, which differ from the long ones.
        if (!isFolder(found) && matches(found.cFileName, prefix, suffix))
            names.emplace_back(found.cFileName);
    } while (FindNextFileA(first, &found) != FALSE);
    return names;
}

std::string joinPath(std::string_view folder, std::string_view name) {
    return std::string(folder) + '\\' + std::string(name);
}

} // namespace files
