#include "Commands.h"

namespace {

const Target target("copy-lists", [](std::string_view input) {
    runCommands(
        input, [](Show& show, char* text) { show.root().parseCopyCommand(text); },
        [](Show& show) {
            show.root().parseCopyCommand(Text("b = a"));
            check(show.textAt("b") == show.textAt("a"), "a copy is like its source");
        });
});

} // namespace
