#ifndef ORBEL_TOOLS_CHECK_CHECKVERB_H
#define ORBEL_TOOLS_CHECK_CHECKVERB_H

#include <tools/CommandLine.h>

namespace CLI {
class App;
}

/// Adds `orbel check`; `outcome` is set when it runs.
void addCheckVerb(CLI::App& app, Outcome& outcome);

#endif
