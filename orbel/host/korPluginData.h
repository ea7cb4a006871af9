#ifndef ORBEL_HOST_KORPLUGINDATA_H
#define ORBEL_HOST_KORPLUGINDATA_H

#include <orbel/foundation/Export.h>
#include <orbel/host/CONTAINER.h>
#include <orbel/host/SCENE.h>

/// Where a plug-in is in the host's scene, and which container it serves at the moment.
class ORBEL_API korPluginData {
public:
    korPluginData();
    /// A copy serves the same container of the same scene.
    korPluginData(const korPluginData& other);
    korPluginData& operator=(const korPluginData& other);
    virtual ~korPluginData();

    /// The container that holds the plug-in.
    CONTAINER getLocalContainer();
    /// The container that the plug-in serves stays the same.
    void setLocalContainer(CONTAINER& container);
    /// Asks the host; also serves that container from now on.
    void setLocalContainer();

    /// The container that the plug-in serves from now on.
    void setCurrentContainer(CONTAINER& container);
    /// Back to the local container.
    void resetCurrentContainer();
    /// The container that the plug-in serves. With a current item, or unless it serves another, the one that was set;
    /// else that one's parent, grandparent or great-grandparent, or the remote container if the host knows it.
    CONTAINER getCurrentContainer();

    /// The container that the plug-in serves when it is told to serve the remote one.
    CONTAINER getRemoteContainer();
    /// See getRemoteContainer.
    void setRemoteContainer(CONTAINER& container);
    /// "#12" or a name or path that the host knows; null for none.
    void setRemoteContainer(char* name);

    /// The host's name of the local container; owned by the host.
    char* getContainerName();

    /// The scene of the plug-in.
    SCENE getLocalScene();
    /// Also changes the answer of getSceneID.
    void setLocalScene(SCENE& scene);
    /// Asks the host.
    void setLocalScene();
    /// "#12" for the scene of id 12; empty until a scene is set.
    char* getSceneID();
    /// Parts separated by "/" or "*"; owned by the host.
    char* getSceneFullName();
    /// The last part of the full name. Valid until the next call for any plug-in.
    char* getSceneName();
    /// The full name up to its last separator, that included; "." without one. Valid until the next call for any
    /// plug-in.
    char* getScenePath();

    /// The element that the plug-in serves, from 0; -1 for none.
    void setCurrentItem(int item);
    /// The plug-in serves no element.
    void resetCurrentItem();
    /// 0 when there is none.
    int getCurrentItem();

    /// Whether the plug-in serves another container than the current one.
    int getIsOther();
    /// See getIsOther.
    void setIsOther(int isOther);
    /// Which one: 0 the parent, 1 the grandparent, 2 the great-grandparent, 3 the remote container.
    int getWhichOther();
    /// See getWhichOther.
    void setWhichOther(int whichOther);

private:
    CONTAINER m_localContainer;
    CONTAINER m_currentContainer;
    SCENE m_localScene;
    int m_currentItem = -1;
    int m_isOther = 0;
    int m_whichOther = -1;
    CONTAINER m_remoteContainer;
    char m_sceneId[16] = {};
};

#endif
