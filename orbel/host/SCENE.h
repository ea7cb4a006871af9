#ifndef ORBEL_HOST_SCENE_H
#define ORBEL_HOST_SCENE_H

/// A scene of the host. Whether there is one of this id only the host knows.
struct SCENE {
    SCENE() = default;
    /// The scene of this id of the host.
    SCENE(int objectId) : id(objectId) {}

    /// -1 for none.
    int id = -1;
};

#endif
