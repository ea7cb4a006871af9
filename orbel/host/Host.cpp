#include "Host.h"

#include <orbel/host/HostApi.h>

#include "../foundation/platform/Symbols.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr unsigned dataRequest = 0x55444154;
constexpr unsigned buildRequest = 0x494e4954;
constexpr int ownMarker = 9473;
constexpr int maxPlugins = 20;

/// A function of the host, looked up when it is needed first.
template <class Signature>
class HostFunction {
public:
    explicit HostFunction(const char* name) : m_name(name) {}

    /// Null when the running executable has none.
    Signature* get() {
        if (m_name)
            m_function = reinterpret_cast<Signature*>(symbols::find("Kor.exe", m_name));
        m_name = nullptr;
        return m_function;
    }

private:
    const char* m_name;
    Signature* m_function = nullptr;
};

struct HostFunctions {
    HostFunction<decltype(_api__get_local_container)> localContainer{"_api__get_local_container"};
    HostFunction<decltype(_api__get_sceneid_local)> localScene{"_api__get_sceneid_local"};
    HostFunction<decltype(_api__get_objectid)> objectNamed{"_api__get_objectid"};
    HostFunction<decltype(_api__get_objectid_from_objectid)> objectNumbered{"_api__get_objectid_from_objectid"};
    HostFunction<decltype(_api__object_valid)> isValid{"_api__object_valid"};
    HostFunction<decltype(_api__container_get_name)> name{"_api__container_get_name"};
    HostFunction<decltype(_api__container_next)> next{"_api__container_next"};
    HostFunction<decltype(_api__container_level_up_2)> up{"_api__container_level_up_2"};
    HostFunction<decltype(_api__container_level_down_2)> down{"_api__container_level_down_2"};
    HostFunction<decltype(_api__container_get_geometry)> geometry{"_api__container_get_geometry"};
    HostFunction<decltype(_api__container_get_function)> plugin{"_api__container_get_function"};
    HostFunction<decltype(_api__container_get_function_plugins)> plugins{"_api__container_get_function_plugins"};
    HostFunction<decltype(_api__container_create_function)> createPlugin{"_api__container_create_function"};
    HostFunction<decltype(_api__container_delete_function)> deletePlugin{"_api__container_delete_function"};
    HostFunction<decltype(_api__scene_get_root)> sceneRoot{"_api__scene_get_root"};
    HostFunction<decltype(_api__scene_get_name)> sceneName{"_api__scene_get_name"};
    HostFunction<decltype(_api__get_function_dataptr)> pluginData{"_api__get_function_dataptr"};
    HostFunction<decltype(_api__function_dispatcher)> askPlugin{"_api__function_dispatcher"};
    HostFunction<decltype(_api__get_geom_type)> geometryType{"_api__get_geom_type"};
    HostFunction<decltype(_api__geom_dispatcher)> askGeometry{"_api__geom_dispatcher"};
    HostFunction<decltype(_api__kor_send_command)> sendCommand{"_api__kor_send_command"};
};

HostFunctions& functions() {
    static HostFunctions table;
    return table;
}

template <class Signature, class... Arguments>
void call(HostFunction<Signature>& function, Arguments... arguments) {
    if (auto* const found = function.get())
        found(arguments...);
}

template <class Signature, class... Arguments>
int answer(int failing, HostFunction<Signature>& function, Arguments... arguments) {
    auto* const found = function.get();
    return found ? found(arguments...) : failing;
}

template <class Signature>
const char* textOf(HostFunction<Signature>& function, int id) {
    const char* found = nullptr;
    call(function, id, &found);
    return found ? found : "";
}

/// The host's texts go to plug-ins as char*, by their interface.
char* lend(const char* text) {
    static char none[1] = {};
    return *text ? const_cast<char*>(text) : none;
}

} // namespace

bool host::isValid(int id) {
    return id != -1 && answer(0, functions().isValid, id) != 0;
}

int host::objectOf(int number) {
    return answer(-1, functions().objectNumbered, number);
}

char* host::nameOf(int id) {
    return lend(textOf(functions().name, id));
}

