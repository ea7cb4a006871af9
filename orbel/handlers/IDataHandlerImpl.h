#ifndef ORBEL_HANDLERS_IDATAHANDLERIMPL_H
#define ORBEL_HANDLERS_IDATAHANDLERIMPL_H

#include <orbel/tree/DataHandler.h>

class IDataHandler;
class Orbel;
class PluginPreSets;

/// The process-wide side of the plug-in handlers: settings, shared text tables, and the trees of the scenes. An
/// instance is the bridge between a tree and one IDataHandler, which owns it.
class ORBEL_API IDataHandlerImpl : public DataHandler {
public:
    /// Reads the settings, tables, presets and types that have not been read yet, and prints a banner. Settings are
    /// read once in a process.
    static void init();

    /// The tree of a scene, made on first demand. -1 stands for the current scene; null when there is none. Without
    /// trees per scene there is one tree for all.
    static Orbel* getOrbel(int sceneId, bool makeCurrent);
    /// Makes a scene the current one.
    static void SetLastSceneID(int sceneId);

    /// The setting as it is in the file, 0 by default; -1 before init. Only 1 gives each scene a tree of its own.
    static int IsMultiOrbel();
    /// The settings of these names, kept for plug-ins; the library does not use them.
    static bool IsRefreshAlways();
    /// See IsRefreshAlways.
    static bool CheckMaterialIfExists();
    /// See IsRefreshAlways.
    static bool CheckImageIfExists();

    /// Reads all conversion tables again.
    static void RefreshConvTables();
    /// Calls init first when there are no presets yet. Null when the plug-in has none; owned by the library.
    static PluginPreSets* getPreSets(const char* pluginName);

    /// Convert one character; false when it has no partner, or before init.
    static bool toUpper(wchar_t* character);
    /// See toUpper.
    static bool toLower(wchar_t* character);

    /// Bridges to `owner`, which must outlive it, in the tree of a scene.
    IDataHandlerImpl(IDataHandler* owner, int sceneId);
    ~IDataHandlerImpl();

    void dump() override;
    void onChange(DataField& field, bool changed) override;
    void onChange(DataField& field, bool changed, int from, int to) override;
    void onTypeChange(DataField& field, char* typeName) override;
    DataType* getFieldType() override;

    /// Whom the bridge tells of changes.
    IDataHandler* getOwner();
    /// The tree that serves the bridge now; null when there is none.
    Orbel* tree();

private:
    /// Whether a change that is none is to be kept from the owner: never the first one.
    bool isSuppressed(bool changed);

    IDataHandler* m_owner;
    int m_sceneId;
};

/// Writes the version, "2.13.6.1473 ". Contract: with the blank at its end. `out` has room for 32 characters.
extern "C" ORBEL_API void OrbelGetVersion(char* out);

#endif
