#ifndef ORBEL_TOOLS_DIFF_DIFFVERB_H
#define ORBEL_TOOLS_DIFF_DIFFVERB_H

#include "../CommandLine.h"

namespace CLI {
class App;
}

void addDiffVerb(CLI::App& app, Outcome& outcome);

#endif
