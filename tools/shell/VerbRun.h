#ifndef ORBEL_TOOLS_SHELL_VERBRUN_H
#define ORBEL_TOOLS_SHELL_VERBRUN_H

#include "../CommandLine.h"

#include <functional>
#include <string>

/// Runs what a verb does. What keeps it from its work is told in one line, "orbel run: cannot read board.txt".
void runVerb(const std::string& verb, Outcome& outcome, const std::function<Outcome()>& work);

/// A file, or standard input for "-". Throws `Trouble` when it cannot be read.
std::string readWhole(const std::string& path);

#endif
