#include "Scene.h"

#include <algorithm>
#include <string_view>
#include <utility>

Scene::Scene() : m_id(++m_lastId) {}

Container* Scene::container(int id) {
    const auto found = m_containers.find(id);
    return found == m_containers.end() ? nullptr : &found->second;
}

Geometry* Scene::geometry(int id) {
    const auto found = m_geometries.find(id);
    return found == m_geometries.end() ? nullptr : m_containers.at(found->second).geometry.get();
}

PlugIn* Scene::plugIn(int id) {
    const auto found = m_plugIns.find(id);
    return found == m_plugIns.end() ? nullptr : found->second.get();
}

bool Scene::isValid(int id) {
    return id == m_id || container(id) || plugIn(id) || geometry(id);
}

const std::string& Scene::nameOf(int id) const {
    static const std::string none;
    if (id == m_id)
        return name;
    if (const auto found = m_containers.find(id); found != m_containers.end())
        return found->second.name;
    if (const auto found = m_plugIns.find(id); found != m_plugIns.end())
        return found->second->kind;
    if (const auto found = m_geometries.find(id); found != m_geometries.end())
        return m_containers.at(found->second).geometry->type;
    return none;
}

Container& Scene::addContainer(const std::string& containerName, int parent) {
    Container& added = m_containers[++m_lastId];
    added.id = m_lastId;
    added.name = containerName;
    added.parent = parent;
    siblingsOf(added).push_back(added.id);
    return added;
}

void Scene::removeContainer(int id) {
    const Container* const top = container(id);
    if (!top)
        return;
    auto& siblings = siblingsOf(*top);
    siblings.erase(std::lower_bound(siblings.begin(), siblings.end(), id));
    // Parents come before their children here, and go after them.
    std::vector<int> all = {id};
    for (std::size_t next = 0; next < all.size(); ++next) {
        const auto& children = m_containers.at(all[next]).children;
        all.insert(all.end(), children.begin(), children.end());
    }
    for (auto next = all.rbegin(); next != all.rend(); ++next) {
        removeContent(m_containers.at(*next));
        m_containers.erase(*next);
    }
}

void Scene::removeContent(Container& removed) {
    while (!removed.plugins.empty())
        removePlugIn(removed.plugins.back());
    if (!removed.geometry)
        return;
    removePlugIn(removed.geometry->plugin);
    m_geometries.erase(removed.geometry->id);
}

Geometry& Scene::addGeometry(Container& container, const std::string& type) {
    if (container.geometry) {
        removePlugIn(container.geometry->plugin);
        m_geometries.erase(container.geometry->id);
    }
    container.geometry = std::make_unique<Geometry>();
    container.geometry->id = ++m_lastId;
    container.geometry->type = type;
    m_geometries[m_lastId] = container.id;
    return *container.geometry;
}

PlugIn& Scene::addPlugIn(Container& container, const std::string& kind, KorSettings settings) {
    PlugIn& added = makePlugIn(container, kind, std::move(settings));
    container.plugins.push_back(added.id);
    return added;
}

PlugIn& Scene::addGeometryPlugIn(Container& container, const std::string& kind, KorSettings settings) {
    PlugIn& added = makePlugIn(container, kind, std::move(settings));
    if (container.geometry)
        container.geometry->plugin = added.id;
    return added;
}

PlugIn& Scene::makePlugIn(const Container& container, const std::string& kind, KorSettings settings) {
    auto& added = m_plugIns[++m_lastId];
    added = std::make_unique<PlugIn>();
    added->id = m_lastId;
    added->kind = kind;
    added->container = container.id;
    added->settings = std::move(settings);
    added->record.container = container.id;
    added->record.sceneId = m_id;
    return *added;
}

void Scene::removePlugIn(int id) {
    const auto found = m_plugIns.find(id);
    if (found == m_plugIns.end())
        return;
    m_removed.push_back(std::move(found->second));
    m_plugIns.erase(found);
    PlugIn& removed = *m_removed.back();
    removed.record.handler = nullptr;
    if (Container* const on = container(removed.container)) {
        on->plugins.erase(std::remove(on->plugins.begin(), on->plugins.end(), id), on->plugins.end());
        if (on->geometry && on->geometry->plugin == id)
            on->geometry->plugin = -1;
    }
    if (removed.handler)
        removed.handler->unregisterHandler();
}

void Scene::destroyRemoved() {
    // Their destructors may remove others.
    while (!m_removed.empty())
        std::exchange(m_removed, {}).clear();
}

std::vector<int> Scene::allPlugIns() const {
    std::vector<int> all;
    std::vector<int> open(m_tops.rbegin(), m_tops.rend());
    while (!open.empty()) {
        const Container& next = m_containers.at(open.back());
        open.pop_back();
        if (next.geometry && next.geometry->plugin != -1)
            all.push_back(next.geometry->plugin);
        all.insert(all.end(), next.plugins.begin(), next.plugins.end());
        open.insert(open.end(), next.children.rbegin(), next.children.rend());
    }
    return all;
}

int Scene::find(const std::string& nameOrPath) const {
    const std::size_t slash = nameOrPath.find('/');
    if (slash == std::string::npos) {
        int lowest = -1;
        for (const auto& [id, candidate] : m_containers)
            if (candidate.name == nameOrPath && (lowest == -1 || id < lowest))
                lowest = id;
        return lowest;
    }
    const std::vector<int>* level = &m_tops;
    std::string_view rest = nameOrPath;
    for (;;) {
        const std::size_t end = rest.find('/');
        const auto found = std::find_if(level->begin(), level->end(),
                                        [&](int id) { return m_containers.at(id).name == rest.substr(0, end); });
        if (found == level->end())
            return -1;
        if (end == std::string_view::npos)
            return *found;
        level = &m_containers.at(*found).children;
        rest.remove_prefix(end + 1);
    }
}

int Scene::siblingBehind(const Container& container) const {
    const auto& siblings = container.parent == -1 ? m_tops : m_containers.at(container.parent).children;
    const auto behind = std::upper_bound(siblings.begin(), siblings.end(), container.id);
    return behind == siblings.end() ? -1 : *behind;
}

int Scene::plugInOn(int containerId, const std::string& kind) {
    const Container* const on = container(containerId);
    if (on)
        for (const int id : on->plugins)
            if (m_plugIns.at(id)->kind == kind)
                return id;
    return -1;
}

std::vector<int>& Scene::siblingsOf(const Container& container) {
    return container.parent == -1 ? m_tops : m_containers.at(container.parent).children;
}
