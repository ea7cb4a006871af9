#ifndef KOR_OPTIONS_H
#define KOR_OPTIONS_H

#include <optional>
#include <stdexcept>
#include <string>

struct Options {
    std::string scenePath;
    /// Empty for the folder beside the program.
    std::string pluginFolder;
    /// "-" is standard input; empty for none.
    std::string commandsPath;
    std::optional<int> port;
    std::optional<long long> frames;
    double framesPerSecond = 25;
    /// Empty for none.
    std::string svgPath;
    bool quiet = false;
    bool dump = false;
    bool help = false;
    bool version = false;
};

/// What is wrong with the command line, in one line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws UsageError. A scene is asked for, unless it is only for the help or the version.
Options readOptions(int argc, const char* const* argv);

extern const char* const usageText;

#endif
