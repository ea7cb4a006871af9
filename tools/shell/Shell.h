#ifndef ORBEL_TOOLS_SHELL_SHELL_H
#define ORBEL_TOOLS_SHELL_SHELL_H

#include "CommandCheck.h"
#include "LiveTree.h"
#include "Watches.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

/// Runs lines on a tree: commands "path = value", and verbs such as "dump scene". The library is silent about what has
/// no effect; the shell is not.
class Shell {
public:
    /// Hears why a line, or a part of it, had no effect.
    using Complain = std::function<void(const std::string& complaint)>;

    Shell(LiveTree& tree, std::ostream& out, Complain complain);

    /// False when somebody had to hear of it.
    bool run(std::string_view line);
    /// Runs all lines, and tells where each complaint comes from: "board.txt:3: ". False as above.
    bool runLines(std::istream& lines, const std::string& name);

    bool hasQuit() const { return m_hasQuit; }

private:
    void runLine(std::string_view line);
    void runVerb(std::string_view line);
    void runCommands(std::string_view list);
    void complain(const std::string& complaint);
    void complain(const effects::Complaints& complaints);

    void clear(const std::string& list);
    void create(const std::string& path);
    void dump(const std::string& list);
    void get(const std::string& path);
    void help(const std::string& name);
    void load(const std::string& path);
    void time(std::string_view line);
    void types(const std::string& name);
    void unwatch(const std::string& path);
    void watch(const std::string& path);

    LiveTree& m_tree;
    std::ostream& m_out;
    Complain m_complain;
    Watches m_watches;
    /// Where the line under way stands, innermost last; empty for lines that are typed.
    std::string m_place;
    int m_filesOpen = 0;
    std::size_t m_complaints = 0;
    bool m_hasQuit = false;
};

#endif
