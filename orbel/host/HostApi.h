#ifndef ORBEL_HOST_HOSTAPI_H
#define ORBEL_HOST_HOSTAPI_H

#include <orbel/host/CONTAINER.h>
#include <orbel/host/SCENE.h>

/// What a host executable exports. The library looks these functions up by name in the running program when it first
/// needs them, so it also works in programs that export none: there is no scene then.
///
/// Ids name containers, scenes, geometries and plug-ins ("functions") alike; -1 is none. Texts belong to the host and
/// are valid until its next call. A move that leads nowhere writes -1 into the handle.
extern "C" {

/// The container that holds the plug-in that is being called.
int _api__get_local_container(CONTAINER* container);
/// The scene that holds the plug-in that is being called.
int _api__get_sceneid_local(SCENE* scene);
/// The container of this name or path. The library passes "" and 64.
int _api__get_objectid(const char* name, const char* context, int flags);
/// The object of a number as operators write it, "#12".
int _api__get_objectid_from_objectid(int id);
/// Whether there is such an object.
int _api__object_valid(int id);

/// Answers for every kind of object.
void _api__container_get_name(int container, const char** name);
/// To the next sibling.
void _api__container_next(CONTAINER* container);
/// To the parent.
void _api__container_level_up_2(CONTAINER* container);
/// To the first child.
void _api__container_level_down_2(CONTAINER* container);
/// Writes the geometry of a container.
void _api__container_get_geometry(int container, int* geometry);
/// The plug-in of this name; 0 when the container has none.
int _api__container_get_function(int container, int* function, const char* plugin);
/// At most `capacity` plug-ins, in their order, and -1 behind them when there are fewer; 0 on failure.
int _api__container_get_function_plugins(int container, int* functions, int capacity);
/// Puts a plug-in of this name on a container.
void _api__container_create_function(int container, const char* plugin);
/// Takes the plug-in of this name off a container.
void _api__container_delete_function(int container, const char* plugin);

/// 0 on failure.
int _api__scene_get_root(int scene, int* root);
/// The full name: a path whose parts are separated by "/" or "*".
void _api__scene_get_name(int scene, const char** name);

/// The korPluginRecord of a plug-in, or null.
void _api__get_function_dataptr(int function, void** data);
/// 0x55444154 asks a plug-in for its korPluginRecord, 0x494e4954 to build its handler first.
void _api__function_dispatcher(int function, unsigned int request, void* argument, void** out);
/// "TEXT", "IMAGE", "REFERENCE", "POLYGON", or the name of a plug-in's own geometry.
void _api__get_geom_type(int geometry, const char** type);
/// The same requests, to the plug-in of a geometry.
void _api__geom_dispatcher(int geometry, unsigned int request, void* argument, void** out);

/// Runs a command of the host.
int _api__kor_send_command(const char* command, const char** answer);
}

#endif
