#include "TestHost.h"

#include <orbel/host/HostApi.h>

#include <algorithm>
#include <cstring>

namespace {

template <class Objects>
auto* find(Objects& objects, int id) {
    const auto found = objects.find(id);
    return found == objects.end() ? nullptr : &found->second;
}

void answerText(const std::string& text, const char** out) {
    *out = TestHost::get().isSilent ? nullptr : text.c_str();
}

void answerRequest(const char* kind, int id, unsigned request, korPluginRecord* record, void** out) {
    *out = record;
    if (!TestHost::get().keepsLog)
        return;
    const std::string name = request == 0x55444154 ? "data" : request == 0x494e4954 ? "build" : "unknown";
    TestHost::get().log.push_back(name + " of " + kind + ' ' + std::to_string(id));
}

} // namespace

TestHost& TestHost::get() {
    static TestHost host;
    return host;
}

void TestHost::reset() {
    get() = TestHost();
}

int TestHost::addScene(const std::string& name) {
    scenes[++m_lastId] = {name, -1};
    return m_lastId;
}

int TestHost::addContainer(const std::string& name, int parent) {
    containers[++m_lastId] = {name, parent, {}, {}, -1};
    (parent == -1 ? m_tops : containers.at(parent).children).push_back(m_lastId);
    return m_lastId;
}

int TestHost::addPlugin(int container, const std::string& name, korPluginRecord* record, std::function<void()> build) {
    plugins[++m_lastId] = {name, record, std::move(build)};
    containers.at(container).plugins.push_back(m_lastId);
    if (record)
        record->container = container;
    return m_lastId;
}

int TestHost::addGeometry(int container, const std::string& type, korPluginRecord* record) {
    geometries[++m_lastId] = {type, record};
    containers.at(container).geometry = m_lastId;
    return m_lastId;
}

void TestHost::removeContainer(int container) {
    auto& siblings = const_cast<std::vector<int>&>(siblingsOf(container));
    siblings.erase(std::find(siblings.begin(), siblings.end(), container));
    forget(container);
}

void TestHost::forget(int container) {
    const Container gone = containers.at(container);
    containers.erase(container);
    for (const int plugin : gone.plugins)
        plugins.erase(plugin);
    geometries.erase(gone.geometry);
    for (const int child : gone.children)
        forget(child);
}

void TestHost::removePlugin(int plugin) {
    for (auto& [id, container] : containers)
        container.plugins.erase(std::remove(container.plugins.begin(), container.plugins.end(), plugin),
                                container.plugins.end());
    plugins.erase(plugin);
}

int TestHost::parentOf(int container) const {
    const auto* const found = find(containers, container);
    return found ? found->parent : -1;
}

const std::vector<int>& TestHost::siblingsOf(int container) const {
    const int parent = parentOf(container);
    return parent == -1 ? m_tops : containers.at(parent).children;
}

int TestHost::siblingBehind(int container) const {
    const auto& siblings = siblingsOf(container);
    // The last first: walks of a wide scene ask for one sibling after the other.
    static std::size_t last = 0;
    std::size_t at =
        last < siblings.size() && siblings[last] == container
            ? last
            : static_cast<std::size_t>(std::find(siblings.begin(), siblings.end(), container) - siblings.begin());
    last = ++at;
    return at < siblings.size() ? siblings[at] : -1;
}

int TestHost::pluginOn(int container, const std::string& name) const {
    const auto* const found = find(containers, container);
    if (found)
        for (const int plugin : found->plugins)
            if (plugins.at(plugin).name == name)
                return plugin;
    return -1;
}

const std::string& TestHost::nameOf(int id) const {
    if (const auto* const container = find(containers, id))
        return container->name;
    if (const auto* const plugin = find(plugins, id))
        return plugin->name;
    return nameOfNothing;
}

bool TestHost::isValid(int id) const {
    return containers.count(id) + plugins.count(id) + geometries.count(id) + scenes.count(id) > 0;
}

int _api__get_local_container(CONTAINER* container) {
    return container->id = TestHost::get().localContainer;
}

