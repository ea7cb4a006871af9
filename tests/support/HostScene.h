#ifndef ORBEL_TESTS_SUPPORT_HOSTSCENE_H
#define ORBEL_TESTS_SUPPORT_HOSTSCENE_H

#include <orbel/orbel.h>
#include <support/Console.h>
#include <support/Environment.h>
#include <support/RecordingPlugin.h>
#include <support/TestHost.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// A plug-in in a scene. Besides what it hears it notes what the scene does to it, in a diary of its own: "A
/// registers x", "A unregisters".
template <class Base>
class ScenePluginOf : public RecordingPluginOf<Base> {
public:
    ScenePluginOf(Diary& heard, Diary& done, const std::string& name)
        : RecordingPluginOf<Base>(heard, name), m_done(&done), m_name(name) {}

    /// Called first of all by each Register, and by each Unregister. May destroy the plug-in.
    std::function<void()> onRegister;
    std::function<void()> onUnregister;

    /// What is made for a field name that is nowhere.
    DataType* fieldType = nullptr;

    DataType* getFieldType() override { return fieldType ? fieldType : Base::getFieldType(); }

    using Base::Register;
    void Register(const char* field, int refresh) override {
        if (react(onRegister, std::string("registers ") + field + (refresh != 0 ? "" : " quietly")))
            Base::Register(field, refresh);
    }

    void Unregister() override {
        if (react(onUnregister, "unregisters"))
            Base::Unregister();
    }

    void onSyncParams(korDataHandler* source) override {
        react(onSync, std::string("syncs with ") + source->getPluginName());
    }
    std::function<void()> onSync;

protected:
    /// False when the plug-in is gone.
    bool react(const std::function<void()>& reaction, const std::string& what) {
        const auto self = this->ref();
        m_done->note(m_name, what);
        if (const auto copy = reaction)
            copy();
        return self.get() != nullptr;
    }

private:
    Diary* m_done;
    std::string m_name;
};

using Leaf = ScenePluginOf<korDataHandler>;

/// Stands for a structure of the tree, which it makes when it is not there.
class Structure : public ScenePluginOf<korDataStructureHandler> {
public:
    Structure(Diary& heard, Diary& done, const std::string& name) : ScenePluginOf(heard, done, name) {
        fieldType = DataStructure::getClassType();
    }

    using ScenePluginOf::Register;
    void Register(char* field, int refresh) override {
        if (react(onRegister, std::string("registers structure ") + field))
            korDataStructureHandler::Register(field, refresh);
    }

    void RegisterChild(korDataHandler* child, const char* field, int index) override {
        react({}, std::string("takes ") + child->getPluginName() + " as " + field + ' ' + std::to_string(index));
        korDataStructureHandler::RegisterChild(child, field, index);
    }
};

/// A scene "Show/Weather" with a root container "root", in which plug-ins are put as a host does when it loads a
/// scene. Plug-ins are named after the containers that hold them.
class HostScene : public testing::Test {
protected:
    HostScene() {
        clearTypeVariables();
        host.localScene = host.addScene("Show/Weather");
        root = host.scenes[host.localScene].root = host.addContainer("root");
        host.localContainer = root;
    }

    HostScene(const HostScene&) = delete;
    HostScene& operator=(const HostScene&) = delete;
    /// The lowest first, so that fields go with their handlers.
    ~HostScene() override {
        while (!m_placed.empty()) {
            end(std::move(m_placed.back().handler));
            m_placed.pop_back();
        }
        for (DataHandler& keeper : m_keepers)
            if (keeper.getField())
                keeper.getField()->unregisterHandler(&keeper);
    }

    int add(const std::string& name, int parent) { return host.addContainer(name, parent); }

    template <class Plugin>
    Plugin& put(int container, const std::string& kind, const std::string& field) {
        return putNamed<Plugin>(container, kind, field, host.nameOf(container));
    }

