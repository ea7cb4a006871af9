#ifndef ORBEL_HOST_SCENERING_H
#define ORBEL_HOST_SCENERING_H

#include <array>
#include <cstddef>

/// Remembers up to 100 scenes; a further one takes the place of the oldest.
class SceneRing {
public:
    SceneRing();

    bool holds(int sceneId) const;
    void add(int sceneId);
    void remove(int sceneId);

private:
    static constexpr int free = -1;
    static constexpr std::size_t size = 100;

    std::array<int, size> m_scenes{};
    /// Where the last scene was added; none at first.
    std::size_t m_cursor = size;
};

#endif
