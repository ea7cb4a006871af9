#include "HostState.h"

HostState& hostState() {
    // Never destroyed: plug-ins may outlive all statics.
    static auto* const state = new HostState;
    return *state;
}
