#include "Play.h"
#include "Steps.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <optional>
#include <string>

// The tree next to a model of it, step by step.
//
//   orbel_model [--seed N] [--steps N] [--seconds N] [--trace]
//
// Plays the given seed and those behind it, --steps steps each, for --seconds seconds or, without them, the one seed.
// On a difference it prints the seed, the steps that lead there, and both sides, and ends with 1.

namespace {

using namespace model;

struct Options {
    std::uint64_t seed = 1;
    int steps = 400;
    int seconds = 0;
    bool traces = false;
};

struct Failure {
    std::size_t step = 0;
    std::string difference;
    std::string told;
};

struct Count {
    long long seeds = 0;
    long long steps = 0;
    long long heard = 0;
    long long lost = 0;
};

std::optional<Failure> play(const std::vector<Step>& steps, int enough, bool traces, Count* count = nullptr) {
    Play play(enough);
    std::string told;
    for (std::size_t at = 0; at < steps.size(); ++at) {
        if (traces)
            std::cout << "step " << at << ": " << nameOf(steps[at]) << ' ' << steps[at].text << std::endl;
        const std::string difference = play.difference(steps[at]);
        const std::string line = "  step " + std::to_string(at) + '\n' + play.told();
        told += line;
        if (traces)
            std::cout << play.told() << std::flush;
        if (!difference.empty())
            return Failure{at, difference, told};
    }
    if (count) {
        ++count->seeds;
        count->steps += static_cast<long long>(steps.size());
        count->heard += play.heard();
        count->lost += play.lost();
    }
    return std::nullopt;
}

/// Few fields meet more often, many are more like a show.
int enoughFor(std::uint64_t seed) {
    return 12 + 24 * static_cast<int>(seed % 4);
}

/// What is compared: "size of #3 (a/x)" is about sizes.
std::string subjectOf(const std::string& difference) {
    return difference.substr(0, difference.find_first_of("#\n"));
}

/// Leaves out what does not matter for the same difference: many steps at once, then single ones, then what is done
/// meanwhile.
std::vector<Step> shrink(std::vector<Step> steps, int enough, const std::string& subject) {
    const auto fails = [&](const std::vector<Step>& fewer) {
        auto failure = play(fewer, enough, false);
        return failure && subjectOf(failure->difference) == subject ? failure : std::nullopt;
    };
    for (std::size_t chunk = steps.size() / 2; chunk > 0; chunk /= 2)
        for (std::size_t at = 0; at + chunk <= steps.size();) {
            std::vector<Step> fewer = steps;
            const auto from = fewer.begin() + static_cast<std::ptrdiff_t>(at);
            fewer.erase(from, from + static_cast<std::ptrdiff_t>(chunk));
            if (const auto failure = fails(fewer)) {
                fewer.resize(failure->step + 1);
                steps = fewer;
            } else {
                at += chunk;
            }
        }
    for (std::size_t at = 0; at < steps.size(); ++at)
        for (std::size_t reaction = 0; reaction < steps[at].reactions.size(); ++reaction) {
            std::vector<Step> fewer = steps;
            fewer[at].reactions[reaction] = Step();
            if (fails(fewer))
                steps = fewer;
        }
    return steps;
}

/// The last lines, where there are many.
std::string lastOf(const std::string& told, int most) {
    std::size_t from = told.size();
    for (int lines = 0; lines <= most && from != std::string::npos && from > 0; ++lines)
        from = told.rfind('\n', from - 1);
    return from == std::string::npos || from == 0 ? told : told.substr(from + 1);
}

void report(const Options& options, std::uint64_t seed, const std::vector<Step>& steps, const Failure& failure) {
    std::cout << "seed " << seed << ", step " << failure.step << ": " << failure.difference << std::flush;
    // First of all what is known already: looking for a shorter way may end in a crash.
    std::cout << "the last steps:\n" << lastOf(failure.told, 12);
    std::cout << "again: orbel_model --seed " << seed << " --steps " << options.steps << std::endl;
    const std::vector<Step> few = shrink(steps, enoughFor(seed), subjectOf(failure.difference));
    if (const auto shorter = play(few, enoughFor(seed), false))
        std::cout << "the shortest way there, " << few.size() << " steps:\n"
                  << lastOf(shorter->told, 60) << shorter->difference << std::flush;
}

bool read(int argc, char** argv, Options& options) {
    for (int at = 1; at < argc; ++at) {
        const std::string option = argv[at];
        if (option == "--trace") {
            options.traces = true;
            continue;
        }
        if (at + 1 == argc)
            return false;
        const std::uint64_t number = std::strtoull(argv[++at], nullptr, 10);
        if (option == "--seed")
            options.seed = number;
        else if (option == "--steps")
            options.steps = static_cast<int>(number);
        else if (option == "--seconds")
            options.seconds = static_cast<int>(number);
        else
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!read(argc, argv, options)) {
        std::cerr << "usage: orbel_model [--seed N] [--steps N] [--seconds N] [--trace]\n";
        return 2;
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(options.seconds);
    Count count;
    std::uint64_t seed = options.seed;
    do {
        // What crashes must not take the seed with it.
        std::cerr << "seed " << seed << std::endl;
        const std::vector<Step> steps = drawSteps(seed, options.steps);
        if (const auto failure = play(steps, enoughFor(seed), options.traces, &count)) {
            report(options, seed, steps, *failure);
            return 1;
        }
        ++seed;
    } while (std::chrono::steady_clock::now() < end);
    std::cout << "seeds " << options.seed << " to " << seed - 1 << ": " << count.steps << " steps, " << count.heard
              << " times heard, no difference" << std::endl;
    // What nobody can delete is not a leak to look for.
    if (count.lost > 0)
        std::_Exit(0);
    return 0;
}
