#ifndef ORBEL_HOST_HOSTSTATE_H
#define ORBEL_HOST_HOSTSTATE_H

#include "HostInfo.h"
#include "SceneRing.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

class korDataHandler;

/// All state of the host bridge that is kept per process.
struct HostState {
    std::optional<HostInfo> info;
    /// The scenes that wait for initOrbel.
    SceneRing waitingScenes;
    bool isTraversing = false;
    /// The handlers that the UnregisterAllChildren under way has dealt with; null when none is.
    std::unordered_set<korDataHandler*>* unregistered = nullptr;
    /// The results of the last calls that lend a text.
    std::string sceneName;
    std::string scenePath;
    std::map<std::string_view, std::string> macroValues;
};

HostState& hostState();

#endif
