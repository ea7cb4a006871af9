#ifndef FUZZ_TARGET_H
#define FUZZ_TARGET_H

#include <string_view>
#include <vector>

/// One text language that the library reads. A target is an object at namespace scope: it lists itself.
struct Target {
    /// Gives the library one input, checks what becomes of it and leaves nothing behind, so that one file is enough to
    /// see a finding again.
    using Run = void (*)(std::string_view input);

    Target(std::string_view targetName, Run runInput);

    std::string_view name;
    Run run;
};

std::vector<const Target*>& targets();

/// Runs one input. What the library prints meanwhile is formatted and dropped.
void runSilently(const Target& target, std::string_view input);

/// Ends the process with a message unless the condition holds.
void check(bool condition, const char* message);

#endif
