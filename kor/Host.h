#ifndef KOR_HOST_H
#define KOR_HOST_H

#include "Modules.h"
#include "Scene.h"

#include <memory>
#include <string>
#include <vector>

/// The host of one scene: calls its plug-ins and answers them. What the executable exports to the library and to
/// plug-ins asks current().
class Host {
public:
    Host(Scene& scene, Modules& modules);
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host();

    /// Null when there is none.
    static Host* current();

    Scene& scene() { return m_scene; }
    /// Where the plug-in is that is being called.
    int localContainer() const { return m_localContainer; }

    /// Attaches all plug-ins, making those that are not yet made.
    void attachAll();
    /// Calls the plug-ins of one frame, and attaches what has come since the last.
    void callFrame();
    /// Runs one line on the scene's tree: "path = value" commands, "C " and a list of copy commands, "L " and a list of
    /// links, which replaces all links of the tree, or "0 " and a command for answer.
    void runCommands(const std::string& line);

    /// Answers a command of the host; docs/host.md lists them. Valid until the next call.
    const std::string& answer(const std::string& command);

    /// The machine that the host runs on.
    static std::string machineName();
    static std::string machineAddress();

    /// Makes the handler of a plug-in; reports what is missing or thrown, and then leaves the plug-in alone.
    void build(PlugIn& plugIn);
    /// Null when there is no such plug-in; without a handler for one that has failed.
    korPluginRecord* recordOf(int plugIn);
    /// Reports when a container would have more than maxPlugIns.
    void createPlugIn(int container, const std::string& kind);
    void deletePlugIn(int container, const std::string& kind);
    /// The plug-in is made anew before the next frame.
    void changeSetting(PlugIn& plugIn, const std::string& setting, const std::string& value);

private:
    template <class Action>
    void call(PlugIn& plugIn, Action action);
    void fail(PlugIn& plugIn, const std::string& reason);
    void finish(PlugIn& plugIn);
    /// Until the plug-in that is made anew has registered, or for good.
    void keepFieldOf(PlugIn& plugIn);
    void dropStale();
    /// False when a plug-in threw, which is left alone from then on.
    bool attachOnce();

    Scene& m_scene;
    Modules& m_modules;
    int m_localContainer = -1;
    bool m_isAttaching = false;
    /// Plug-ins have come that are not attached.
    bool m_hasNew = false;
    /// The plug-in whose record was asked for last: the one that a traversal is calling.
    int m_lastAsked = -1;
    /// Keep the fields of plug-ins that are being made anew, and so their values.
    std::vector<std::unique_ptr<IDataHandler>> m_fieldKeepers;
    std::string m_answer;
};

#endif
