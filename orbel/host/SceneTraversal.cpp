#include <orbel/host/SceneTraversal.h>

#include <orbel/handlers/IDataHandlerImpl.h>
#include <orbel/host/korDataHandler.h>
#include <orbel/tree/DataNode.h>
#include <orbel/tree/FieldRef.h>
#include <orbel/tree/Orbel.h>

#include "../foundation/text/FixedText.h"
#include "ContainerWalk.h"
#include "Host.h"
#include "HostState.h"
#include "Macros.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::string_view ownGeometries[] = {"TEXT", "IMAGE", "REFERENCE", "POLYGON"};
constexpr const char* typedKinds[] = {"DataObject", "DataArray", "DataTable"};

DataNode* nodeOf(DataField* field) {
    return dynamic_cast<DataNode*>(field);
}

/// The root of the scene and its siblings; without a root, what the local container is below.
std::vector<CONTAINER> topContainers() {
    const CONTAINER root = host::rootOf(host::localScene());
    return host::siblingsFrom(host::isValid(root.id) ? root : host::topOf(host::localContainer()));
}

/// Attaches the handlers of containers to fields of the tree, below the nodes that handlers above them are attached to.
class Attaching {
public:
    explicit Attaching(SCENE scene) : m_scene(scene), m_tree(IDataHandlerImpl::getOrbel(scene.id, false)) {}

    void attachBelow(std::vector<CONTAINER> containers) {
        host::walk(std::move(containers), FieldRef(), [this](CONTAINER container, int index, const FieldRef& above) {
            return attachAll(container, index, above);
        });
    }

private:
    /// Returns the field for the containers below.
    FieldRef attachAll(CONTAINER container, int index, const FieldRef& above) {
        FieldRef below = above;
        attachGeometry(container, index, above, below);
        for (const int plugin : host::pluginsOn(container))
            if (host::isValid(plugin))
                attachPlugin(container, plugin, index, above, below);
        return below;
    }

    void attachGeometry(CONTAINER container, int index, const FieldRef& above, FieldRef& below) {
        const int geometry = host::geometryOf(container);
        if (!host::isValid(geometry))
            return;
        const auto type = host::typeOfGeometry(geometry);
        if (std::find(std::begin(ownGeometries), std::end(ownGeometries), type) != std::end(ownGeometries))
            return;
        const korPluginRecord* const record = host::askGeometryForRecord(geometry);
        if (!record || !record->handler)
            return;
        const auto handler = record->handler->ref();
        attach(*handler.get(), nodeFor(above), index);
        if (handler.get() && !handler.get()->getField())
            attach(*handler.get(), static_cast<Orbel*>(handler.get()->getOrbel()), 0);
        finish(handler, below);
    }

    void attachPlugin(CONTAINER container, int plugin, int index, const FieldRef& above, FieldRef& below) {
        const korPluginRecord* const record = recordOf(container, plugin);
        if (!record || !record->handler)
            return;
        const auto handler = record->handler->ref();
        attach(*handler.get(), nodeFor(above), index);
        finish(handler, below);
    }

    korPluginRecord* recordOf(CONTAINER container, int plugin) const {
        korPluginRecord* record = host::askForRecord(plugin);
        if (host::ours(record) && !record->handler) {
            host::askToBuildHandler(plugin);
            record = host::askForRecord(plugin);
            if (host::ours(record)) {
                record->container = container;
                record->sceneId = m_scene.id;
            }
        }
        if (!record)
            reportMissing(container, plugin);
        return host::ours(record);
    }

    static void reportMissing(CONTAINER container, int plugin) {
        const void* const none = nullptr;
        std::cout << "Orbel Init Traversal: Container " << host::nameOf(container.id);
        std::cout << " Function: " << host::nameOf(plugin) << std::endl;
        std::cout << "returned data=" << none << " and data->handler=" << none << std::endl;
    }

    DataNode* nodeFor(const FieldRef& above) const {
        DataNode* const node = nodeOf(above.get());
        return node ? node : m_tree;
    }

    static void attach(korDataHandler& handler, DataNode* node, int index) {
        const std::string name = handler.getFieldName();
        if (name.substr(0, 1) == "*")
            return;
        if (name.substr(0, 1) == "/")
            handler.registerHandler(name.c_str() + 1, static_cast<Orbel*>(handler.getOrbel()), 0);
        else
            handler.registerHandler(macros::expandStart(handler, name).c_str(), node, index);
    }

    static void finish(const LifeRef<korDataHandler>& handler, FieldRef& below) {
        if (!handler.get())
            return;
        if (DataNode* const node = nodeOf(handler.get()->getField())) {
            below = FieldRef(node);
            return;
        }
        handler.get()->onFunctionInit();
        if (handler.get())
            handler.get()->onInit();
    }

    SCENE m_scene;
    Orbel* m_tree;
};

/// Notes that a traversal runs.
class Traversal {
public:
    Traversal() { hostState().isTraversing = true; }
    Traversal(const Traversal&) = delete;
    Traversal& operator=(const Traversal&) = delete;
    ~Traversal() { hostState().isTraversing = false; }
};

/// A setting of a plug-in, read and written by host commands.
class PluginSetting {
public:
    PluginSetting(CONTAINER container, const std::string& plugin, const std::string& setting)
        : m_path('#' + std::to_string(container.id) + "*FUNCTION*" + plugin + '*' + setting),
          m_value(host::send((m_path + " GET").c_str())) {}

    void restore() const { host::send((m_path + " SET " + m_value).c_str()); }

private:
    std::string m_path;
    std::string m_value;
};

void recreate(CONTAINER container, const std::string& plugin) {
    const PluginSetting fieldName(container, plugin, "FieldName");
    const PluginSetting type(container, plugin, "TypeStr");
    host::deletePlugin(container, plugin.c_str());
    host::createPlugin(container, ("BUILT_IN*FUNCTION*" + plugin).c_str());
    if (!host::isValid(host::pluginOn(container, plugin.c_str())))
        return;
    fieldName.restore();
    type.restore();
}

} // namespace

void initOrbel() {
    if (hostState().isTraversing)
        return;
    const Traversal traversal;
    Attaching attaching(host::localScene());
    attaching.attachBelow(topContainers());
    korDataHandler::setInitQX(0);
}

void initContainer() {
    if (hostState().isTraversing)
        return;
    const Traversal traversal;
    Attaching attaching(host::localScene());
    if (const CONTAINER container = host::localContainer(); host::isValid(container.id))
        attaching.attachBelow({container});
}

void resetAllTypedObjects() {
    host::walk(topContainers(), 0, [](CONTAINER container, int /*index*/, int context) {
        for (const char* kind : typedKinds)
            if (host::isValid(host::pluginOn(container, kind)))
                recreate(container, kind);
        return context;
    });
}
