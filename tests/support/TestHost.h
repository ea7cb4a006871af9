#ifndef ORBEL_TESTS_SUPPORT_TESTHOST_H
#define ORBEL_TESTS_SUPPORT_TESTHOST_H

#include <orbel/host/PluginRecord.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// A host in memory: its functions answer from here. Ids are given in order, from 1.
class TestHost {
public:
    struct Plugin {
        std::string name;
        /// What a data request answers; null for a plug-in that answers none.
        korPluginRecord* record = nullptr;
        /// Called by the request to build the handler.
        std::function<void()> build;
    };

    struct Geometry {
        std::string type;
        korPluginRecord* record = nullptr;
    };

    struct Container {
        std::string name;
        int parent = -1;
        std::vector<int> children;
        std::vector<int> plugins;
        int geometry = -1;
    };

    struct Scene {
        std::string name;
        int root = -1;
    };

    /// The host that answers; empty between tests.
    static TestHost& get();
    /// Forgets everything.
    static void reset();

    int addScene(const std::string& name);
    /// Below no container, its siblings are all such containers.
    int addContainer(const std::string& name, int parent = -1);
    int addPlugin(int container, const std::string& name, korPluginRecord* record = nullptr,
                  std::function<void()> build = {});
    int addGeometry(int container, const std::string& type, korPluginRecord* record = nullptr);
    /// With what is on it and below it. Records stay: they belong to the plug-ins.
    void removeContainer(int container);
    void removePlugin(int plugin);

    /// -1 for no such object.
    int parentOf(int container) const;
    int siblingBehind(int container) const;
    int pluginOn(int container, const std::string& name) const;
    const std::string& nameOf(int id) const;
    bool isValid(int id) const;

    std::map<int, Container> containers;
    std::map<int, Plugin> plugins;
    std::map<int, Geometry> geometries;
    std::map<int, Scene> scenes;

    /// Where the plug-in is that the host calls at the moment.
    int localContainer = -1;
    int localScene = -1;

    /// What the library asked for, in order, as far as it may change something: requests to plug-ins, plug-ins made and
    /// deleted, commands.
    std::vector<std::string> log;
    bool keepsLog = true;
    /// Answers to commands; any other gets an empty text.
    std::map<std::string, std::string> answers;
    /// Called before a command is answered.
    std::function<void()> onCommand;
    /// The name of objects that do not exist.
    std::string nameOfNothing;
    /// Gives null instead of texts.
    bool isSilent = false;
    /// Writes no -1 behind the plug-ins of a container.
    bool leavesListsOpen = false;
    /// Called for a plug-in that was made.
    std::function<void(int plugin)> onCreate;

private:
    void forget(int container);
    const std::vector<int>& siblingsOf(int container) const;

    std::vector<int> m_tops;
    int m_lastId = 0;
};

#endif
