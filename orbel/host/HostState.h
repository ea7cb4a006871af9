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

/// What an UnregisterAllChildren and those inside it have dealt with.
struct Unregistered {
    std::unordered_set<korDataHandler*> handlers;
    /// Those that are dealt with down to the last container below.
    std::unordered_set<int> containers;
};

/// All state of the host bridge that is kept per process.
struct HostState {
    std::optional<HostInfo> info;
    /// The scenes that wait for initOrbel.
    SceneRing waitingScenes;
    bool isTraversing = false;
    /// Null when no UnregisterAllChildren is under way.
    Unregistered* unregistered = nullptr;
    /// The results of the last calls that lend a text.
    std::string sceneName;
    std::string scenePath;
    std::map<std::string_view, std::string> macroValues;
};

HostState& hostState();

#endif
