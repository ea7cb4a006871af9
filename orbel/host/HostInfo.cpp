#include "HostInfo.h"

#include "Host.h"
#include "HostState.h"

#include "../foundation/text/Scanner.h"

#include <optional>

namespace {

constexpr std::size_t maxAnswer = 1'023;
constexpr std::size_t maxText = 255;

} // namespace

HostInfo readHostInfo(std::string_view answer) {
    HostInfo info;
    std::string_view rest = answer.substr(0, maxAnswer);
    bool hasName = false;
    bool hasAddress = false;
    auto token = text::cutToken(rest, " \t\n:");
    const auto next = [&] { return token = text::cutToken(rest, " \t\n"); };
    for (; token && !(hasName && hasAddress); next()) {
        if (!hasName && *token == "Hostname" && next()) {
            info.name = token->substr(0, maxText);
            hasName = true;
        } else if (!hasAddress && token == "IP" && next() && next()) {
            info.address = token->substr(0, maxText);
            hasAddress = true;
        }
    }
    return info;
}

HostInfo& hostInfo() {
    std::optional<HostInfo>& info = hostState().info;
    if (!info) {
        // A host may call plug-ins that want to know, too, before it answers.
        info.emplace();
        info = readHostInfo(host::send("0 MAIN*ONAIR GET_INFO"));
    }
    return *info;
}
