#ifndef ORBEL_TOOLS_SHELL_RUNVERB_H
#define ORBEL_TOOLS_SHELL_RUNVERB_H

#include "../CommandLine.h"

namespace CLI {
class App;
}

void addRunVerb(CLI::App& app, Outcome& outcome);

#endif
