#ifndef ORBEL_FUZZ_MODEL_STEPS_H
#define ORBEL_FUZZ_MODEL_STEPS_H

#include <cstdint>
#include <string>
#include <vector>

/// What a play does: plain data, drawn beforehand, that means something whatever the tree has become. So steps can be
/// left out to find the few that matter.
namespace model {

enum class Op {
    Nothing,
    Find,
    Set,
    SetAt,
    SetRange,
    Get,
    Resize,
    SetField,
    SetFieldAt,
    SetFieldRange,
    ClearField,
    CopyField,
    Fire,
    Run,
    RunList,
    RunCopy,
    RunClear,
    RunLink,
    RunLinks,
    Link,
    Unlink,
    UnlinkTargets,
    ClearLinks,
    Register,
    Unregister,
    RegisterAt,
    UnregisterAt,
    UnregisterAll,
    DestroyHandler,
    MakeHandler,
    Ask,
    Retype,
    RetypeByRecord,
    Untype,
    ReadTypes,
    MakeField,
    AddField,
    RemoveField,
    RemoveChildren,
    DeleteChildren,
    DeleteField,
    DeleteInPlace,
    Observers,
};

struct Step {
    Op op = Op::Nothing;
    /// Of those that there are then, by turns.
    int field = 0;
    int other = 0;
    int handler = 0;
    int number = 0;
    int upTo = 0;
    std::string text;
    std::string value;
    /// What those who hear do meanwhile, one after the other.
    std::vector<Step> reactions;
};

/// The same numbers from the same seed everywhere, which the distributions of the standard library do not promise.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}

    int below(int limit) { return static_cast<int>(next() % static_cast<std::uint64_t>(limit)); }

    template <class List>
    const auto& oneOf(const List& list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    }

private:
    std::uint64_t next();

    std::uint64_t m_state;
};

std::vector<Step> drawSteps(std::uint64_t seed, int count);

/// "Set #0 scene/x = 1".
std::string nameOf(const Step& step);

} // namespace model

#endif
