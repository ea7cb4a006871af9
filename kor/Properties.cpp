#include "Properties.h"

#include "Host.h"
#include "Numbers.h"

#include <charconv>
#include <string_view>
#include <system_error>

namespace {

std::string_view cutAt(std::string_view& rest, char separator) {
    const std::size_t end = rest.find(separator);
    const std::string_view cut = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return cut;
}

/// A property of a container: where it is kept, as one of these.
struct Slot {
    std::string* text = nullptr;
    double* number = nullptr;
    bool* flag = nullptr;
};

Slot geometrySlot(Geometry& geometry, std::string_view property) {
    if (property == "TEXT")
        return {&geometry.text};
    if (property == "IMAGE")
        return {&geometry.picture};
    if (property == "COLOUR")
        return {&geometry.colour};
    if (property == "WIDTH")
        return {nullptr, &geometry.width};
    if (property == "HEIGHT")
        return {nullptr, &geometry.height};
    if (property == "SIZE")
        return {nullptr, &geometry.fontSize};
    if (property == "BOLD")
        return {nullptr, nullptr, &geometry.isBold};
    return {};
}

Slot slotOf(Container& container, std::string_view property) {
    constexpr std::string_view geometry = "GEOM*";
    if (property == "ACTIVE")
        return {nullptr, nullptr, &container.isVisible};
    if (property == "NAME")
        return {&container.name};
    if (property == "TRANSFORMATION*POSITION*X")
        return {nullptr, &container.x};
    if (property == "TRANSFORMATION*POSITION*Y")
        return {nullptr, &container.y};
    if (property == "TRANSFORMATION*SCALING*X")
        return {nullptr, &container.scaleX};
    if (property == "TRANSFORMATION*SCALING*Y")
        return {nullptr, &container.scaleY};
    if (container.geometry && property.substr(0, geometry.size()) == geometry)
        return geometrySlot(*container.geometry, property.substr(geometry.size()));
    return {};
}

std::string get(const Slot& slot) {
    if (slot.text)
        return *slot.text;
    if (slot.number)
        return numbers::write(*slot.number);
    return slot.flag ? (*slot.flag ? "1" : "0") : "";
}

void set(const Slot& slot, const std::string& value) {
    if (slot.text)
        *slot.text = value;
    const auto number = numbers::read(value);
    if (slot.number && number)
        *slot.number = *number;
    if (slot.flag)
        *slot.flag = number.value_or(0) != 0;
}

/// "KIND*SETTING" with GET or SET, "KIND" with ADD or DELETE.
std::string answerForPlugIn(Host& host, int container, std::string_view rest, std::string_view verb,
                            const std::string& value) {
    const std::string kind(cutAt(rest, '*'));
    const std::string setting(rest);
    if (setting.empty()) {
        if (verb == "ADD")
            host.createPlugIn(container, kind);
        else if (verb == "DELETE")
            host.deletePlugIn(container, kind);
        return {};
    }
    PlugIn* const plugIn = host.scene().plugIn(host.scene().plugInOn(container, kind));
    if (!plugIn)
        return {};
    if (verb == "SET")
        host.changeSetting(*plugIn, setting, value);
    const auto found = plugIn->settings.find(setting);
    return verb == "GET" && found != plugIn->settings.end() ? found->second : std::string();
}

int containerOf(Scene& scene, std::string_view name) {
    if (name.substr(0, 1) != "#")
        return scene.find(std::string(name));
    int id = -1;
    const auto result = std::from_chars(name.data() + 1, name.data() + name.size(), id);
    return result.ec == std::errc() && result.ptr == name.data() + name.size() ? id : -1;
}

std::string_view withoutNumber(std::string_view command) {
    std::size_t end = command.substr(0, 1) == "-" ? 1 : 0;
    const std::size_t start = end;
    while (end < command.size() && command[end] >= '0' && command[end] <= '9')
        ++end;
    return end > start && command.substr(end, 1) == " " ? command.substr(end + 1) : command;
}

} // namespace

std::string answerCommand(Host& host, const std::string& command) {
    std::string_view rest = withoutNumber(command);
    std::string_view path = cutAt(rest, ' ');
    const std::string_view verb = cutAt(rest, ' ');
    const std::string value(rest);
    if (path == "MAIN*ONAIR" && verb == "GET_INFO")
        return "Hostname: " + Host::machineName() + " IP address " + Host::machineAddress();
    const std::string_view object = cutAt(path, '*');
    Container* const container = host.scene().container(containerOf(host.scene(), object));
    if (!container)
        return {};
    constexpr std::string_view plugIns = "FUNCTION*";
    if (path.substr(0, plugIns.size()) == plugIns)
        return answerForPlugIn(host, container->id, path.substr(plugIns.size()), verb, value);
    const Slot slot = slotOf(*container, path);
    if (verb == "SET")
        set(slot, value);
    return verb == "GET" ? get(slot) : std::string();
}
