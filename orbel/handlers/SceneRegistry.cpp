#include "SceneRegistry.h"

#include <orbel/tree/Orbel.h>

#include <iostream>
#include <string>

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
    if (!m_only) {
        char name[] = "Orbel";
        m_only = new Orbel(name);
    }
    return m_only;
}

Orbel* SceneRegistry::sceneTree(int sceneId) {
    Orbel*& tree = m_trees[sceneId];
    if (!tree) {
        std::string name = "Scene-#" + std::to_string(sceneId);
        tree = new Orbel(name.data());
        std::cout << "++++++++++ Creating new Orbel : " << name << " ++++++++++" << std::endl;
    }
    return tree;
}
