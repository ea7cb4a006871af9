#include "Steps.h"

#include <array>

namespace model {

namespace {

using Names = std::vector<std::string>;

struct Weight {
    Op op;
    const char* name;
    int weight;
};

constexpr Weight weights[] = {
    {Op::Nothing, "Nothing", 0},
    {Op::Find, "Find", 20},
    {Op::Set, "Set", 10},
    {Op::SetAt, "SetAt", 3},
    {Op::SetRange, "SetRange", 3},
    {Op::Get, "Get", 3},
    {Op::Resize, "Resize", 4},
    {Op::SetField, "SetField", 50},
    {Op::SetFieldAt, "SetFieldAt", 20},
    {Op::SetFieldRange, "SetFieldRange", 20},
    {Op::ClearField, "ClearField", 10},
    {Op::CopyField, "CopyField", 15},
    {Op::Fire, "Fire", 4},
    {Op::Run, "Run", 14},
    {Op::RunList, "RunList", 4},
    {Op::RunCopy, "RunCopy", 4},
    {Op::RunClear, "RunClear", 2},
    {Op::RunLink, "RunLink", 4},
    {Op::RunLinks, "RunLinks", 1},
    {Op::Link, "Link", 30},
    {Op::Unlink, "Unlink", 2},
    {Op::UnlinkTargets, "UnlinkTargets", 1},
    {Op::ClearLinks, "ClearLinks", 1},
    {Op::Register, "Register", 5},
    {Op::Unregister, "Unregister", 2},
    {Op::RegisterAt, "RegisterAt", 45},
    {Op::UnregisterAt, "UnregisterAt", 6},
    {Op::UnregisterAll, "UnregisterAll", 1},
    {Op::DestroyHandler, "DestroyHandler", 2},
    {Op::MakeHandler, "MakeHandler", 6},
    {Op::Ask, "Ask", 2},
    {Op::Retype, "Retype", 5},
    {Op::RetypeByRecord, "RetypeByRecord", 2},
    {Op::Untype, "Untype", 1},
    {Op::ReadTypes, "ReadTypes", 1},
    {Op::MakeField, "MakeField", 2},
    {Op::AddField, "AddField", 5},
    {Op::RemoveField, "RemoveField", 2},
    {Op::RemoveChildren, "RemoveChildren", 1},
    {Op::DeleteChildren, "DeleteChildren", 1},
    {Op::DeleteField, "DeleteField", 4},
    {Op::DeleteInPlace, "DeleteInPlace", 1},
    {Op::Observers, "Observers", 1},
};

const Names fieldNames = {"a", "b", "c", "x", "y", "pos", "text"};
const Names kinds = {"node", "node", "string", "string", "Point", "Label", "Point[2]", "Line", "Missing"};
const Names words = {"", "0", "1", "2", "Hi", "long enough to live elsewhere"};
const Names indices = {"", "", "", "", "[0]", "[1]", "[2]", "[0-1]", "[1-3]", "[x]"};

std::string anyName(Dice& dice) {
    return dice.oneOf(fieldNames);
}

/// With or without kinds, "*" and "..".
std::string anyPath(Dice& dice, int kindChance, int wildChance) {
    std::string path;
    for (int left = dice.below(3); left >= 0; --left) {
        if (wildChance > 0 && dice.below(wildChance) == 0) {
            path += dice.below(3) == 0 ? ".." : "*";
        } else {
            if (kindChance > 0 && dice.below(kindChance) == 0)
                path += dice.oneOf(kinds) + ':';
            path += anyName(dice);
            if (left > 0 && dice.below(4) == 0)
                path += dice.oneOf(indices);
        }
        path += left > 0 ? "/" : "";
    }
    return path;
}

std::string anyValue(Dice& dice, int depth) {
    if (dice.below(4) != 0 || depth == 0)
        return dice.oneOf(words);
    if (dice.below(4) == 0)
        return dice.oneOf(words) + ',' + dice.oneOf(words) + ',' + dice.oneOf(words);
    std::string group = dice.below(6) == 0 ? "{{" : "{";
    for (int left = dice.below(2); left >= 0; --left)
        group += anyName(dice) + " = " + anyValue(dice, depth - 1) + (left > 0 ? "; " : "");
    return group + (group[1] == '{' ? "}}" : "}");
}

std::string anyCommand(Dice& dice) {
    return anyPath(dice, 10, 6) + dice.oneOf(indices) + " = " + anyValue(dice, 2);
}

std::string anyCopy(Dice& dice) {
    return anyPath(dice, 20, 0) + dice.oneOf(indices) + " = " + anyPath(dice, 0, 20) + dice.oneOf(indices);
}

std::string anyLink(Dice& dice) {
    if (dice.below(4) == 0)
        return '~' + anyPath(dice, 20, 20);
    return anyPath(dice, 12, 20) + " = " + anyPath(dice, 12, 20);
}

template <class Part>
std::string anyList(Dice& dice, Part part) {
    std::string list;
    for (int left = dice.below(3); left >= 0; --left)
        list += part(dice) + (left > 0 ? ";" : "");
    return list;
}

Op anyOp(Dice& dice) {
    int sum = 0;
    for (const Weight& weight : weights)
        sum += weight.weight;
    int drawn = dice.below(sum);
    for (const Weight& weight : weights) {
        if (drawn < weight.weight)
            return weight.op;
        drawn -= weight.weight;
    }
    return Op::Nothing;
}

std::string anyText(Dice& dice, Op op) {
    switch (op) {
    case Op::Find:
        return anyPath(dice, 2, 12);
    case Op::Run:
        return anyCommand(dice);
    case Op::RunList:
        return anyList(dice, anyCommand);
    case Op::RunCopy:
        return anyCopy(dice);
    case Op::RunClear:
        return dice.below(12) == 0 ? "orbel"
                                   : anyList(dice, [](Dice& d) { return anyPath(d, 20, 20) + d.oneOf(indices); });
    case Op::RunLink:
        return anyLink(dice);
    case Op::RunLinks:
        return anyList(dice, anyLink);
    case Op::Register:
        return anyPath(dice, 4, 20);
    case Op::Retype:
    case Op::RetypeByRecord: {
        const Names types = {"Point", "Label", "Line", "Missing"};
        return dice.oneOf(types);
    }
    case Op::MakeField:
    case Op::RemoveField:
        return anyName(dice);
    case Op::Set:
    case Op::SetAt:
    case Op::SetRange:
    case Op::Get:
    case Op::Resize:
    case Op::Unregister:
        return anyPath(dice, 12, 20);
    default:
        return "";
    }
}

Step anyStep(Dice& dice, bool mayReact) {
    Step step;
    step.op = anyOp(dice);
    step.text = anyText(dice, step.op);
    // Much of what is asked by a path is asked of the root.
    step.field = step.text.empty() || dice.below(2) != 0 ? dice.below(1000) : 0;
    step.other = dice.below(1000);
    step.handler = dice.below(1000);
    step.number = dice.below(4);
    step.upTo = dice.below(6) - 1;
    step.value = dice.oneOf(words);
    if (mayReact && dice.below(4) != 0)
        for (int left = dice.below(6); left > 0; --left)
            step.reactions.push_back(dice.below(3) == 0 ? Step() : anyStep(dice, false));
    return step;
}

} // namespace

std::uint64_t Dice::next() {
    m_state += 0x9e3779b97f4a7c15U;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebU;
    return mixed ^ (mixed >> 31);
}

std::vector<Step> drawSteps(std::uint64_t seed, int count) {
    Dice dice(seed);
    std::vector<Step> steps;
    for (; count > 0; --count)
        steps.push_back(anyStep(dice, true));
    return steps;
}

std::string nameOf(const Step& step) {
    for (const Weight& weight : weights)
        if (weight.op == step.op)
            return weight.name;
    return "?";
}

} // namespace model
