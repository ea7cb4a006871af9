#ifndef ORBEL_TOOLS_SHELL_VERBS_H
#define ORBEL_TOOLS_SHELL_VERBS_H

#include <string>
#include <string_view>
#include <vector>

/// What a verb of the shell is called with, which decides how it is completed.
enum class Argument { none, path, paths, kindPath, type, file, line, verb };

struct VerbText {
    std::string_view name;
    std::string_view usage;
    std::string_view help;
    Argument argument;
};

/// In the order in which they are listed. "C" and "L" stand before a command instead of a verb.
const std::vector<VerbText>& verbTexts();
const VerbText* findVerb(std::string_view name);
std::vector<std::string> verbNames();

/// The first word of a line; `rest` becomes what is behind the blanks that follow it.
std::string_view cutVerb(std::string_view& rest);

/// Whether "C" or "L" stands in front of a command.
bool isMarked(std::string_view line);

/// Whether a line is to be read as a verb with arguments, and not as a command "path = value".
bool isVerbLine(std::string_view line);

#endif
