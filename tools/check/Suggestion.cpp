#include "Suggestion.h"

#include "Texts.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace {

/// Names are short; what is longer was not mistyped.
constexpr std::size_t longestName = 100;

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
}

/// How many letters are to be inserted, left out or exchanged.
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t from = 1; from <= one.size(); ++from) {
        std::size_t diagonal = row[0];
        row[0] = from;
        for (std::size_t to = 1; to <= other.size(); ++to) {
            const std::size_t exchanged = diagonal + (lower(one[from - 1]) == lower(other[to - 1]) ? 0 : 1);
            diagonal = row[to];
            row[to] = std::min({exchanged, row[to] + 1, row[to - 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string_view closestName(std::string_view name, const std::vector<std::string_view>& candidates) {
    std::string_view closest;
    if (name.empty() || name.size() > longestName)
        return closest;
    std::size_t fewest = std::max<std::size_t>(name.size() / 3, 1) + 1;
    for (const std::string_view candidate : candidates) {
        if (candidate.empty() || candidate.size() > longestName || candidate == name)
            continue;
        const std::size_t changes = distance(name, candidate);
        if (changes < fewest && changes < candidate.size()) {
            fewest = changes;
            closest = candidate;
        }
    }
    return closest;
}

std::string suggestion(std::string_view name, const std::vector<std::string_view>& candidates) {
    const std::string_view closest = closestName(name, candidates);
    return closest.empty() ? std::string() : "; did you mean " + inQuotes(closest) + "?";
}
