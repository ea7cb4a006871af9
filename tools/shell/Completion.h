#ifndef ORBEL_TOOLS_SHELL_COMPLETION_H
#define ORBEL_TOOLS_SHELL_COMPLETION_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class DataNode;

/// What may stand in a line from `start` to the cursor instead of what stands there.
struct Completions {
    std::size_t start = 0;
    std::vector<std::string> texts;
};

/// `line` ends at the cursor.
Completions completeLine(DataNode& root, std::string_view line);

#endif
