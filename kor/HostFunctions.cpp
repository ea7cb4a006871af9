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

template <class Answer>
void give(Answer* to, Answer answer) {
    if (to)
        *to = answer;
}

std::string textOf(const char* text) {
    return text ? text : "";
}

const char* nameOf(int id) {
    return host() ? host()->scene().nameOf(id).c_str() : "";
}

/// Moves a handle to where `next` says, -1 for nowhere.
template <class Next>
void move(CONTAINER* handle, Next next) {
    if (!handle)
        return;
    const Container* const from = containerOf(handle->id);
    handle->id = from ? next(*from) : -1;
}

void ask(int plugIn, unsigned request, void** out) {
    PlugIn* const found = host() ? host()->scene().plugIn(plugIn) : nullptr;
    if (found && request == buildRequest)
        host()->build(*found);
    const bool isKnown = request == dataRequest || request == buildRequest;
    give<void*>(out, found && isKnown ? host()->recordOf(plugIn) : nullptr);
}

} // namespace

int _api__get_local_container(CONTAINER* container) {
    const int id = host() ? host()->localContainer() : -1;
    give(container, CONTAINER(id));
    return id;
}

int _api__get_sceneid_local(SCENE* scene) {
    const int id = host() ? host()->scene().id() : -1;
    give(scene, SCENE(id));
    return id;
}

int _api__get_objectid(const char* name, const char* /*context*/, int /*flags*/) {
    return host() ? host()->scene().find(textOf(name)) : -1;
}

int _api__get_objectid_from_objectid(int id) {
    return _api__object_valid(id) != 0 ? id : -1;
}

int _api__object_valid(int id) {
    return host() && host()->scene().isValid(id) ? 1 : 0;
}

void _api__container_get_name(int container, const char** name) {
    give(name, nameOf(container));
}

void _api__container_next(CONTAINER* container) {
    move(container, [](const Container& from) { return host()->scene().siblingBehind(from); });
}

void _api__container_level_up_2(CONTAINER* container) {
    move(container, [](const Container& from) { return from.parent; });
}

void _api__container_level_down_2(CONTAINER* container) {
    move(container, [](const Container& from) { return from.children.empty() ? -1 : from.children.front(); });
}

void _api__container_get_geometry(int container, int* geometry) {
    const Container* const on = containerOf(container);
    give(geometry, on && on->geometry ? on->geometry->id : -1);
}

int _api__container_get_function(int container, int* function, const char* plugin) {
    const int found = host() ? host()->scene().plugInOn(container, textOf(plugin)) : -1;
    give(function, found);
    return found == -1 ? 0 : 1;
}

int _api__container_get_function_plugins(int container, int* functions, int capacity) {
    const Container* const on = containerOf(container);
    if (!on || !functions)
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
        host()->createPlugIn(container, textOf(plugin));
}

void _api__container_delete_function(int container, const char* plugin) {
    if (host())
        host()->deletePlugIn(container, textOf(plugin));
}

int _api__scene_get_root(int scene, int* root) {
    if (!host() || scene != host()->scene().id() || host()->scene().tops().empty())
        return 0;
    give(root, host()->scene().tops().front());
    return 1;
}

void _api__scene_get_name(int scene, const char** name) {
    give(name, nameOf(scene));
}

void _api__get_function_dataptr(int function, void** data) {
    give<void*>(data, isAlive(function) ? &host()->scene().plugIn(function)->record : nullptr);
}

void _api__function_dispatcher(int function, unsigned int request, void* /*argument*/, void** out) {
    ask(function, request, out);
}

void _api__get_geom_type(int geometry, const char** type) {
    give(type, nameOf(geometry));
}

void _api__geom_dispatcher(int geometry, unsigned int request, void* /*argument*/, void** out) {
    const Geometry* const found = host() ? host()->scene().geometry(geometry) : nullptr;
    const int plugIn = found ? found->plugin : -1;
    // A geometry is asked for its data only, so its handler is made then.
    if (isAlive(plugIn) && request == dataRequest)
        ask(plugIn, buildRequest, nullptr);
    ask(plugIn, request, out);
}

int _api__kor_send_command(const char* command, const char** answer) {
    give(answer, host() ? host()->answer(textOf(command)).c_str() : "");
    return host() ? 1 : 0;
}
