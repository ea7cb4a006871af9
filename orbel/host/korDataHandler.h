#ifndef ORBEL_HOST_KORDATAHANDLER_H
#define ORBEL_HOST_KORDATAHANDLER_H

#include <orbel/foundation/Export.h>
#include <orbel/handlers/IDataHandler.h>
#include <orbel/host/AxisMapping.h>
#include <orbel/host/LifeMark.h>
#include <orbel/host/korPluginData.h>

#include <optional>
#include <string>
#include <vector>

class korDataStructureHandler;

/// What the host's plug-ins derive from: a handler of data that knows its place in the scene, attaches itself to the
/// tree by one call, below the structure plug-in it sits under, and maps numbers onto the host's ranges.
///
/// Contract: the order of the virtual operations is what compiled plug-ins rely on; never insert one.
class ORBEL_API korDataHandler : public IDataHandler, public korPluginData {
public:
    /// The alphabet of Base64, RFC 4648 section 4.
    static const char* const pchzBase64AlphaBet;
    /// The last flag given to setInitQX.
    static int qxNeedsInit;

    korDataHandler();
    korDataHandler(const korDataHandler&) = delete;
    korDataHandler& operator=(const korDataHandler&) = delete;
    /// Unregisters the handler.
    ~korDataHandler() override;

    /// An empty text.
    char* getPluginName() override;
    using IDataHandler::onDataChange;
    void onDataChange(char* fieldName, std::vector<std::string>& values, int from, int to) override;
    /// Writes one line with the handler's, the field's and the container's names to standard output.
    void dump() override;

    /// Attaches to a field, below the enclosing structure handler when there is one; with `refresh` the current value
    /// is told at once. "/path" attaches below the tree itself, "*path" to a field that is already there.
    /// "$(CONTAINER)",
    /// "$(CONTNAME)", "$(SCENE)", "$(SCENE_ID)", "$(SCENE_FULL_NAME)", "$(HOSTNAME)" and "$(HOSTIP)" stand for what
    /// they name.
    virtual void Register(const char* fieldName, int refresh);
    /// The same, never below a structure handler. Contract: never refreshes.
    virtual void RegisterField(const char* fieldName, int refresh);
    /// Leaves the field.
    virtual void Unregister();
    /// A handler of the same plug-in in another element of the same array hands over its settings.
    virtual void onSyncParams(korDataHandler* source);
    /// The value of "CONTAINER", "CONTAINER_NAME", "CONTNAME" (all three also behind "LOCAL_"), "SCENE",
    /// "THIS_SCENE", "SCENE_NAME", "SCENE_FULL_NAME", "SCENE_FULLNAME", "SCENE_PATH", "HOSTNAME" or "HOSTIP"; null for
    /// any other name. Valid until the next call with the same name, for any plug-in.
    virtual char* parseMacro(const char* name);

    /// The nearest structure handler above the local container, null when there is none, and the position, from 0, of
    /// the way down to this handler among the children there. Always true.
    bool getParentHandler(korDataStructureHandler** parent, int* index);
    /// The position of a container among the children of another, from 0; -1 when it is none of them.
    int searchChild(CONTAINER parent, CONTAINER child);
    /// Calls onSyncParams of the handlers of the same plug-in name on the same field of all elements of the arrays
    /// that this handler is in.
    void sync();
    /// Appends the handlers of the plug-ins on a container, this one left out.
    void getContainerHandlers(CONTAINER container, std::vector<korDataHandler*>& out);
    /// Appends the handlers of the containers below, depth first, behind those of the container itself if wanted.
    void getChildrenHandlers(CONTAINER container, std::vector<korDataHandler*>& out, bool includeSelf);
    /// The names of the current container and those above, the outermost first, joined by "/".
    std::string getContainerFullPath();
    /// The tree of the local scene, an Orbel.
    void* getOrbel();
    /// The structure handler found by the last Register; null when there was none or it is gone.
    korDataStructureHandler* getParent();
    /// The name that was registered or set last.
    const char* getFieldName();
    /// Changes the name only; attaches to nothing.
    void setFieldName(const char* fieldName);
    /// For the plug-in's own use; true at first.
    bool getFirstTime();
    /// See getFirstTime.
    void setFirstTime(bool firstTime);

    /// The eight bytes of a number, the lowest first, as Base64: always twelve characters.
    static std::string PtrToBase64(unsigned long long value);
    /// Contract: gives back what PtrToBase64 was given below 2 to the power 31 only. 0 for more than 12 characters;
    /// other characters end the text.
    static unsigned long long Base64ToPtr(std::string text);

    /// Whether the local scene waits for initOrbel.
    static int getInitQX();
    /// Notes, or with 0 forgets, that the local scene waits for initOrbel; the last 100 scenes are kept.
    static void setInitQX(int flag);

    /// Whether numbers are kept within the range they come from before they are mapped.
    void setClamp(int clamp);
    /// Whether each axis has a range of its own; else all use that of axis 0.
    void setSeparate(int separate);
    /// Maps inMin..inMax onto outMin..outMax on axis 0, 1 or 2, or on all three for -1. Ranges narrower than 1e-7 leave
    /// numbers as they are.
    void setRanges(float inMin, float inMax, float outMin, float outMax, int clamp, int axis);
    /// Maps a number by the range of an axis, that of axis 0 for -1.
    float normalizeData(float value, int axis);
    /// See normalizeData.
    int normalizeData_Int(int value, int axis);
    /// See normalizeData.
    double normalizeData_dbl(double value, int axis);
    /// Maps the numbers of a text. Modes 0, 1, 2: one number for x, y, z; 3: two for x and y, 4: x and z, 5: y and z;
    /// 6: three. A missing number is the one before it. Texts without a number change nothing.
    void updateAxes(const char* text, float& x, float& y, float& z, int mode, bool sameRange);

    /// A pointer to this handler that turns to null when it is destroyed.
    LifeRef<korDataHandler> ref();

protected:
    /// Afterwards getParent gives null.
    void forgetParent();

private:
    /// Takes the name over. Attaches to "*name" and "/name"; for any other name returns what to attach to.
    std::optional<std::string> startRegistration(const char* fieldName);

    std::string m_fieldName;
    LifeRef<korDataStructureHandler> m_parent;
    int m_indexInParent = 0;
    bool m_firstTime = true;
    AxisMapping m_axes;
    LifeMark m_life;
};

#endif
