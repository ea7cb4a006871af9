#ifndef ORBEL_TOOLS_SHELL_COMMANDCHECK_H
#define ORBEL_TOOLS_SHELL_COMMANDCHECK_H

#include <string>
#include <string_view>
#include <vector>

class DataNode;

/// Why commands have no effect, which the library does not tell: each check is asked right before the command runs, and
/// gives one line for each part that would change nothing. A kind in a path creates here as it does in the command.
namespace effects {

using Complaints = std::vector<std::string>;

Complaints ofSet(DataNode& from, std::string_view command);
Complaints ofCopy(DataNode& from, std::string_view command);
Complaints ofLink(DataNode& from, std::string_view command);
/// A list, as DataNode::executeClearCommand takes it.
Complaints ofClear(DataNode& from, std::string_view list);

/// "nothing at scene/titel; did you mean scene/title?"
std::string nothingAt(DataNode& from, std::string_view path);

} // namespace effects

#endif
