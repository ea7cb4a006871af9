#include "Goals.h"

#include <algorithm>

namespace {

constexpr const char* times = "x";
constexpr const char* bytes = "B";
constexpr const char* calls = "new";

std::string withUnit(double number, const std::string& unit) {
    const int digits = unit == times ? 2 : unit == calls ? 4 : 1;
    return fixed(number, digits) + ' ' + unit;
}

void judgeAccess(const Results& results, Goals& goals) {
    for (const std::size_t leaves : results.sizes("set"))
        goals.atMost("set by path and notify / floor-hash", leaves, results.ratio("set", library, floorHash, leaves),
                     1.0, times);
    for (const std::size_t leaves : results.sizes("get"))
        goals.atMost("get by path / floor-hash", leaves, results.ratio("get", library, floorHash, leaves), 1.2, times);
    for (const std::size_t fields : results.sizes("set-in-hand"))
        goals.atMost("set in hand, one observer / string and call", fields,
                     results.ratio("set-in-hand", library, floorPlain, fields), 1.5, times);
}

void judgeGrowth(const Results& results, Goals& goals) {
    for (const char* operation : {"set", "get"}) {
        const std::vector<std::size_t> sizes = results.sizes(operation);
        if (sizes.size() < 2)
            continue;
        goals.atMost(std::string(operation) + " by path: its ratio to floor-hash / the same at fewest leaves",
                     sizes.back(),
                     quotient(results.ratio(operation, library, floorHash, sizes.back()),
                              results.ratio(operation, library, floorHash, sizes.front())),
                     1.05, times);
    }
    for (const std::size_t leaves : results.sizes("find")) {
        goals.atMost("find in one wide structure, asking it / in a square", leaves,
                     results.ratio("find", "wide", "square", leaves), 1.1, times);
        goals.atMost("find in one wide structure, from the root / in a square", leaves,
                     results.ratio("find", "wide-from-root", "square", leaves), 1.1, times);
    }
}

void judgeFanOut(const Results& results, Goals& goals) {
    for (const std::size_t observers : results.sizes("fan-in-hand"))
        goals.atMost("set in hand, observers / string and vector", observers,
                     results.ratio("fan-in-hand", library, floorPlain, observers), 1.3, times);
    const std::vector<std::size_t> chains = results.sizes("chain");
    for (const std::size_t links : chains) {
        const auto ratio = results.ratio("chain", library, "separate", links);
        if (links <= 10)
            goals.atMost("set along a chain of links / as many sets", links, ratio, 1.5, times);
        else
            goals.note("set along a chain of links / as many sets", links, ratio, times);
    }
    // From the second on: processors foresee the returns of a few nested calls only, which is not growth.
    if (chains.size() > 2)
        goals.atMost("a field of the longest chain / of one of 100", chains.back(),
                     quotient(results.ratio({"chain", library, chains.back()}, {"chain", library, chains[1]}),
                              static_cast<double>(chains.back() + 1) / static_cast<double>(chains[1] + 1)),
                     1.5, times);
}

/// Deleting is linear when a leaf of the largest tree costs little more than one of 10,000. How much more the memory
/// alone makes it, which no cache holds then, is told by plain maps.
void judgeLifetime(const Results& results, Goals& goals) {
    for (const std::size_t leaves : results.sizes("build"))
        goals.atMost("build by kind-prefixed paths / floor-hash", leaves,
                     results.ratio("build", library, floorHash, leaves), 2.0, times);
    for (const char* operation : {"delete", "deleteChildren"}) {
        const std::string name =
            std::string(operation) == "delete" ? "delete, field by field" : "delete by deleteChildren";
        const std::vector<std::size_t> sizes = results.sizes(operation);
        const auto comparedTo = [&](const char* floor, std::size_t leaves) {
            return results.ratio({operation, library, leaves}, {"delete", floor, leaves});
        };
        if (!sizes.empty() && sizes.back() > 10'000)
            goals.atMost(name + ": a leaf / one of 10,000, by that of floor-map", sizes.back(),
                         quotient(comparedTo(floorMap, sizes.back()), comparedTo(floorMap, 10'000)), 1.2, times);
        for (const std::size_t leaves : sizes)
            goals.note(name + " / floor-hash", leaves, comparedTo(floorHash, leaves), times);
    }
}

void judgeMemory(const Results& results, Goals& goals) {
    const auto weigh = [&](const char* operation, const char* goal, double limit) {
        for (const std::size_t items : results.sizes(operation))
            goals.atMost(goal, items, results.find(operation, library, items)->bytes, limit, bytes);
    };
    weigh("leaf-bytes", "heap of a leaf with 12 characters", 384);
    weigh("handler-bytes", "heap of a handler on each leaf built by path", 40);
    weigh("first-handler-bytes", "heap of a first handler on each leaf made by hand", 40);
    weigh("crowd-bytes", "heap of a handler, so many on one leaf", 40);
}

void judgeAllocations(const Results& results, Goals& goals) {
    const auto most = [&](const char* operation, const char* goal) {
        std::optional<double> allocations;
        for (const std::size_t items : results.sizes(operation))
            if (const Samples* samples = results.find(operation, library, items))
                allocations = std::max(allocations.value_or(0), samples->allocations);
        goals.atMost(goal, std::nullopt, allocations, 0, calls);
    };
    most("set", "allocations: set by path");
    most("get", "allocations: get by path");
    most("set-in-hand", "allocations: set in hand");
    most("fan-in-hand", "allocations: notify many");
    most("chain", "allocations: along links");
    most("broadcast", "allocations: broadcast");
    most("conversion", "allocations: conversion lookup");
    most("converted", "allocations: told to a plug-in, converted");
    most("expression", "allocations: evaluate an expression");
}

} // namespace

Goals::Goals() : m_table({"goal", "items", "measured", "limit", "result"}, 1) {}

void Goals::atMost(const std::string& goal, std::optional<std::size_t> items, std::optional<double> figure,
                   double limit, const std::string& unit) {
    if (figure)
        add(goal, items, *figure, "<= " + withUnit(limit, unit), *figure <= limit ? "pass" : "short", unit);
}

void Goals::atLeast(const std::string& goal, std::optional<std::size_t> items, std::optional<double> figure,
                    double limit, const std::string& unit) {
    if (figure)
        add(goal, items, *figure, ">= " + withUnit(limit, unit), *figure >= limit ? "pass" : "short", unit);
}

void Goals::note(const std::string& what, std::optional<std::size_t> items, std::optional<double> figure,
                 const std::string& unit) {
    if (figure)
        add(what, items, *figure, "-", "-", unit);
}

void Goals::add(const std::string& goal, std::optional<std::size_t> items, double figure, const std::string& limit,
                const std::string& result, const std::string& unit) {
    m_table.add({goal, items ? std::to_string(*items) : "-", withUnit(figure, unit), limit, result});
}

void judge(const Results& results, Goals& goals) {
    judgeAccess(results, goals);
    judgeGrowth(results, goals);
    judgeFanOut(results, goals);
    judgeLifetime(results, goals);
    judgeMemory(results, goals);
    judgeAllocations(results, goals);
}

void judgeTexts(const std::vector<MeasuredText>& texts, Goals& goals) {
    for (const auto& [language, figures] : texts) {
        const std::string name(language->name);
        if (language->maxRatio > 0) {
            goals.note(name + " / floor", std::nullopt, figures.ratio, times);
            goals.atMost(name + " / floor" + (language->without.empty() ? "" : ", less direct work"), std::nullopt,
                         figures.ratioWithout, language->maxRatio, times);
        }
        if (language->minMegabytes > 0)
            goals.atLeast(name, std::nullopt, figures.megabytes, language->minMegabytes, "MB/s");
        if (language->isSteady)
            goals.atMost("allocations: " + name, std::nullopt, figures.allocations, 0, calls);
    }
}
