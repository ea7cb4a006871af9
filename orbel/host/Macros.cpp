#include "Macros.h"

#include <orbel/host/korDataHandler.h>

#include "Host.h"
#include "HostInfo.h"
#include "HostState.h"

namespace {

std::string nameOf(CONTAINER container) {
    return host::isValid(container.id) ? host::nameOf(container.id) : "";
}

std::string numberOf(int id) {
    return '#' + std::to_string(id);
}

struct Macro {
    std::string_view name;
    std::string (*value)(korDataHandler& handler);
};

std::string container(korDataHandler& handler) {
    return numberOf(handler.getCurrentContainer().id);
}

std::string containerName(korDataHandler& handler) {
    return nameOf(handler.getCurrentContainer());
}

std::string localContainer(korDataHandler& handler) {
    return numberOf(handler.getLocalContainer().id);
}

std::string localContainerName(korDataHandler& handler) {
    return nameOf(handler.getLocalContainer());
}

std::string localContainerKey(korDataHandler& handler) {
    return "KorId_" + std::to_string(handler.getLocalContainer().id);
}

std::string scene(korDataHandler& handler) {
    return numberOf(handler.getLocalScene().id);
}

std::string sceneId(korDataHandler& handler) {
    return handler.getSceneID();
}

std::string sceneName(korDataHandler& handler) {
    return handler.getSceneName();
}

std::string sceneFullName(korDataHandler& handler) {
    return handler.getSceneFullName();
}

std::string scenePath(korDataHandler& handler) {
    return handler.getScenePath();
}

std::string hostName(korDataHandler& /*handler*/) {
    return hostInfo().name;
}

std::string hostAddress(korDataHandler& /*handler*/) {
    return hostInfo().address;
}

constexpr Macro textMacros[] = {
    {"CONTAINER", container},
    {"CONTNAME", containerName},
    {"CONTAINER_NAME", containerName},
    {"LOCAL_CONTAINER", localContainer},
    {"LOCAL_CONTNAME", localContainerName},
    {"LOCAL_CONTAINER_NAME", localContainerName},
    {"SCENE", scene},
    {"THIS_SCENE", scene},
    {"SCENE_NAME", sceneName},
    {"SCENE_FULLNAME", sceneFullName},
    {"SCENE_FULL_NAME", sceneFullName},
    {"SCENE_PATH", scenePath},
    {"HOSTNAME", hostName},
    {"HOSTIP", hostAddress},
};

// Contract: not the same as in texts; scene files in use rely on either.
constexpr Macro sceneMacro = {"$(SCENE)", sceneName};
constexpr Macro sceneIdMacro = {"$(SCENE_ID)", sceneId};
constexpr Macro fieldMacros[] = {
    {"$(CONTAINER)", localContainerKey},
    {"$(CONTNAME)", localContainerName},
    sceneMacro,
    sceneIdMacro,
    {"$(SCENE_FULL_NAME)", sceneFullName},
    {"$(HOSTNAME)", hostName},
    {"$(HOSTIP)", hostAddress},
};

} // namespace

char* macros::valueOf(korDataHandler& handler, std::string_view name) {
    for (const Macro& macro : textMacros)
        if (macro.name == name) {
            std::string& value = hostState().macroValues[macro.name];
            value = macro.value(handler);
            return value.data();
        }
    return nullptr;
}

std::string macros::expandWhole(korDataHandler& handler, std::string_view fieldName) {
    for (const Macro& macro : fieldMacros)
        if (macro.name == fieldName)
            return macro.value(handler);
    return std::string(fieldName);
}

std::string macros::expandStart(korDataHandler& handler, std::string_view fieldName) {
    for (const Macro& macro : {sceneMacro, sceneIdMacro})
        if (fieldName.substr(0, macro.name.size()) == macro.name)
            return macro.value(handler).append(fieldName.substr(macro.name.size()));
    return expandWhole(handler, fieldName);
}
