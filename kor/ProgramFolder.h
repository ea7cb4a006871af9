#ifndef KOR_PROGRAMFOLDER_H
#define KOR_PROGRAMFOLDER_H

#include <string>

/// The folder of the program that runs; empty when the system does not tell.
std::string programFolder();

#endif
