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
    virtual int getPluginType() = 0;
    virtual char* getPluginFolder() = 0;
    /// "0".
    virtual char* getPluginVersion();
    /// The class of field to create for a registered path that names none; DataValue.
    virtual DataType* getFieldType();
    /// 5.
    virtual unsigned int getPluginFlags();
    /// An empty text.
    virtual char* getPluginInfoText();
    virtual void onLoad();
    virtual void onInit();
    virtual void onFunctionInit();
    virtual void onCleanup();
    /// Of the field's several values those from `from` to `to` were stored, both included. A copy behind the last
    /// value is told too, with indices that are not there.
    virtual void onDataChange(char* fieldName, std::vector<std::string>& values, int from, int to);
    /// The field's one value was stored, or the first of several by a store without an index. `value` is the field's
    /// own text, unless it was converted.
    virtual void onDataChange(char* fieldName, char* value);
    virtual void onTypeChange(char* fieldName, char* typeName);
    virtual void onBuildGeometry(int argument);
    virtual void onExecAction(int argument);
    virtual void onParamChange(int argument);
    virtual void onGuiStatus();
    virtual void perFrame();
    virtual void onDispatcher(unsigned long long request, unsigned long long argument, unsigned long long& answer);
    virtual void dump();

    IDataHandler();
    /// Contract: copies share the bridge to the tree, and the destructor deletes it. Only one of them may be destroyed,
    /// and changes reach the one that was initialised.
    IDataHandler(const IDataHandler& other);
    IDataHandler& operator=(const IDataHandler& other);

    /// Bridges to the tree of a scene, -1 for the current one. A second call does nothing.
    void init(int sceneId);
    bool needsInit();

    /// For the plug-in's own use.
    void* getUserData();
    void setUserData(void* userData);

    /// Owned by this handler.
    DataHandler* getDataHandler();
    /// The field this handler observes, or null.
    DataField* getField();
    /// The first number of the registered range "path[2-5]", else 0.
    int getOffset();
    /// Whether only real changes are told, once one change has been told.
    int getNotifyOnValueChange();
    void setNotifyOnValueChange(int notify);
    /// Whether values pass through the conversion table before they are told.
    int getUseConvTable();
    void setUseConvTable(int use);
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
