#include "SceneFile.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using nlohmann::json;

/// A place in the file.
class Place {
public:
    Place(const std::string& file, const json& value) : m_file(&file), m_value(&value) {}

    [[noreturn]] void fail(const std::string& reason) const {
        throw SceneFileError(*m_file + ": " + (m_pointer.empty() ? "/" : m_pointer) + ": " + reason);
    }

    Place member(const std::string& key) const { return Place(*this, m_value->at(key), key); }
    Place item(std::size_t index) const { return Place(*this, m_value->at(index), std::to_string(index)); }
    bool has(const std::string& key) const { return m_value->contains(key); }
    std::size_t size() const { return m_value->size(); }

    const Place& mustBe(bool isRight, const char* what) const {
        if (!isRight)
            fail(std::string("must be ") + what);
        return *this;
    }
    const Place& mustBeObject() const { return mustBe(m_value->is_object(), "an object"); }
    const Place& mustBeList() const { return mustBe(m_value->is_array(), "a list"); }

    /// Fails at the first key that is none of these.
    void allowKeys(std::initializer_list<const char*> allowed) const {
        for (const auto& [key, value] : m_value->items()) {
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

    std::string text() const { return mustBe(m_value->is_string(), "a text").m_value->get<std::string>(); }
    double number() const { return mustBe(m_value->is_number(), "a number").m_value->get<double>(); }
    bool flag() const { return mustBe(m_value->is_boolean(), "true or false").m_value->get<bool>(); }

    /// Numbers and flags as an author writes them, texts without their quotes.
    std::string anyText() const {
        mustBe(m_value->is_primitive() && !m_value->is_null(), "a text, a number, true or false");
        return m_value->is_string() ? text() : m_value->is_boolean() ? (flag() ? "1" : "0") : m_value->dump();
    }

    void readPair(double& first, double& second) const {
        mustBe(m_value->is_array() && size() == 2, "a list of two numbers");
        first = item(0).number();
        second = item(1).number();
    }

    std::vector<std::string> keys() const {
        std::vector<std::string> all;
        for (const auto& [key, value] : m_value->items())
            all.push_back(key);
        return all;
    }

private:
    Place(const Place& above, const json& value, std::string key) : m_file(above.m_file), m_value(&value) {
        for (std::size_t at = 0; (at = key.find_first_of("~/", at)) != std::string::npos; at += 2)
            key.replace(at, 1, key[at] == '~' ? "~0" : "~1");
        m_pointer = above.m_pointer + '/' + key;
    }

    const std::string* m_file;
    const json* m_value;
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
    scene.addGeometryPlugIn(container, type,
                            place.has("settings") ? readSettings(place.member("settings")) : KorSettings());
}

void readPlugIn(const Place& place, Scene& scene, Container& container) {
    KorSettings settings = readSettings(place);
    const std::string kind = place.has("kind") ? place.member("kind").text() : "";
    if (kind.empty())
        place.fail("needs a kind");
    settings.erase("kind");
    if (scene.plugInOn(container.id, kind) != -1)
        place.fail("is the second " + kind + " on this container");
    if (container.plugins.size() == Scene::maxPlugIns)
        place.fail("is one more than the " + std::to_string(Scene::maxPlugIns) + " that a container may have");
    scene.addPlugIn(container, kind, std::move(settings));
}

void readPlugIns(const Place& list, Scene& scene, Container& container) {
    for (std::size_t index = 0; index < list.mustBeList().size(); ++index)
        readPlugIn(list.item(index), scene, container);
}

/// A list of containers on the way from the top to where the reader is.
struct Level {
    Place list;
    int parent = -1;
    std::size_t index = 0;
    /// The next of the copies that "repeat" makes of a container.
    int copy = 0;
};

class ContainerReader {
public:
    ContainerReader(Scene& scene, int most) : m_scene(scene), m_most(most) {}

    void readAll(const Place& list) {
        goDown(list, -1);
        while (!m_levels.empty()) {
            if (m_levels.back().index == m_levels.back().list.size())
                m_levels.pop_back();
            else
                readNext();
        }
    }

private:
    // Deeper scenes are mistakes.
    static constexpr std::size_t maxDepth = 1000;
    static constexpr int maxCopies = 100'000;

    void goDown(const Place& list, int parent) {
        list.mustBeList();
        if (m_levels.size() == maxDepth)
            list.fail("is more than " + std::to_string(maxDepth) + " levels deep");
        m_levels.push_back({list, parent});
    }

    /// One container, or one copy of it.
    void readNext() {
        Level& level = m_levels.back();
        const Place place = level.list.item(level.index);
        if (level.copy == 0)
            place.mustBeObject().allowKeys(
                {"name", "position", "scale", "visible", "geometry", "plugins", "children", "repeat", "step"});
        if (++m_count > m_most)
            place.fail("is container " + std::to_string(m_count) + ", " + std::to_string(m_most) + " is the most");
        const bool isRepeated = place.has("repeat");
        const int copies = isRepeated ? copiesOf(place.member("repeat")) : 1;
        const int copy = level.copy++;
        if (level.copy == copies) {
            level.copy = 0;
            ++level.index;
        }
        // Ends the use of `level`, which may move.
        const int id = readContainer(place, level.parent, isRepeated ? std::to_string(copy) : "", copy);
        if (place.has("children"))
            goDown(place.member("children"), id);
    }

    static int copiesOf(const Place& repeat) {
        const double copies = repeat.number();
        if (!(copies >= 1 && copies <= maxCopies) || copies != static_cast<int>(copies))
            repeat.fail("must be a whole number from 1 to " + std::to_string(maxCopies));
        return static_cast<int>(copies);
    }

    /// All but its children. Returns its id.
    int readContainer(const Place& place, int parent, const std::string& suffix, int copy) {
        std::string name;
        readIf(place, "name", name);
        Container& container = m_scene.addContainer(name + suffix, parent);
        double stepX = 0;
        double stepY = 0;
        readPairIf(place, "step", stepX, stepY);
        readPairIf(place, "position", container.x, container.y);
        readPairIf(place, "scale", container.scaleX, container.scaleY);
        readIf(place, "visible", container.isVisible);
        container.x += stepX * copy;
        container.y += stepY * copy;
        if (place.has("geometry"))
            readGeometry(place.member("geometry"), m_scene, container);
        if (place.has("plugins"))
            readPlugIns(place.member("plugins"), m_scene, container);
        return container.id;
    }

    Scene& m_scene;
    const int m_most;
    std::vector<Level> m_levels;
    int m_count = 0;
};

/// The cause in what the parser says, such as "unexpected end of input; expected '}'".
std::string causeIn(std::string_view message) {
    for (const std::string_view separator : {" - ", "] "})
        if (const std::size_t start = message.find(separator); start != std::string_view::npos)
            return std::string(message.substr(start + separator.size()));
    return std::string(message);
}

json parse(const std::string& text, const std::string& name) {
    try {
        return json::parse(text);
    } catch (const json::parse_error& error) {
        const std::size_t end = std::min(error.byte, text.size());
        const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
        throw SceneFileError(name + ": line " + std::to_string(line) + ": is no JSON: " + causeIn(error.what()));
    } catch (const json::exception& error) {
        throw SceneFileError(name + ": is no JSON: " + causeIn(error.what()));
    }
}

} // namespace

void readScene(const std::string& text, const std::string& name, Scene& scene, int most) {
    const json root = parse(text, name);
    const Place place(name, root);
    place.mustBeObject().allowKeys({"scene", "size", "background", "containers"});
    readIf(place, "scene", scene.name);
    readPairIf(place, "size", scene.width, scene.height);
    readIf(place, "background", scene.background);
    if (scene.width < 1 || scene.height < 1)
        place.member("size").fail("must be at least 1 by 1");
    if (!place.has("containers"))
        place.fail("needs containers");
    ContainerReader(scene, most).readAll(place.member("containers"));
}

void readSceneFile(const std::string& path, Scene& scene) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        throw SceneFileError(path + ": is a folder");
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw SceneFileError(path + ": cannot be read");
    readScene({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}, path, scene);
}
