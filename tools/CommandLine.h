#ifndef ORBEL_TOOLS_COMMANDLINE_H
#define ORBEL_TOOLS_COMMANDLINE_H

#include <stdexcept>
#include <string>

/// What every verb ends with.
enum class Outcome { clean = 0, findings = 1, trouble = 2 };

/// What keeps a verb from its work, in one line. Printed to standard error; the program ends with `Outcome::trouble`.
class Trouble : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// "2.13.6.1473"
std::string libraryVersion();

/// Runs the program `orbel`; the result is its exit code.
int runCommandLine(int argc, const char* const* argv);

#endif
