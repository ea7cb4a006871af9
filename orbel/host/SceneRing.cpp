#include "SceneRing.h"

#include <algorithm>

SceneRing::SceneRing() {
    m_scenes.fill(free);
}

bool SceneRing::holds(int sceneId) const {
    return std::find(m_scenes.begin(), m_scenes.end(), sceneId) != m_scenes.end();
}

void SceneRing::add(int sceneId) {
    if (holds(sceneId))
        return;
    // A scene that was removed just now leaves its place to the next.
    if (m_cursor == size || m_scenes[m_cursor] != free)
        m_cursor = m_cursor >= size - 1 ? 0 : m_cursor + 1;
    m_scenes[m_cursor] = sceneId;
}

void SceneRing::remove(int sceneId) {
    std::replace(m_scenes.begin(), m_scenes.end(), sceneId, free);
}
