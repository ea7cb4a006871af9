#ifndef ORBEL_FOUNDATION_PLATFORM_FILES_H
#define ORBEL_FOUNDATION_PLATFORM_FILES_H

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Files as the host's operators see them: what the platforms do differently and the library must know of.
namespace files {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using File = std::unique_ptr<std::FILE, FileCloser>;

/// Null when there is no such file, it may not be read, or it is a folder.
File openForReading(const char* path);

/// The same, with line ends as the platform's texts have them.
File openText(const char* path);

/// The names, without the folder, of the regular files in a folder that begin and end with these texts; empty when
/// the folder cannot be read or its name is empty. Windows: in the order of the file system and without regard to
/// case. Elsewhere: in ascending byte order, case counts, and a symbolic link to a regular file is one.
std::vector<std::string> listFolder(const std::string& folder, std::string_view prefix, std::string_view suffix);

/// With the separator of the platform, whatever the folder ends in.
std::string joinPath(std::string_view folder, std::string_view name);

} // namespace files

#endif