CONTAINER host::localContainer() {
    CONTAINER container;
    return answer(-1, functions().localContainer, &container);
}

CONTAINER host::findContainer(const char* name) {
    return answer(-1, functions().objectNamed, name, "", 64);
}

CONTAINER host::nextOf(CONTAINER container) {
    const CONTAINER before = container;
    call(functions().next, &container);
    // A host that leaves the handle as it is must not make a walk endless.
    return container.id == before.id ? CONTAINER() : container;
}

CONTAINER host::parentOf(CONTAINER container) {
    const CONTAINER before = container;
    call(functions().up, &container);
    return container.id == before.id ? CONTAINER() : container;
}

CONTAINER host::topOf(CONTAINER container) {
    for (CONTAINER above = parentOf(container); isValid(above.id); above = parentOf(above))
        container = above;
    return container;
}

std::vector<CONTAINER> host::siblingsFrom(CONTAINER container) {
    std::vector<CONTAINER> siblings;
    for (; isValid(container.id); container = nextOf(container))
        siblings.push_back(container);
    return siblings;
}

CONTAINER host::firstChildOf(CONTAINER container) {
    const CONTAINER before = container;
    call(functions().down, &container);
    return container.id == before.id ? CONTAINER() : container;
}

std::vector<CONTAINER> host::childrenOf(CONTAINER container) {
    return siblingsFrom(firstChildOf(container));
}

SCENE host::localScene() {
    SCENE scene;
    return answer(-1, functions().localScene, &scene);
}

char* host::fullNameOf(SCENE scene) {
    return lend(textOf(functions().sceneName, scene.id));
}

CONTAINER host::rootOf(SCENE scene) {
    int root = -1;
    return answer(0, functions().sceneRoot, scene.id, &root) != 0 ? objectOf(root) : -1;
}

int host::geometryOf(CONTAINER container) {
    int geometry = -1;
    call(functions().geometry, container.id, &geometry);
    return geometry;
}

std::string_view host::typeOfGeometry(int geometry) {
    return textOf(functions().geometryType, geometry);
}

int host::pluginOn(CONTAINER container, const char* plugin) {
    int found = -1;
    return answer(0, functions().plugin, container.id, &found, plugin) != 0 ? found : -1;
}

std::vector<int> host::pluginsOn(CONTAINER container) {
    // One more than asked for, since a host may end a full list too.
    int ids[maxPlugins + 1];
    std::fill(std::begin(ids), std::end(ids), -1);
    if (answer(0, functions().plugins, container.id, ids, maxPlugins) == 0)
        return {};
    std::vector<int> plugins;
    for (int index = 0; index < maxPlugins && ids[index] != -1; ++index)
        if (isValid(ids[index]))
            plugins.push_back(ids[index]);
    return plugins;
}

void host::createPlugin(CONTAINER container, const char* plugin) {
    call(functions().createPlugin, container.id, plugin);
}

void host::deletePlugin(CONTAINER container, const char* plugin) {
    call(functions().deletePlugin, container.id, plugin);
}

korPluginRecord* host::dataOf(int plugin) {
    void* data = nullptr;
    call(functions().pluginData, plugin, &data);
    return ours(static_cast<korPluginRecord*>(data));
}

korPluginRecord* host::askForRecord(int plugin) {
    void* data = nullptr;
    call(functions().askPlugin, plugin, dataRequest, nullptr, &data);
    return static_cast<korPluginRecord*>(data);
}

korPluginRecord* host::askGeometryForRecord(int geometry) {
    void* data = nullptr;
    call(functions().askGeometry, geometry, dataRequest, nullptr, &data);
    return ours(static_cast<korPluginRecord*>(data));
}

void host::askToBuildHandler(int plugin) {
    void* ignored = nullptr;
    call(functions().askPlugin, plugin, buildRequest, nullptr, &ignored);
}

korPluginRecord* host::ours(korPluginRecord* record) {
    return record && record->marker == ownMarker ? record : nullptr;
}

const char* host::send(const char* command) {
    const char* found = nullptr;
    if (auto* const function = functions().sendCommand.get())
        function(command, &found);
    return found ? found : "";
}
