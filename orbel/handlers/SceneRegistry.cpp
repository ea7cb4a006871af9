#include "SceneRegistry.h"

#include <orbel/tree/Orbel.h>

#include <iostream>
#include <new>
#include <string>

namespace {

/// Null when there is no memory for it.
Orbel* newTree(std::string name) {
    try {
        return new Orbel(name.data());
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

Orbel* SceneRegistry::treeOf(int sceneId, bool makeCurrent, bool perScene) {
    if (perScene && sceneId == -1)
        sceneId = m_current;
    if (perScene && sceneId == -1) {
        std::cout << "------------  Can't Retrieve Orbel ------------" << std::endl;
        return nullptr;
    }
    Orbel* tree = perScene ? sceneTree(sceneId) : onlyTree();
    if (makeCurrent)
        m_current = sceneId;
    return tree;
}

Orbel* SceneRegistry::onlyTree() {
    if (!m_only)
        m_only = newTree("Orbel");
    return m_only;
}

Orbel* SceneRegistry::sceneTree(int sceneId) {
    const auto found = m_trees.find(sceneId);
    if (found != m_trees.end())
        return found->second;
    try {
        const std::string name = "Scene-#" + std::to_string(sceneId);
        // Contract: a tree that could not be made is not tried again.
        Orbel*& tree = m_trees.emplace(sceneId, nullptr).first->second;
        tree = newTree(name);
        std::cout << "++++++++++ Creating new Orbel : " << name << " ++++++++++" << std::endl;
        return tree;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
