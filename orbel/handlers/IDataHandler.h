#ifndef ORBEL_HANDLERS_IDATAHANDLER_H
#define ORBEL_HANDLERS_IDATAHANDLER_H

#include <orbel/foundation/Export.h>

#include <string>
#include <vector>

class DataField;
class DataHandler;
class DataNode;
class DataType;
class IDataHandlerImpl;

/// What a plug-in derives from to follow the data of its scene: it names a path, and hears of each change as text.
///
/// Before init every operation does nothing, or returns 0 or null. Inside a callback the handler may do anything:
/// set values, register elsewhere, refresh, destroy itself and others.
/// Contract: the order of the virtual operations is what compiled plug-ins rely on; never insert one.
class ORBEL_API IDataHandler {
public:
    virtual ~IDataHandler();

    /// The name of this kind of plug-in.
    virtual char* getPluginName() = 0;
    /// A number for the host; the library does not use it.
    virtual int getPluginType() = 0;
    /// A text for the host; the library does not use it.
    virtual char* getPluginFolder() = 0;
    /// "0".
    virtual char* getPluginVersion();
    /// The class of field to create for a registered path that names none; DataValue.
    virtual DataType* getFieldType();
    /// 5.
    virtual unsigned int getPluginFlags();
    /// An empty text.
    virtual char* getPluginInfoText();
    /// The host has loaded the plug-in. This and what follows, up to dump, does nothing here.
    virtual void onLoad();
    /// The host has set the plug-in up.
    virtual void onInit();
    /// The host has set up what the plug-in sits on.
    virtual void onFunctionInit();
    /// The host is about to destroy the plug-in.
    virtual void onCleanup();
    /// Of the field's several values those from `from` to `to` were stored, both included. A copy behind the last
    /// value is told too, with indices that are not there.
    virtual void onDataChange(char* fieldName, std::vector<std::string>& values, int from, int to);
    /// The field's one value was stored, or the first of several by a store without an index. `value` is the field's
    /// own text, unless it was converted.
    virtual void onDataChange(char* fieldName, char* value);
    /// The observed field has been given another type.
    virtual void onTypeChange(char* fieldName, char* typeName);
    /// The host wants the geometry built.
    virtual void onBuildGeometry(int argument);
    /// The host runs an action of the plug-in.
    virtual void onExecAction(int argument);
    /// A parameter of the plug-in was changed in the host.
    virtual void onParamChange(int argument);
    /// The host asks for the state of the plug-in's editor.
    virtual void onGuiStatus();
    /// The host draws a frame.
    virtual void perFrame();
    /// Any other request of the host; the plug-in may write an answer.
    virtual void onDispatcher(unsigned long long request, unsigned long long argument, unsigned long long& answer);
    /// Writes what there is to know of the plug-in; nothing here.
    virtual void dump();

    IDataHandler();
    /// Contract: copies share the bridge to the tree, and the destructor deletes it. Only one of them may be destroyed,
    /// and changes reach the one that was initialised.
    IDataHandler(const IDataHandler& other);
    IDataHandler& operator=(const IDataHandler& other);

    /// Bridges to the tree of a scene, -1 for the current one. A second call does nothing.
    void init(int sceneId);
    /// True until init has been called.
    bool needsInit();

    /// For the plug-in's own use.
    void* getUserData();
    /// Not owned.
    void setUserData(void* userData);

    /// Owned by this handler.
    DataHandler* getDataHandler();
    /// The field this handler observes, or null.
    DataField* getField();
    /// The first number of the registered range "path[2-5]", else 0.
    int getOffset();
    /// Whether only real changes are told, once one change has been told.
    int getNotifyOnValueChange();
    /// Takes effect at the next registration or unregistration on the field.
    void setNotifyOnValueChange(int notify);
    /// Whether values pass through the conversion table before they are told.
    int getUseConvTable();
    /// Other than 0 to convert; the table is the one that setConvTableNmae names.
    void setUseConvTable(int use);
    /// Empty until it is set.
    char* getConvTableName();
    /// Cut to 99 characters; null is ignored. Contract: plug-ins link against this spelling.
    void setConvTableNmae(char* name);
    /// Cut to 99 characters.
    void setName(char* name);

    /// Registers by path in `root`, or in the scene's tree when that is null, and creates the field when there is none.
    /// "path[4]" asks for 4 values, "path[2-5]" for 5 and the offset 2. At most 99 characters; a text without a path
    /// is ignored. `index` is the element when `root` is an array.
    void registerHandler(const char* path, DataNode* root, int index);
    /// Moves to this field; null is ignored. Contract: the field it leaves stays in its tree.
    void registerHandler(DataField* field);
    /// Contract: a field that nobody observes any more leaves its tree.
    void unregisterHandler();
    /// Tells the current values of the field again, as a change, to every handler on it.
    void refresh();

    /// Store in the scene's tree; see DataNode.
    void setFieldData(char* path, char* value);
    void setFieldData(char* path, char* value, int index);

    /// IDataHandlerImpl::getOrbel(sceneId, false), also before init.
    void* getOrbel2(int sceneId);

private:
    IDataHandlerImpl* m_bridge = nullptr;
    void* m_userData = nullptr;
};

#endif
