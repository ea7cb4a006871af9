#ifndef ORBEL_HOST_PLUGINRECORD_H
#define ORBEL_HOST_PLUGINRECORD_H

#include <orbel/host/CONTAINER.h>

class korDataHandler;

/// What a plug-in answers to the host's data request. The host owns it and may keep more behind it.
struct korPluginRecord {
    /// Tells a record of this library's plug-ins from those of others.
    int marker = 9473;
    /// Where the plug-in sits.
    CONTAINER container;
    /// The scene of the container; -1 for none.
    int sceneId = -1;
    /// Null until the plug-in has built it; not owned.
    korDataHandler* handler = nullptr;
};

#endif
