#include "SceneFile.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <sstream>
#include <utility>

namespace {

using nlohmann::json;

/// A place in the file.
class Place {
public:
    Place(const std::string& file, const json& value) : m_file(file), m_value(value) {}

    [[noreturn]] void fail(const std::string& reason) const {
        throw SceneFileError(m_file + ": " + (m_pointer.empty() ? "/" : m_pointer) + ": " + reason);
    }

    Place member(const std::string& key) const { return Place(*this, m_value.at(key), key); }
    Place item(std::size_t index) const { return Place(*this, m_value.at(index), std::to_string(index)); }
    bool has(const std::string& key) const { return m_value.contains(key); }
    std::size_t size() const { return m_value.size(); }

    const Place& mustBe(bool isRight, const char* what) const {
        if (!isRight)
            fail(std::string("must be ") + what);
        return *this;
    }
    const Place& mustBeObject() const { return mustBe(m_value.is_object(), "an object"); }
    const Place& mustBeList() const { return mustBe(m_value.is_array(), "a list"); }

    /// Fails at the first key that is none of these.
    void allowKeys(std::initializer_list<const char*> allowed) const {
        for (const auto& [key, value] : m_value.items()) {
            bool isAllowed = false;
            std::string names;
            for (const char* name : allowed) {
                isAllowed = isAllowed || key == name;
                names += (names.empty() ? "" : ", ") + std::string(name);
            }
            if (!isAllowed)
                Place(*this, value, key).fail("is unknown; known are " + names);
        }
    }

    std::string text() const { return mustBe(m_value.is_string(), "a text").m_value.get<std::string>(); }
    double number() const { return mustBe(m_value.is_number(), "a number").m_value.get<double>(); }
    bool flag() const { return mustBe(m_value.is_boolean(), "true or false").m_value.get<bool>(); }

    /// Numbers and flags as an author writes them, texts without their quotes.
    std::string anyText() const {
        mustBe(m_value.is_primitive() && !m_value.is_null(), "a text, a number, true or false");
        return m_value.is_string() ? text() : m_value.is_boolean() ? (flag() ? "1" : "0") : m_value.dump();
    }

    void readPair(double& first, double& second) const {
        mustBe(m_value.is_array() && size() == 2, "a list of two numbers");
        first = item(0).number();
        second = item(1).number();
    }

    std::vector<std::string> keys() const {
        std::vector<std::string> all;
        for (const auto& [key, value] : m_value.items())
            all.push_back(key);
        return all;
    }

private:
    Place(const Place& above, const json& value, std::string key) : m_file(above.m_file), m_value(value) {
        for (std::size_t at = 0; (at = key.find_first_of("~/", at)) != std::string::npos; at += 2)
            key.replace(at, 1, key[at] == '~' ? "~0" : "~1");
        m_pointer = above.m_pointer + '/' + key;
    }

