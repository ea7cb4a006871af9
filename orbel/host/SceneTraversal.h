#ifndef ORBEL_HOST_SCENETRAVERSAL_H
#define ORBEL_HOST_SCENETRAVERSAL_H

#include <orbel/foundation/Export.h>

/// What the host calls on whole scenes. Inside a running initOrbel or initContainer these two do nothing.
extern "C" {

/// Attaches the handlers of all plug-ins in the scene of the plug-in that is being called to their fields.
ORBEL_API void initOrbel();
/// The same for the container of the plug-in that is being called, and all below it.
ORBEL_API void initContainer();
/// Makes every plug-in "DataObject", "DataArray" and "DataTable" of the scene anew, with the field name and the type it
/// has, so that it takes up changed types.
ORBEL_API void resetAllTypedObjects();
}

#endif
