#include "Commands.h"

#include <sstream>

namespace {

std::string printed(Show& show, char* paths) {
    DataBaseType::setIndent(0);
    std::ostringstream os;
    show.root().dumpData(paths, 0, os);
    return os.str();
}

// The paths of a list to be cleared are those of a list to be printed.
const Target target("clear-lists", [](std::string_view input) {
    runCommands(
        input,
        [](Show& show, char* text) {
            // Paths with kinds create what they print, and may change what the paths before them have printed.
            printed(show, text);
            if (std::string_view(text).find(':') == std::string_view::npos)
                check(printed(show, text) == printed(show, text), "what is printed stays the same");
            show.root().executeClearCommand(text);
        },
        [](Show& show) {
            show.root().executeClearCommand(Text(""));
            for (const char* path : {"a", "b", "scene/title", "caption/text", "points[1]/x"})
                check(show.textAt(path).empty(), "a tree that was cleared holds no text");
        });
});

} // namespace
