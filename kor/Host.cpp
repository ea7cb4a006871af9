#include "Host.h"

#include "Properties.h"

#include <orbel/orbel.h>

#include <asio/io_context.hpp>
#include <asio/ip/host_name.hpp>
#include <asio/ip/tcp.hpp>

#include <exception>
#include <iostream>
#include <utility>

namespace {

Host* currentHost = nullptr;

} // namespace

Host::Host(Scene& scene, Modules& modules) : m_scene(scene), m_modules(modules) {
    currentHost = this;
}

Host::~Host() {
    for (const int id : m_scene.allPlugIns()) {
        if (PlugIn* const plugIn = m_scene.plugIn(id))
            finish(*plugIn);
        m_scene.removePlugIn(id);
    }
    currentHost = nullptr;
}

Host* Host::current() {
    return currentHost;
}

template <class Action>
void Host::call(PlugIn& plugIn, Action action) {
    const int id = plugIn.id;
    const int before = std::exchange(m_localContainer, plugIn.container);
    std::string reason;
    try {
        action();
    } catch (const std::exception& error) {
        reason = error.what();
    } catch (...) {
        reason = "threw something that is no exception";
    }
    m_localContainer = before;
    // The plug-in may have removed itself meanwhile.
    if (PlugIn* const still = reason.empty() ? nullptr : m_scene.plugIn(id))
        fail(*still, reason);
}

void Host::fail(PlugIn& plugIn, const std::string& reason) {
    plugIn.hasFailed = true;
    std::cerr << "Kor: plug-in " << plugIn.kind << " on container \"" << m_scene.nameOf(plugIn.container)
              << "\": " << reason << '\n';
}

void Host::finish(PlugIn& plugIn) {
    if (plugIn.handler && !plugIn.hasFailed)
        call(plugIn, [&] { plugIn.handler->onCleanup(); });
}

void Host::build(PlugIn& plugIn) {
    if (plugIn.handler || plugIn.hasFailed)
        return;
    const int id = plugIn.id;
    call(plugIn, [&] {
        std::unique_ptr<korDataHandler> handler(m_modules.find(plugIn.kind)(plugIn.settings));
        if (!handler)
            throw std::runtime_error("its module made none");
        PlugIn* const still = m_scene.plugIn(id);
        if (!still)
            return;
        still->handler = std::move(handler);
        still->record.handler = still->handler.get();
        still->handler->onLoad();
    });
}

korPluginRecord* Host::recordOf(int plugIn) {
    PlugIn* const found = m_scene.plugIn(plugIn);
    m_lastAsked = plugIn;
    return found && !found->hasFailed ? &found->record : nullptr;
}

void Host::attachAll() {
    const auto& tops = m_scene.tops();
    const int before = std::exchange(m_localContainer, tops.empty() ? -1 : tops.front());
    // A plug-in that throws ends the traversal, so it goes on without that one.
    for (bool isDone = false; !isDone;) {
        std::string reason;
        try {
            initOrbel();
        } catch (const std::exception& error) {
            reason = error.what();
        } catch (...) {
            reason = "threw something that is no exception";
        }
        PlugIn* const thrower = reason.empty() ? nullptr : m_scene.plugIn(m_lastAsked);
        if (thrower && !thrower->hasFailed)
            fail(*thrower, reason);
        else
            isDone = true;
    }
    m_localContainer = before;
}

void Host::dropStale() {
    for (const int id : m_scene.allPlugIns()) {
        PlugIn* const plugIn = m_scene.plugIn(id);
        if (!plugIn || !plugIn->isStale)
            continue;
        finish(*plugIn);
        plugIn->isStale = false;
        plugIn->hasFailed = false;
        plugIn->record.handler = nullptr;
        plugIn->handler.reset();
        korDataHandler::setInitQX(1);
    }
}

void Host::callFrame() {
    dropStale();
    if (korDataHandler::getInitQX() != 0)
        attachAll();
    for (const int id : m_scene.allPlugIns()) {
        PlugIn* const plugIn = m_scene.plugIn(id);
        if (plugIn && plugIn->handler && !plugIn->hasFailed)
            call(*plugIn, [&] { plugIn->handler->perFrame(); });
    }
}

void Host::runCommands(const std::string& line) {
    Orbel* const tree = IDataHandlerImpl::getOrbel(m_scene.id(), false);
    std::string text = line.size() > 2 && line[1] == ' ' ? line.substr(2) : line;
    if (!tree)
        return;
    try {
        switch (text.size() < line.size() ? line.front() : '\0') {
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
    } catch (const std::exception& error) {
        std::cerr << "Kor: a plug-in threw at \"" << line << "\": " << error.what() << '\n';
    }
}

void Host::createPlugIn(int container, const std::string& kind) {
    constexpr std::string_view builtIn = "BUILT_IN*FUNCTION*";
    Container* const on = m_scene.container(container);
    const std::string name = kind.compare(0, builtIn.size(), builtIn) == 0 ? kind.substr(builtIn.size()) : kind;
    if (!on || name.empty() || m_scene.plugInOn(container, name) != -1)
        return;
    m_scene.addPlugIn(*on, name, {});
    korDataHandler::setInitQX(1);
}

void Host::deletePlugIn(int container, const std::string& kind) {
    PlugIn* const plugIn = m_scene.plugIn(m_scene.plugInOn(container, kind));
    if (!plugIn)
        return;
    const int id = plugIn->id;
    finish(*plugIn);
    m_scene.removePlugIn(id);
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
