#ifndef ORBEL_TESTS_MEMORY_SURVIVAL_H
#define ORBEL_TESTS_MEMORY_SURVIVAL_H

#include "World.h"

#include <support/DeclaredTypes.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace memory {

/// A test with the types that a World needs.
class OutOfMemory : public testing::Test {
protected:
    DeclaredTypes types{worldTypes};
};

using Action = std::function<void(World&)>;

/// What may be left of an operation that has failed besides all and nothing of it; and whether calling it again does
/// not do the same as calling it once.
struct Expected {
    std::vector<Action> steps = {};
    bool adds = false;
};

/// Runs an operation in a World with the first, the second, ... allocation failing until none fails any more, and
/// expects each time: it is done, or not at all, or one of the steps is; the tree is consistent; the operation
/// succeeds when it is called again; nothing is lost when the world goes.
void survives(const Action& action, const Expected& expected = {});

/// The same with a text of commands that is run on the root, or by another operation on texts.
void survivesCommands(const std::string& commands, const std::vector<std::string>& steps = {});

/// The same for anything that is not in a World: `run` makes what it needs, calls `operate(action)` once for what may
/// fail, and checks what is left.
using Operate = std::function<bool(const std::function<void()>& action)>;
void survivesAnywhere(const std::function<void(const Operate& operate)>& run);

} // namespace memory

#endif
