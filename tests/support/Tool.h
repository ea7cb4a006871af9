#ifndef ORBEL_TESTS_SUPPORT_TOOL_H
#define ORBEL_TESTS_SUPPORT_TOOL_H

#include <tools/CommandLine.h>

#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

/// What a run of the program `orbel` in this process has printed, and its exit code.
struct ToolRun {
    int exitCode = 0;
    std::string output;
    std::string errors;
};

/// Gives a stream another buffer while it exists.
class StreamDetour {
public:
    StreamDetour(std::ios& stream, std::streambuf* buffer) : m_stream(stream), m_before(stream.rdbuf(buffer)) {}
    StreamDetour(const StreamDetour&) = delete;
    StreamDetour& operator=(const StreamDetour&) = delete;
    ~StreamDetour() { m_stream.rdbuf(m_before); }

private:
    std::ios& m_stream;
    std::streambuf* m_before;
};

/// `input` is what standard input holds.
inline ToolRun runTool(std::vector<std::string> arguments, const std::string& input = {}) {
    std::vector<const char*> texts{"orbel"};
    for (const std::string& argument : arguments)
        texts.push_back(argument.c_str());
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream errors;
    const StreamDetour inDetour(std::cin, in.rdbuf());
    const StreamDetour outDetour(std::cout, out.rdbuf());
    const StreamDetour errorDetour(std::cerr, errors.rdbuf());
    const int exitCode = runCommandLine(static_cast<int>(texts.size()), texts.data());
    return {exitCode, out.str(), errors.str()};
}

#endif
