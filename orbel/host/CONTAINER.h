#ifndef ORBEL_HOST_CONTAINER_H
#define ORBEL_HOST_CONTAINER_H

/// A container of the host's scene: an object that holds plug-ins, a geometry and other containers. Whether there is
/// one of this id only the host knows.
struct CONTAINER {
    CONTAINER() = default;
    CONTAINER(int objectId) : id(objectId) {}

    int id = -1;
};

#endif
