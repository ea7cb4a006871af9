#include "Commands.h"

namespace {

const Target target("copy-lists", [](std::string_view input) {
    runCommands(
        input, [](Show& show, char* text) { show.root().parseCopyCommand(text); },
        [](Show& show) {
            show.root().parseCopyCommand(Text("b = a"));
            check(*show.at("b")->getData(0) == *show.at("a")->getData(0), "a copy is like its source");
        });
});

} // namespace
