#ifndef ORBEL_HOST_CONTAINER_H
#define ORBEL_HOST_CONTAINER_H

/// A container of the host's scene: an object that holds plug-ins, a geometry and other containers. Whether there is
/// one of this id only the host knows.
struct CONTAINER {
    CONTAINER() = default;
    /// The container of this id of the host.
    CONTAINER(int objectId) : id(objectId) {}

    /// -1 for none.
    int id = -1;
};

#endif
