#ifndef ORBEL_TOOLS_SHELL_LIVETREE_H
#define ORBEL_TOOLS_SHELL_LIVETREE_H

#include <orbel/tree/Orbel.h>

#include <string>
#include <vector>

/// A tree of its own and all that hangs in it. Types are read first, from these folders and files, or without any from
/// where the environment says.
class LiveTree {
public:
    /// Throws `Trouble` when a folder or file cannot be read.
    explicit LiveTree(const std::vector<std::string>& types);
    LiveTree(const LiveTree&) = delete;
    LiveTree& operator=(const LiveTree&) = delete;
    ~LiveTree();

    Orbel& root() { return m_root; }

    /// Adds the types of a file, or of the files of a folder. False when it cannot be read.
    static bool addTypes(const std::string& path);

    /// The dump of the item at a path, with a line end; of the whole tree for an empty path. Empty when there is none.
    std::string dump(const std::string& path);

private:
    Orbel m_root;
};

#endif
