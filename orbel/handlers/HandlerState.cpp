#include "HandlerState.h"

HandlerState& handlerState() {
    // Never destroyed: trees live until the process ends, and handlers may outlive all statics.
    static auto* const state = new HandlerState;
    return *state;
}