int _api__get_sceneid_local(SCENE* scene) {
    return scene->id = TestHost::get().localScene;
}

int _api__get_objectid(const char* name, const char* context, int flags) {
    for (const auto& [id, container] : TestHost::get().containers)
        if (container.name == name && *context == '\0' && flags == 64)
            return id;
    return -1;
}

int _api__get_objectid_from_objectid(int id) {
    return TestHost::get().isValid(id) ? id : -1;
}

int _api__object_valid(int id) {
    return TestHost::get().isValid(id) ? 1 : 0;
}

void _api__container_get_name(int container, const char** name) {
    answerText(TestHost::get().nameOf(container), name);
}

void _api__container_next(CONTAINER* container) {
    container->id = TestHost::get().siblingBehind(container->id);
}

void _api__container_level_up_2(CONTAINER* container) {
    container->id = TestHost::get().parentOf(container->id);
}

void _api__container_level_down_2(CONTAINER* container) {
    const auto* const found = find(TestHost::get().containers, container->id);
    container->id = found && !found->children.empty() ? found->children.front() : -1;
}

void _api__container_get_geometry(int container, int* geometry) {
    const auto* const found = find(TestHost::get().containers, container);
    *geometry = found ? found->geometry : -1;
}

int _api__container_get_function(int container, int* function, const char* plugin) {
    *function = TestHost::get().pluginOn(container, plugin);
    return *function == -1 ? 0 : 1;
}

int _api__container_get_function_plugins(int container, int* functions, int capacity) {
    const auto* const found = find(TestHost::get().containers, container);
    if (!found)
        return 0;
    int count = 0;
    for (const int plugin : found->plugins)
        if (count < capacity)
            functions[count++] = plugin;
    if (count < capacity && !TestHost::get().leavesListsOpen)
        functions[count] = -1;
    return 1;
}

void _api__container_create_function(int container, const char* plugin) {
    TestHost& host = TestHost::get();
    host.log.push_back(std::string("create ") + plugin + " on " + std::to_string(container));
    const char* const builtIn = "BUILT_IN*FUNCTION*";
    if (std::strncmp(plugin, builtIn, std::strlen(builtIn)) != 0)
        return;
    const int created = host.addPlugin(container, plugin + std::strlen(builtIn));
    if (const auto onCreate = host.onCreate)
        onCreate(created);
}

void _api__container_delete_function(int container, const char* plugin) {
    TestHost& host = TestHost::get();
    host.log.push_back(std::string("delete ") + plugin + " on " + std::to_string(container));
    host.removePlugin(host.pluginOn(container, plugin));
}

int _api__scene_get_root(int scene, int* root) {
    const auto* const found = find(TestHost::get().scenes, scene);
    if (!found || found->root == -1)
        return 0;
    *root = found->root;
    return 1;
}

void _api__scene_get_name(int scene, const char** name) {
    if (const auto* const found = find(TestHost::get().scenes, scene))
        answerText(found->name, name);
}

void _api__get_function_dataptr(int function, void** data) {
    const auto* const found = find(TestHost::get().plugins, function);
    *data = found ? found->record : nullptr;
}

void _api__function_dispatcher(int function, unsigned int request, void* /*argument*/, void** out) {
    const auto* const found = find(TestHost::get().plugins, function);
    const auto build = found ? found->build : nullptr;
    answerRequest("plug-in", function, request, found ? found->record : nullptr, out);
    if (request == 0x494e4954 && build)
        build();
}

void _api__get_geom_type(int geometry, const char** type) {
    if (const auto* const found = find(TestHost::get().geometries, geometry))
        answerText(found->type, type);
}

void _api__geom_dispatcher(int geometry, unsigned int request, void* /*argument*/, void** out) {
    const auto* const found = find(TestHost::get().geometries, geometry);
    answerRequest("geometry", geometry, request, found ? found->record : nullptr, out);
}

int _api__kor_send_command(const char* command, const char** answer) {
    TestHost& host = TestHost::get();
    host.log.emplace_back(command);
    if (const auto onCommand = host.onCommand)
        onCommand();
    answerText(host.answers[command], answer);
    return 1;
}
