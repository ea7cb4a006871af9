#include <orbel/host/korDataStructureHandler.h>

#include <orbel/tree/DataNode.h>

#include "../foundation/text/FixedText.h"
#include "HostState.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace {

using Refs = std::vector<LifeRef<korDataHandler>>;

Refs refsTo(const std::vector<korDataHandler*>& handlers) {
    Refs refs;
    refs.reserve(handlers.size());
    for (korDataHandler* handler : handlers)
        refs.push_back(handler->ref());
    return refs;
}

/// The handlers that are unregistered by one call or by calls inside it. Structures below structures, and several on
/// one container, would otherwise unregister each other over and over.
class UnregisterPass {
public:
    UnregisterPass() : m_isOutermost(!hostState().unregistered) {
        if (m_isOutermost)
            hostState().unregistered = &m_handlers;
    }
    UnregisterPass(const UnregisterPass&) = delete;
    UnregisterPass& operator=(const UnregisterPass&) = delete;
    ~UnregisterPass() {
        if (m_isOutermost)
            hostState().unregistered = nullptr;
    }

    /// False for a handler that was taken before.
    static bool take(korDataHandler& handler) { return hostState().unregistered->insert(&handler).second; }

private:
    std::unordered_set<korDataHandler*> m_handlers;
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
    const UnregisterPass pass;
    UnregisterPass::take(*this);
    std::vector<korDataHandler*> handlers;
    getChildrenHandlers(getLocalContainer(), handlers, true);
    for (const auto& handler : refsTo(handlers))
        if (handler.get() && UnregisterPass::take(*handler.get()))
            handler.get()->Unregister();
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
