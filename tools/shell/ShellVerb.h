#ifndef ORBEL_TOOLS_SHELL_SHELLVERB_H
#define ORBEL_TOOLS_SHELL_SHELLVERB_H

#include "../CommandLine.h"

namespace CLI {
class App;
}

void addShellVerb(CLI::App& app, Outcome& outcome);

#endif
