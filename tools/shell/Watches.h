#ifndef ORBEL_TOOLS_SHELL_WATCHES_H
#define ORBEL_TOOLS_SHELL_WATCHES_H

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class DataField;
class DataNode;

/// Tells of each change of the fields that are watched, as it comes: "scene/title = Hello", "tags[0-2] = a, b, c",
/// and "caption : Label" when an object or array gets another type.
class Watches {
public:
    using Print = std::function<void(const std::string& line)>;

    Watches(DataNode& root, Print print);
    ~Watches();
    Watches(const Watches&) = delete;
    Watches& operator=(const Watches&) = delete;

    /// Watches what is at a path, a node with all below it. False when there is nothing.
    bool add(const std::string& path);
    /// False when the path is not watched.
    bool remove(const std::string& path);
    std::vector<std::string> paths() const { return m_paths; }

    /// Finds what has come or gone below the nodes that are watched; values that have come are told.
    void refresh();

private:
    class Watcher;

    void prune();
    void watch(DataField& field, bool tell);
    void collect(const std::string& path, bool tell, std::set<DataField*>& wanted);

    DataNode& m_root;
    Print m_print;
    std::vector<std::string> m_paths;
    std::map<DataField*, std::unique_ptr<Watcher>> m_watchers;
};

#endif
