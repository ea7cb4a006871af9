#ifndef FUZZ_COMMANDS_H
#define FUZZ_COMMANDS_H

#include "Input.h"
#include "Show.h"
#include "Target.h"

#include <string>
#include <string_view>

/// Runs a list of commands on two fresh shows, which must come out sound and alike. `run` gets a show and the text,
/// which it must not change; `look` gets the first show afterwards.
template <class Run, class Look>
void runCommands(std::string_view input, Run run, Look look) {
    const std::string_view text = upToNul(input);
    if (asksForMuch(text))
        return;
    std::string first;
    for (const bool isFirst : {true, false}) {
        Show show;
        Lent lent(text);
        run(show, lent);
        check(lent.isStill(text), "a list of commands is not changed");
        const std::string dump = show.dumped();
        if (!isFirst) {
            check(dump == first, "the same commands have the same effect");
            return;
        }
        first = dump;
        show.checkSound();
        look(show);
    }
}

#endif
