#include "Host.h"

#include "Properties.h"

#include <orbel/orbel.h>

#include <asio/io_context.hpp>
#include <asio/ip/host_name.hpp>
#include <asio/ip/tcp.hpp>

#include <cstddef>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

Host* currentHost = nullptr;

/// What the exception that is being handled says.
std::string currentReason() {
    try {
        throw;
    } catch (const std::exception& error) {
        return *error.what() ? error.what() : "threw an exception that says nothing";
    } catch (...) {
        return "threw something that is no exception";
    }
}

/// Observes a field, since one that nobody observes leaves its tree when its plug-in does.
class FieldKeeper : public IDataHandler {
public:
    FieldKeeper(int sceneId, DataField* field) {
        init(sceneId);
        registerHandler(field);
    }

    char* getPluginName() override { return m_none; }
    int getPluginType() override { return 0; }
    char* getPluginFolder() override { return m_none; }

private:
    char m_none[1] = {};
};

} // namespace

Host::Host(Scene& scene, Modules& modules) : m_scene(scene), m_modules(modules) {
    currentHost = this;
}

Host::~Host() {
    // The tree outlives its host, whole: what plug-ins take along when they unregister would belong to nobody.
    for (const int id : m_scene.allPlugIns())
        if (PlugIn* const plugIn = m_scene.plugIn(id))
            keepFieldOf(*plugIn);
    for (const int id : m_scene.allPlugIns())
        if (PlugIn* const plugIn = m_scene.plugIn(id))
            finish(*plugIn);
    const std::vector<int> left = m_scene.allPlugIns();
    for (auto id = left.rbegin(); id != left.rend(); ++id)
        m_scene.removePlugIn(*id);
    m_scene.destroyRemoved();
    currentHost = nullptr;
}

Host* Host::current() {
    return currentHost;
}

template <class Action>
void Host::call(PlugIn& plugIn, Action action) {
    const int before = std::exchange(m_localContainer, plugIn.container);
    std::string reason;
    try {
        action();
    } catch (...) {
        reason = currentReason();
    }
    m_localContainer = before;
    if (!reason.empty())
        fail(plugIn, reason);
}

void Host::fail(PlugIn& plugIn, const std::string& reason) {
    plugIn.hasFailed = true;
    // A record without a handler is passed over in silence; without a record the library would tell of it once more.
    plugIn.record.handler = nullptr;
    if (plugIn.handler)
        plugIn.handler->unregisterHandler();
    std::cerr << "Kor: plug-in " << plugIn.kind << " on container \"" << m_scene.nameOf(plugIn.container)
              << "\": " << reason << '\n';
}

void Host::finish(PlugIn& plugIn) {
    if (plugIn.isEnding)
        return;
    plugIn.isEnding = true;
    if (plugIn.handler && !plugIn.hasFailed)
        call(plugIn, [&] { plugIn.handler->onCleanup(); });
}

void Host::build(PlugIn& plugIn) {
    if (plugIn.handler || plugIn.hasFailed || plugIn.isInTheMaking)
        return;
    plugIn.isInTheMaking = true;
    call(plugIn, [&] {
        std::unique_ptr<korDataHandler> handler(m_modules.find(plugIn.kind)(plugIn.settings));
        if (!handler)
            throw std::runtime_error("its module made none");
        // It may have removed itself meanwhile.
        if (!m_scene.plugIn(plugIn.id))
            return;
        plugIn.handler = std::move(handler);
        plugIn.record.handler = plugIn.handler.get();
        plugIn.handler->onLoad();
    });
    plugIn.isInTheMaking = false;
}

korPluginRecord* Host::recordOf(int plugIn) {
    PlugIn* const found = m_scene.plugIn(plugIn);
    m_lastAsked = plugIn;
    if (found && m_isAttaching)
        m_localContainer = found->container;
    return found ? &found->record : nullptr;
}

bool Host::attachOnce() {
    const auto& tops = m_scene.tops();
    m_localContainer = tops.empty() ? -1 : tops.front();
    m_lastAsked = -1;
    try {
        initOrbel();
        return true;
    } catch (...) {
        const std::string reason = currentReason();
        if (PlugIn* const thrower = m_scene.plugIn(m_lastAsked))
            fail(*thrower, reason);
        else
            std::cerr << "Kor: a plug-in that is gone: " << reason << '\n';
        return false;
    }
}

