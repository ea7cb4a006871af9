#ifndef ORBEL_TOOLS_DIFF_FACTS_H
#define ORBEL_TOOLS_DIFF_FACTS_H

#include <map>
#include <string>
#include <string_view>

/// By bytes, but numbers by their value: "tags[2]" before "tags[10]".
struct PathOrder {
    bool operator()(std::string_view left, std::string_view right) const;
};

/// What a dump or a configuration says: a text for each path.
using Facts = std::map<std::string, std::string, PathOrder>;

#endif
