#ifndef KOR_PROGRAMFOLDER_H
#define KOR_PROGRAMFOLDER_H

#include <string>

/// The folder of the program that runs; empty when the system does not tell.
std::string programFolder();

/// Where the plug-ins are that belong to Kor: in "plugins" beside a program in `folder`, or else where an installation
/// puts them.
std::string pluginFolderOf(const std::string& folder);

#endif
