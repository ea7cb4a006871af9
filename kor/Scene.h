#ifndef KOR_SCENE_H
#define KOR_SCENE_H

#include <orbel/host/PluginRecord.h>

#include "PlugIn.h"

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// What a container shows, and where: lengths in pixels, y grows downwards, positions are those of the top left corner
/// relative to the container above, before its scale.
struct Geometry {
    int id = -1;
    /// "TEXT", "IMAGE", "POLYGON" (a rectangle), or the kind of a geometry plug-in.
    std::string type;
    std::string text;
    std::string picture;
    std::string colour = "#ffffff";
    /// "left", "middle" or "right" of the container's position.
    std::string align = "left";
    bool isBold = false;
    double width = 0;
    double height = 0;
    double fontSize = 16;
    double radius = 0;
    /// A rectangle whose bottom, not its top, is at the position.
    bool growsUp = false;
    /// The plug-in of a geometry of its own type; -1 for the host's own.
    int plugin = -1;
};

struct Container {
    int id = -1;
    std::string name;
    int parent = -1;
    /// In the order they were added, which is that of their ids.
    std::vector<int> children;
    std::vector<int> plugins;
    std::unique_ptr<Geometry> geometry;
    double x = 0;
    double y = 0;
    double scaleX = 1;
    double scaleY = 1;
    bool isVisible = true;
};

/// A plug-in on a container, or behind a geometry.
struct PlugIn {
    int id = -1;
    std::string kind;
    int container = -1;
    KorSettings settings;
    korPluginRecord record;
    /// Made by its module, owned here; the record points to it.
    std::unique_ptr<korDataHandler> handler;
    /// It is missing or has thrown, and is left alone from now on.
    bool hasFailed = false;
    /// Its settings have changed since it was made.
    bool isStale = false;
    /// Its module is making it.
    bool isInTheMaking = false;
    /// It has been told to clean up.
    bool isEnding = false;
};

/// A scene: containers in a tree, with geometries and plug-ins. Every object has an id of its own, from 1.
class Scene {
public:
    Scene();

    /// The library sees no more on one container.
    static constexpr std::size_t maxPlugIns = 20;

    int id() const { return m_id; }

    /// Null when there is no such container.
    Container* container(int id);
    Geometry* geometry(int id);
    PlugIn* plugIn(int id);
    bool isValid(int id);
    /// Of a container, plug-in, geometry or the scene; empty when there is no such object.
    const std::string& nameOf(int id) const;

    /// -1 puts it at the top.
    Container& addContainer(const std::string& name, int parent);
    /// With all below it.
    void removeContainer(int id);
    Geometry& addGeometry(Container& container, const std::string& type);
    PlugIn& addPlugIn(Container& container, const std::string& kind, KorSettings settings);
    /// A geometry of its own type has a plug-in that is not among those of the container.
    PlugIn& addGeometryPlugIn(Container& container, const std::string& kind, KorSettings settings);
    /// It leaves the scene and the tree at once, but lives until destroyRemoved: it may be what asks for it.
    void removePlugIn(int id);
    /// Only where no plug-in is being called.
    void destroyRemoved();

    const std::vector<int>& tops() const { return m_tops; }
    /// All plug-ins, those of containers above first, in the order in which they are attached.
    std::vector<int> allPlugIns() const;
    /// The container of this name, or of this path of names separated by "/"; -1 when there is none.
    int find(const std::string& nameOrPath) const;
    /// -1 behind the last.
    int siblingBehind(const Container& container) const;
    int plugInOn(int container, const std::string& kind);

    std::string name = "Kor";
    double width = 960;
    double height = 540;
    std::string background = "#000000";

private:
    PlugIn& makePlugIn(const Container& container, const std::string& kind, KorSettings settings);
    std::vector<int>& siblingsOf(const Container& container);
    void removeContent(Container& container);

    int m_lastId = 0;
    int m_id;
    std::unordered_map<int, Container> m_containers;
    std::unordered_map<int, std::unique_ptr<PlugIn>> m_plugIns;
    std::vector<std::unique_ptr<PlugIn>> m_removed;
    /// Which container has the geometry.
    std::unordered_map<int, int> m_geometries;
    std::vector<int> m_tops;
};

#endif