    template <class Plugin>
    Plugin& putNamed(int container, const std::string& kind, const std::string& field, const std::string& name) {
        Plugin& plugin = make<Plugin>(container, field, name);
        host.addPlugin(container, kind, &recordOf(plugin));
        return plugin;
    }

    /// A plug-in that the host does not know of.
    template <class Plugin>
    Plugin& make(int container, const std::string& field, const std::string& name) {
        auto owned = std::make_unique<Plugin>(heard, done, name);
        Plugin& plugin = *owned;
        SCENE scene = host.localScene;
        CONTAINER place = container;
        plugin.init(scene.id);
        plugin.setLocalScene(scene);
        plugin.setLocalContainer(place);
        plugin.setCurrentContainer(place);
        plugin.setFieldName(field.c_str());
        auto record = std::make_unique<korPluginRecord>();
        record->container = container;
        record->sceneId = scene.id;
        record->handler = &plugin;
        m_placed.push_back({std::move(record), std::move(owned)});
        return plugin;
    }

    Structure& putStructure(int container, const std::string& field) {
        return put<Structure>(container, "DataStructure", field);
    }
    Structure& putArray(int container, const std::string& field) {
        auto& array = put<Structure>(container, "DataArray", field);
        array.fieldType = DataArray::getClassType();
        return array;
    }
    Leaf& putLeaf(int container, const std::string& field) { return put<Leaf>(container, "Text", field); }

    korPluginRecord& recordOf(korDataHandler& plugin) { return *placedOf(plugin).record; }

    /// As a host does it: the record stays, without a handler.
    void destroy(korDataHandler& plugin) {
        Placed& placed = placedOf(plugin);
        placed.record->handler = nullptr;
        end(std::move(placed.handler));
    }

    static std::string pathOf(korDataHandler& plugin) {
        return plugin.getField() ? plugin.getField()->getFullPath() : "";
    }

    Orbel* tree() { return IDataHandlerImpl::getOrbel(host.localScene, false); }
    /// Observes a field, so that it does not go with the last plug-in.
    void keep(DataField& field) { field.registerHandler(&m_keepers.emplace_back(Text("keeper"))); }

    /// An array with the elements of a type; it is kept.
    DataArray* addArray(const std::string& name, const std::string& type, int size) {
        DataObject::init();
        console.takeMessages();
        DataObject::getTypesTable()->parse(
            Text("Box = {string x;}; Point = {string x; string y; string same; Box box;}; Row = {Box cells[3];};"));
        auto* const array = new DataArray(Text(name));
        tree()->addField(array, 0);
        array->setObjectType(DataObject::getTypesTable()->getTypeByName(Text(type)));
        array->setSize(size);
        keep(*array);
        return array;
    }

    DataField* at(const std::string& path) { return tree()->getField(Text(path), 0, 0); }

    Console console;
    TestHost& host = TestHost::get();
    int root = -1;
    Diary heard;
    Diary done;

private:
    struct Placed {
        std::unique_ptr<korPluginRecord> record;
        std::unique_ptr<korDataHandler> handler;
    };

    /// A field whose node has gone before it belongs to nobody when its last handler goes.
    static void end(std::unique_ptr<korDataHandler> handler) {
        DataField* const field = handler ? handler->getField() : nullptr;
        const bool isLost = field && !field->getParent() && field->getNumHandlers() == 1;
        handler.reset();
        if (!isLost)
            return;
        if (field->isOfType(DataNode::getClassType()) != 0)
            deleteSubtree(*static_cast<DataNode*>(field));
        delete field;
    }

    /// Most often the last one is asked for.
    Placed& placedOf(korDataHandler& plugin) {
        for (std::size_t place = m_placed.size(); place-- > 0;)
            if (m_placed[place].handler.get() == &plugin)
                return m_placed[place];
        throw std::logic_error("no such plug-in");
    }

    std::vector<Placed> m_placed;
    std::deque<DataHandler> m_keepers;
};

#endif
