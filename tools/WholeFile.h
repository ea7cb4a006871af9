#ifndef ORBEL_TOOLS_WHOLEFILE_H
#define ORBEL_TOOLS_WHOLEFILE_H

#include <string>

/// All bytes of a file, whatever they are. Throws Trouble when it cannot be read.
std::string readWholeFile(const std::string& path);

/// The same with line ends as the library's readers of lines have them.
std::string readWholeText(const std::string& path);

bool isFolder(const std::string& path);
/// Anything but a folder.
bool isFile(const std::string& path);

#endif
