#include "Survival.h"

#include "FailingMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>

namespace memory {

namespace {

constexpr long long mostAllocations = 5'000;

struct Attempt {
    /// Whether an allocation failed, and whether the caller was told.
    bool hadFault = false;
    bool hasThrown = false;
};

Attempt attempt(const std::function<void()>& action, long long number, Shortage shortage) {
    Attempt result;
    const Fault fault(number, shortage);
    try {
        action();
    } catch (const std::bad_alloc&) {
        result.hasThrown = true;
    }
    result.hadFault = fault.happened();
    return result;
}

std::string stateAfter(const Action& action) {
    World world;
    if (action)
        action(world);
    return world.state();
}

/// The first line in which two texts differ.
std::string difference(const std::string& expected, const std::string& actual) {
    const auto [one, other] = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    const auto lineOf = [](const std::string& text, std::size_t at) {
        const std::size_t start = text.rfind('\n', at == 0 ? 0 : at - 1);
        const std::size_t from = start == std::string::npos ? 0 : start + 1;
        return text.substr(from, text.find('\n', at) - from);
    };
    return "  not: " + lineOf(expected, static_cast<std::size_t>(one - expected.begin())) +
           "\n  but: " + lineOf(actual, static_cast<std::size_t>(other - actual.begin()));
}

/// How often references were taken is counted, also when an operation is called again.
std::string withoutCalls(std::string state) {
    for (std::size_t at = state.find(" by "); at != std::string::npos; at = state.find(" by ", at + 1)) {
        const std::size_t number = at + 4;
        state.erase(number, state.find_first_not_of("0123456789", number) - number);
    }
    return state;
}

class Sweep {
public:
    Sweep(const Action& action, const Expected& expected) : m_action(action), m_expected(expected) {
        // Twice: what the process keeps for the next operation has its room then.
        for (int time = 0; time < 2; ++time) {
            World world;
            m_action(world);
            world.state();
            world.probe();
        }
        m_before = stateAfter({});
        m_after = stateAfter(m_action);
        for (const Action& step : m_expected.steps)
            m_steps.push_back(stateAfter(step));
    }

    void run() {
        for (const Shortage shortage : {Shortage::passing, Shortage::lasting}) {
            long long number = 1;
            while (number < mostAllocations && fails(number, shortage) && !testing::Test::HasFailure())
                ++number;
            EXPECT_LT(number, mostAllocations);
        }
    }

private:
    bool fails(long long number, Shortage shortage) {
        SCOPED_TRACE("allocation " + std::to_string(number) + (shortage == Shortage::lasting ? " and all after" : ""));
        bool hadFault = false;
        for (const bool repeats : {true, false}) {
            const long long before = held();
            hadFault = runOnce(number, shortage, repeats);
            EXPECT_EQ(held(), before) << "allocations are lost";
        }
        return hadFault;
    }

    bool runOnce(long long number, Shortage shortage, bool repeats) {
        World world;
        const Attempt result = attempt([&] { m_action(world); }, number, shortage);
        const std::string state = world.state();
        expectAllowed(state, result.hasThrown);
        if (repeats && result.hasThrown && (!m_expected.adds || state == m_before)) {
            m_action(world);
            const std::string again = withoutCalls(world.state());
            const std::string wanted = withoutCalls(m_after);
            EXPECT_TRUE(again == wanted) << "called again:\n" << difference(wanted, again);
        } else {
            world.probe();
        }
        return result.hadFault;
    }

    void expectAllowed(const std::string& state, bool hasThrown) const {
        if (state == m_after || (hasThrown && state == m_before))
            return;
        if (hasThrown && std::find(m_steps.begin(), m_steps.end(), state) != m_steps.end())
            return;
        for (const std::string& step : m_steps)
            ADD_FAILURE() << "nor this step:\n" << difference(step, state);
        ADD_FAILURE() << (hasThrown ? "" : "not thrown, ") << "neither done nor undone, against before:\n"
                      << difference(m_before, state) << "\nagainst after:\n"
                      << difference(m_after, state);
    }

    const Action& m_action;
    const Expected& m_expected;
    std::string m_before;
    std::string m_after;
    std::vector<std::string> m_steps;
};

Action commandsOn(const std::string& commands) {
    return [commands](World& world) { world.root.parseCommand(std::string(commands).data(), 0); };
}

} // namespace

void survives(const Action& action, const Expected& expected) {
    Sweep(action, expected).run();
}

void survivesCommands(const std::string& commands, const std::vector<std::string>& steps) {
    Expected expected;
    for (const std::string& step : steps)
        expected.steps.push_back(commandsOn(step));
    survives(commandsOn(commands), expected);
}

void survivesAnywhere(const std::function<void(const Operate& operate)>& run) {
    const Operate plainly = [](const std::function<void()>& action) {
        action();
        return true;
    };
    run(plainly);
    run(plainly);
    for (const Shortage shortage : {Shortage::passing, Shortage::lasting}) {
        bool hadFault = true;
        for (long long number = 1; hadFault && number < mostAllocations && !testing::Test::HasFailure(); ++number) {
            SCOPED_TRACE("allocation " + std::to_string(number));
            const long long before = held();
            hadFault = false;
            run([&](const std::function<void()>& action) {
                const Attempt result = attempt(action, number, shortage);
                hadFault = hadFault || result.hadFault;
                return !result.hasThrown;
            });
            EXPECT_EQ(held(), before) << "allocations are lost";
        }
        EXPECT_FALSE(hadFault);
    }
}

} // namespace memory
