#ifndef ORBEL_HANDLERS_SCENEREGISTRY_H
#define ORBEL_HANDLERS_SCENEREGISTRY_H

#include <unordered_map>

class Orbel;

/// Which tree serves which scene. Trees are made on first demand and live as long as the process.
class SceneRegistry {
public:
    /// The only tree when `perScene` is false. -1 stands for the current scene; null when there is none.
    Orbel* treeOf(int sceneId, bool makeCurrent, bool perScene);
    void makeCurrent(int sceneId) { m_current = sceneId; }

private:
    Orbel* onlyTree();
    Orbel* sceneTree(int sceneId);

    std::unordered_map<int, Orbel*> m_trees;
    Orbel* m_only = nullptr;
    int m_current = -1;
};

#endif
