#include <orbel/host/korDataStructureHandler.h>

#include <orbel/tree/DataNode.h>

#include "../foundation/text/FixedText.h"
#include "ContainerWalk.h"
#include "HostState.h"

#include <optional>
#include <string>
#include <string_view>

namespace {

using Refs = std::vector<LifeRef<korDataHandler>>;

Refs refsTo(const std::vector<korDataHandler*>& handlers) {
    Refs refs;
    refs.reserve(handlers.size());
    for (korDataHandler* handler : handlers)
        refs.push_back(handler->ref());
    return refs;
}

/// An UnregisterAllChildren. Structures below structures, and several on one container, would otherwise unregister each
/// other over and over.
class UnregisterPass {
public:
    UnregisterPass() : m_isOutermost(!hostState().unregistered) {
        if (m_isOutermost)
            hostState().unregistered = &m_unregistered;
    }
    UnregisterPass(const UnregisterPass&) = delete;
    UnregisterPass& operator=(const UnregisterPass&) = delete;
    ~UnregisterPass() {
        if (m_isOutermost)
            hostState().unregistered = nullptr;
    }

    /// Whether it was not called by another one.
    bool isOutermost() const { return m_isOutermost; }

    void unregister(const std::vector<korDataHandler*>& handlers) {
        for (const auto& handler : refsTo(handlers))
            if (handler.get() && take(*handler.get()))
                handler.get()->Unregister();
    }

    /// False for a handler that was taken before.
    bool take(korDataHandler& handler) { return all().handlers.insert(&handler).second; }

    void finish(CONTAINER container) { all().containers.insert(container.id); }
    bool isFinished(CONTAINER container) const { return all().containers.count(container.id) > 0; }

private:
    static Unregistered& all() { return *hostState().unregistered; }

    Unregistered m_unregistered;
    bool m_isOutermost;
};

/// Kinds that make other containers below theirs when they are registered.
bool rebuildsItsChildren(korDataHandler& handler) {
    const std::string_view plugin = text::viewOf(handler.getPluginName());
    return plugin == "Data3DObject" || plugin == "DataGeom";
}

} // namespace

korDataStructureHandler::korDataStructureHandler() = default;

korDataStructureHandler::~korDataStructureHandler() = default;

void korDataStructureHandler::Register(char* fieldName, int /*refresh*/) {
    const LifeRef<korDataHandler> self = ref();
    // The name may be this handler's own, which the plug-ins below may change.
    const std::string name(text::viewOf(fieldName));
    UnregisterAllChildren();
    if (self.get())
        korDataHandler::Register(name.c_str(), 1);
    if (self.get())
        registerChildrenHandlers();
}

void korDataStructureHandler::RegisterChild(korDataHandler* child, const char* fieldName, int index) {
    if (auto* const node = dynamic_cast<DataNode*>(getField()); node && child)
        child->registerHandler(fieldName, node, index + getOffset());
}

void korDataStructureHandler::UnregisterAllChildren() {
    UnregisterPass pass;
    pass.take(*this);
    const CONTAINER container = getLocalContainer();
    if (pass.isOutermost()) {
        std::vector<korDataHandler*> handlers;
        getChildrenHandlers(container, handlers, true);
        pass.unregister(handlers);
        return;
    }
    // Listing all handlers again for every structure would take the square of the depth. What this walk misses, because
    // the scene changes meanwhile, is in the list of the outermost call.
    const LifeRef<korDataHandler> self = ref();
    host::walk(std::vector<CONTAINER>{container}, 0, [&](CONTAINER below, int, int context) -> std::optional<int> {
        if (!self.get() || pass.isFinished(below))
            return std::nullopt;
        std::vector<korDataHandler*> handlers;
        getContainerHandlers(below, handlers);
        pass.unregister(handlers);
        return self.get() && !pass.isFinished(below) ? std::optional(context) : std::nullopt;
    });
    if (self.get())
        pass.finish(container);
}

void korDataStructureHandler::syncChildren(korDataHandler* /*source*/, std::vector<int>& /*indices*/) {}

void korDataStructureHandler::Unregister() {
    const LifeRef<korDataHandler> self = ref();
    UnregisterAllChildren();
    if (!self.get())
        return;
    unregisterHandler();
    forgetParent();
    registerChildrenHandlers();
}

void korDataStructureHandler::registerChildrenHandlers() {
    if (!getField())
        getOrbel();
    if (!dynamic_cast<DataNode*>(getField()))
        return;
    const LifeRef<korDataHandler> self = ref();
    const auto handlersBelow = [this] {
        std::vector<korDataHandler*> handlers;
        getChildrenHandlers(getLocalContainer(), handlers, false);
        return refsTo(handlers);
    };
    Refs handlers = handlersBelow();
    for (std::size_t registered = 0; registered < handlers.size();) {
        const auto handler = handlers[registered++];
        if (handler.get())
            handler.get()->Register(std::string(handler.get()->getFieldName()).c_str(), 1);
        if (!self.get())
            return;
        if (handler.get() && rebuildsItsChildren(*handler.get()))
            handlers = handlersBelow();
    }
}
