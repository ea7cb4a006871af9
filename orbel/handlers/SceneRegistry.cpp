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
    // Contract: a tree that could not be made is not tried again.
    const auto [tree, isNew] = m_trees.try_emplace(sceneId, nullptr);
    if (isNew) {
        const std::string name = "Scene-#" + std::to_string(sceneId);
        tree->second = newTree(name);
        std::cout << "++++++++++ Creating new Orbel : " << name << " ++++++++++" << std::endl;
    }
    return tree->second;
}
