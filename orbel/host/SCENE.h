#ifndef ORBEL_HOST_SCENE_H
#define ORBEL_HOST_SCENE_H

/// A scene of the host. Whether there is one of this id only the host knows.
struct SCENE {
    SCENE() = default;
    SCENE(int objectId) : id(objectId) {}

    int id = -1;
};

#endif
