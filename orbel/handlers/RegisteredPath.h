#ifndef ORBEL_HANDLERS_REGISTEREDPATH_H
#define ORBEL_HANDLERS_REGISTEREDPATH_H

#include <string>
#include <string_view>

/// A path as plug-ins register it: "list", "list[4]" for 4 values, "list[2-5]" for the offset 2 and 5 values.
struct RegisteredPath {
    explicit RegisteredPath(std::string_view text);

    std::string path;
    int offset = 0;
    int size = 1;
};

#endif
