// What the executable exports: each function asks the host of the scene.

#include "Host.h"

#include <orbel/host/HostApi.h>

#include <string>

namespace {

constexpr unsigned dataRequest = 0x55444154;
constexpr unsigned buildRequest = 0x494e4954;

Host* host() {
    return Host::current();
}

Container* containerOf(int id) {
    return host() ? host()->scene().container(id) : nullptr;
}

/// Plug-ins that have failed are as if they were not there.
bool isAlive(int plugIn) {
    const PlugIn* const found = host() ? host()->scene().plugIn(plugIn) : nullptr;
    return found && !found->hasFailed;
}

void ask(int plugIn, unsigned request, void** out) {
    *out = nullptr;
    PlugIn* const found = host() ? host()->scene().plugIn(plugIn) : nullptr;
    if (found && request == buildRequest)
        host()->build(*found);
    if (request == dataRequest || request == buildRequest)
        *out = host() ? host()->recordOf(plugIn) : nullptr;
}

} // namespace

int _api__get_local_container(CONTAINER* container) {
    return container->id = host() ? host()->localContainer() : -1;
}

int _api__get_sceneid_local(SCENE* scene) {
    return scene->id = host() ? host()->scene().id() : -1;
}

int _api__get_objectid(const char* name, const char* /*context*/, int /*flags*/) {
    return host() ? host()->scene().find(name) : -1;
}

int _api__get_objectid_from_objectid(int id) {
    return _api__object_valid(id) != 0 ? id : -1;
}

int _api__object_valid(int id) {
    return host() && host()->scene().isValid(id) ? 1 : 0;
}

void _api__container_get_name(int container, const char** name) {
    *name = host() ? host()->scene().nameOf(container).c_str() : "";
}

void _api__container_next(CONTAINER* container) {
    const Container* const from = containerOf(container->id);
    container->id = from ? host()->scene().siblingBehind(*from) : -1;
}

void _api__container_level_up_2(CONTAINER* container) {
    const Container* const from = containerOf(container->id);
    container->id = from ? from->parent : -1;
}

void _api__container_level_down_2(CONTAINER* container) {
    const Container* const from = containerOf(container->id);
    container->id = from && !from->children.empty() ? from->children.front() : -1;
}

void _api__container_get_geometry(int container, int* geometry) {
    const Container* const on = containerOf(container);
    *geometry = on && on->geometry ? on->geometry->id : -1;
}

int _api__container_get_function(int container, int* function, const char* plugin) {
    *function = host() ? host()->scene().plugInOn(container, plugin) : -1;
    return *function == -1 ? 0 : 1;
}

int _api__container_get_function_plugins(int container, int* functions, int capacity) {
    const Container* const on = containerOf(container);
    if (!on)
        return 0;
    int count = 0;
    for (const int plugIn : on->plugins)
        if (count < capacity && isAlive(plugIn))
            functions[count++] = plugIn;
    if (count < capacity)
        functions[count] = -1;
    return 1;
}

void _api__container_create_function(int container, const char* plugin) {
    if (host())
        host()->createPlugIn(container, plugin);
}

void _api__container_delete_function(int container, const char* plugin) {
    if (host())
        host()->deletePlugIn(container, plugin);
}

int _api__scene_get_root(int scene, int* root) {
    if (!host() || scene != host()->scene().id() || host()->scene().tops().empty())
        return 0;
    *root = host()->scene().tops().front();
    return 1;
}

void _api__scene_get_name(int scene, const char** name) {
    *name = host() ? host()->scene().nameOf(scene).c_str() : "";
}

void _api__get_function_dataptr(int function, void** data) {
    *data = isAlive(function) ? &host()->scene().plugIn(function)->record : nullptr;
}

void _api__function_dispatcher(int function, unsigned int request, void* /*argument*/, void** out) {
    ask(function, request, out);
}

void _api__get_geom_type(int geometry, const char** type) {
    *type = host() ? host()->scene().nameOf(geometry).c_str() : "";
}

void _api__geom_dispatcher(int geometry, unsigned int request, void* /*argument*/, void** out) {
    const Geometry* const found = host() ? host()->scene().geometry(geometry) : nullptr;
    *out = nullptr;
    if (!found || !isAlive(found->plugin))
        return;
    // A geometry is asked for its data only, so its handler is made then.
    host()->build(*host()->scene().plugIn(found->plugin));
    ask(found->plugin, request, out);
}

int _api__kor_send_command(const char* command, const char** answer) {
    *answer = host() ? host()->answer(command).c_str() : "";
    return host() ? 1 : 0;
}
