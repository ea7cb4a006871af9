#ifndef ORBEL_TOOLS_CHECK_CHECKRUN_H
#define ORBEL_TOOLS_CHECK_CHECKRUN_H

#include <tools/check/Finding.h>

#include <string>
#include <vector>

/// Checks a folder with all that the library reads from it, or files each by its kind; several type files in this
/// order. Throws Trouble when something cannot be read, and when nothing is there to be read.
Findings check(const std::vector<std::string>& paths);

#endif
