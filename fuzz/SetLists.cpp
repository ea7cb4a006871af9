#include "Commands.h"

namespace {

const Target target("set-lists", [](std::string_view input) {
    runCommands(
        input, [](Show& show, char* text) { show.root().parseCommand(text, 0); },
        [](Show& show) {
            show.root().parseCommand(Text("a = last"), 0);
            if (DataField* a = show.at("a"); a && a->isOfType(DataValue::getClassType()) != 0)
                check(*a->getData(0) == "last", "what was set last is there");
        });
});

} // namespace
