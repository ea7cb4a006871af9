#ifndef ORBEL_TOOLS_TYPES_TYPESVERB_H
#define ORBEL_TOOLS_TYPES_TYPESVERB_H

#include "../CommandLine.h"

namespace CLI {
class App;
}

void addTypesVerb(CLI::App& app, Outcome& outcome);

#endif
