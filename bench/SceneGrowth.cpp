#include "SceneGrowth.h"

#include <orbel/orbel.h>

#include <support/TestHost.h>

#include <deque>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

template <class Base>
class Plugin : public Base {
public:
    char* getPluginName() override { return text(); }
    char* getPluginFolder() override { return text(); }
    int getPluginType() override { return 1; }

private:
    static char* text() {
        static char text[] = "plug-in";
        return text;
    }
};

using Leaf = Plugin<korDataHandler>;

class Structure : public Plugin<korDataStructureHandler> {
public:
    DataType* getFieldType() override { return DataStructure::getClassType(); }
};

/// A scene whose plug-ins are not attached yet. There is one at a time.
class Scene {
public:
    Scene() {
        TestHost::reset();
        host.keepsLog = false;
        host.localScene = host.addScene("show");
        root = host.scenes[host.localScene].root = host.localContainer = host.addContainer("root");
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene() {
        detach();
        TestHost::reset();
    }

    template <class Handler>
    int add(int parent, const char* kind, const std::string& field) {
        const int container = host.addContainer("container", parent);
        put<Handler>(container, kind, field);
        return container;
    }

    template <class Handler>
    void put(int container, const char* kind, const std::string& field) {
        auto handler = std::make_unique<Handler>();
        CONTAINER place = container;
        SCENE scene = host.localScene;
        handler->init(scene.id);
        handler->setLocalContainer(place);
        handler->setLocalScene(scene);
        handler->setFieldName(field.c_str());
        korPluginRecord& record = m_records.emplace_back();
        record.handler = handler.get();
        host.addPlugin(container, kind, &record);
        m_handlers.push_back(std::move(handler));
    }

    void requireAttached() const {
        for (const auto& handler : m_handlers)
            if (!handler->getField())
                throw std::logic_error("a plug-in is not attached");
    }

    /// The lowest first, so that each field goes with its handler.
    void detach() {
        for (; !m_handlers.empty(); m_handlers.pop_back())
            m_handlers.back()->unregisterHandler();
    }

    TestHost& host = TestHost::get();
    int root = -1;

private:
    std::deque<korPluginRecord> m_records;
    std::deque<std::unique_ptr<korDataHandler>> m_handlers;
};

Growth::Pass traversalOf(const std::shared_ptr<Scene>& scene) {
    const auto clean = [scene] {
        scene->requireAttached();
        scene->detach();
    };
    return {[scene] { initOrbel(); }, clean};
}

} // namespace

Growth::Pass wideScene(std::size_t items) {
    const auto scene = std::make_shared<Scene>();
    scene->put<Structure>(scene->root, "DataStructure", "board");
    for (std::size_t item = 0; item < items; ++item)
        scene->add<Leaf>(scene->root, "Text", "value" + std::to_string(item));
    return traversalOf(scene);
}

Growth::Pass deepScene(std::size_t items) {
    constexpr std::size_t chains = 100;
    const auto scene = std::make_shared<Scene>();
    for (std::size_t chain = 0; chain < chains; ++chain) {
        int container = scene->add<Structure>(scene->root, "DataStructure", "chain" + std::to_string(chain));
        for (std::size_t level = 1; level < items / chains; ++level)
            container = scene->add<Structure>(container, "DataStructure", "below");
    }
    return traversalOf(scene);
}