void Host::attachAll() {
    m_hasNew = false;
    const int before = m_localContainer;
    m_isAttaching = true;
    // A plug-in that throws ends the traversal, so it goes on without that one. Each does so once, unless it replaces
    // itself over and over.
    std::size_t attempts = m_scene.allPlugIns().size() + 1;
    while (!attachOnce() && --attempts > 0) {
    }
    m_isAttaching = false;
    m_localContainer = before;
    for (const auto& keeper : m_fieldKeepers)
        keeper->unregisterHandler();
    m_fieldKeepers.clear();
}

void Host::keepFieldOf(PlugIn& plugIn) {
    // Before the plug-in cleans up, since it is told of its field once more.
    if (DataField* const field = plugIn.handler ? plugIn.handler->getField() : nullptr)
        call(plugIn, [&] { m_fieldKeepers.push_back(std::make_unique<FieldKeeper>(m_scene.id(), field)); });
}

void Host::dropStale() {
    for (const int id : m_scene.allPlugIns()) {
        PlugIn* const plugIn = m_scene.plugIn(id);
        if (!plugIn || !plugIn->isStale)
            continue;
        keepFieldOf(*plugIn);
        finish(*plugIn);
        if (!m_scene.plugIn(id))
            continue;
        plugIn->isStale = false;
        plugIn->isEnding = false;
        plugIn->hasFailed = false;
        plugIn->record.handler = nullptr;
        plugIn->handler.reset();
        m_hasNew = true;
    }
}

void Host::callFrame() {
    m_scene.destroyRemoved();
    dropStale();
    if (m_hasNew || korDataHandler::getInitQX() != 0)
        attachAll();
    for (const int id : m_scene.allPlugIns()) {
        PlugIn* const plugIn = m_scene.plugIn(id);
        if (plugIn && plugIn->handler && !plugIn->hasFailed)
            call(*plugIn, [&] { plugIn->handler->perFrame(); });
    }
}

void Host::runCommands(const std::string& line) {
    Orbel* const tree = IDataHandlerImpl::getOrbel(m_scene.id(), false);
    if (!tree)
        return;
    const bool hasVerb = line.size() > 2 && line[1] == ' ';
    std::string text = hasVerb ? line.substr(2) : line;
    try {
        switch (hasVerb ? line.front() : '\0') {
        case '0':
            answer(text);
            break;
        case 'C':
            tree->parseCopyCommand(text.data());
            break;
        case 'L':
            tree->parseLinkCommand(text.data());
            break;
        default:
            text = line;
            tree->parseCommand(text.data(), 0);
        }
    } catch (...) {
        std::cerr << "Kor: a plug-in at \"" << line << "\": " << currentReason() << '\n';
    }
}

void Host::createPlugIn(int container, const std::string& kind) {
    constexpr std::string_view builtIn = "BUILT_IN*FUNCTION*";
    Container* const on = m_scene.container(container);
    const std::string name = kind.compare(0, builtIn.size(), builtIn) == 0 ? kind.substr(builtIn.size()) : kind;
    if (!on || name.empty() || m_scene.plugInOn(container, name) != -1)
        return;
    if (on->plugins.size() == Scene::maxPlugIns) {
        std::cerr << "Kor: plug-in " << name << " on container \"" << on->name << "\": there are already "
                  << Scene::maxPlugIns << " on it\n";
        return;
    }
    m_scene.addPlugIn(*on, name, {});
    m_hasNew = true;
}

void Host::deletePlugIn(int container, const std::string& kind) {
    PlugIn* const plugIn = m_scene.plugIn(m_scene.plugInOn(container, kind));
    if (!plugIn)
        return;
    finish(*plugIn);
    m_scene.removePlugIn(plugIn->id);
    // What it stood for goes to who is above it.
    m_hasNew = true;
}

void Host::changeSetting(PlugIn& plugIn, const std::string& setting, const std::string& value) {
    plugIn.settings[setting] = value;
    plugIn.isStale = plugIn.handler || plugIn.hasFailed;
}

std::string Host::machineName() {
    asio::error_code error;
    const std::string name = asio::ip::host_name(error);
    return error ? "localhost" : name;
}

std::string Host::machineAddress() {
    asio::error_code error;
    asio::io_context context;
    const auto found = asio::ip::tcp::resolver(context).resolve(asio::ip::tcp::v4(), machineName(), "", error);
    return error || found.empty() ? "127.0.0.1" : found.begin()->endpoint().address().to_string();
}

const std::string& Host::answer(const std::string& command) {
    m_answer = answerCommand(*this, command);
    return m_answer;
}