    const std::string& m_file;
    const json& m_value;
    std::string m_pointer;
};

template <class Value>
void readIf(const Place& place, const char* key, Value& value) {
    if (!place.has(key))
        return;
    if constexpr (std::is_same_v<Value, std::string>)
        value = place.member(key).text();
    else if constexpr (std::is_same_v<Value, bool>)
        value = place.member(key).flag();
    else
        value = place.member(key).number();
}

void readPairIf(const Place& place, const char* key, double& first, double& second) {
    if (place.has(key))
        place.member(key).readPair(first, second);
}

KorSettings readSettings(const Place& place) {
    KorSettings settings;
    for (const std::string& key : place.mustBeObject().keys())
        settings[key] = place.member(key).anyText();
    return settings;
}

void readGeometry(const Place& place, Scene& scene, Container& container) {
    place.mustBeObject().allowKeys({"type", "text", "picture", "colour", "align", "bold", "width", "height", "size",
                                    "radius", "growsUp", "settings"});
    if (!place.has("type"))
        place.fail("needs a type");
    const std::string type = place.member("type").text();
    Geometry& geometry = scene.addGeometry(container, type);
    readIf(place, "text", geometry.text);
    readIf(place, "picture", geometry.picture);
    readIf(place, "colour", geometry.colour);
    readIf(place, "align", geometry.align);
    readIf(place, "bold", geometry.isBold);
    readIf(place, "width", geometry.width);
    readIf(place, "height", geometry.height);
    readIf(place, "size", geometry.fontSize);
    readIf(place, "radius", geometry.radius);
    readIf(place, "growsUp", geometry.growsUp);
    if (geometry.align != "left" && geometry.align != "middle" && geometry.align != "right")
        place.member("align").fail("must be left, middle or right");
    if (type == "TEXT" || type == "IMAGE" || type == "POLYGON" || type == "REFERENCE")
        return;
    PlugIn& plugIn = scene.addGeometryPlugIn(
        container, type, place.has("settings") ? readSettings(place.member("settings")) : KorSettings());
    geometry.plugin = plugIn.id;
}

void readPlugIn(const Place& place, Scene& scene, Container& container) {
    KorSettings settings = readSettings(place);
    const auto kind = settings.find("kind");
    if (kind == settings.end() || kind->second.empty())
        place.fail("needs a kind");
    const std::string name = kind->second;
    settings.erase(kind);
    if (scene.plugInOn(container.id, name) != -1)
        place.fail("is the second " + name + " on this container");
    scene.addPlugIn(container, name, std::move(settings));
}

void readContainers(const Place& list, Scene& scene, int parent);

void readContainer(const Place& place, Scene& scene, int parent, int copy) {
    double stepX = 0;
    double stepY = 0;
    readPairIf(place, "step", stepX, stepY);
    std::string name;
    readIf(place, "name", name);
    Container& container = scene.addContainer(copy < 0 ? name : name + std::to_string(copy), parent);
    readPairIf(place, "position", container.x, container.y);
    readPairIf(place, "scale", container.scaleX, container.scaleY);
    readIf(place, "visible", container.isVisible);
    container.x += stepX * std::max(copy, 0);
    container.y += stepY * std::max(copy, 0);
    const int id = container.id;
    if (place.has("geometry"))
        readGeometry(place.member("geometry"), scene, *scene.container(id));
    if (place.has("plugins")) {
        const Place plugins = place.member("plugins");
        for (std::size_t index = 0; index < plugins.mustBeList().size(); ++index)
            readPlugIn(plugins.item(index), scene, *scene.container(id));
    }
    if (place.has("children"))
        readContainers(place.member("children"), scene, id);
}

void readContainers(const Place& list, Scene& scene, int parent) {
    constexpr double maxCopies = 100'000;
    for (std::size_t index = 0; index < list.mustBeList().size(); ++index) {
        const Place place = list.item(index);
        place.mustBeObject().allowKeys(
            {"name", "position", "scale", "visible", "geometry", "plugins", "children", "repeat", "step"});
        if (!place.has("repeat")) {
            readContainer(place, scene, parent, -1);
            continue;
        }
        const double copies = place.member("repeat").number();
        if (copies != static_cast<int>(copies) || copies < 1 || copies > maxCopies)
            place.member("repeat").fail("must be a whole number from 1 to 100000");
        for (int copy = 0; copy < static_cast<int>(copies); ++copy)
            readContainer(place, scene, parent, copy);
    }
}

} // namespace

void readScene(const std::string& text, const std::string& name, Scene& scene) {
    json root;
    try {
        root = json::parse(text);
    } catch (const json::parse_error& error) {
        const std::size_t end = std::min(error.byte, text.size());
        const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
        throw SceneFileError(name + ": line " + std::to_string(line) + ": is no JSON");
    }
    const Place place(name, root);
    place.mustBeObject().allowKeys({"scene", "size", "background", "containers"});
    readIf(place, "scene", scene.name);
    readPairIf(place, "size", scene.width, scene.height);
    readIf(place, "background", scene.background);
    if (scene.width < 1 || scene.height < 1)
        place.member("size").fail("must be at least 1 by 1");
    if (!place.has("containers"))
        place.fail("needs containers");
    readContainers(place.member("containers"), scene, -1);
}

void readSceneFile(const std::string& path, Scene& scene) {
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file)
        throw SceneFileError(path + ": cannot be read");
    readScene(text, path, scene);
}
