#include "Nearest.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <utility>

namespace {

std::string inSmallLetters(std::string_view text) {
    std::string small(text);
    for (char& letter : small)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return small;
}

/// How many letters to insert, drop, replace or swap with their neighbour lead from one text to the other.
std::size_t distanceOf(std::string_view left, std::string_view right) {
    std::vector<std::size_t> beforeLast;
    std::vector<std::size_t> last(right.size() + 1);
    for (std::size_t column = 0; column <= right.size(); ++column)
        last[column] = column;
    for (std::size_t row = 1; row <= left.size(); ++row) {
        std::vector<std::size_t> next(right.size() + 1, row);
        for (std::size_t column = 1; column <= right.size(); ++column) {
            const bool same = left[row - 1] == right[column - 1];
            next[column] = std::min({last[column] + 1, next[column - 1] + 1, last[column - 1] + (same ? 0 : 1)});
            if (row > 1 && column > 1 && left[row - 1] == right[column - 2] && left[row - 2] == right[column - 1])
                next[column] = std::min(next[column], beforeLast[column - 2] + 1);
        }
        beforeLast = std::exchange(last, std::move(next));
    }
    return last.back();
}

} // namespace

std::vector<std::string> namesNear(std::string_view written, const std::vector<std::string>& names) {
    // Nobody writes longer names by hand, and the table of distances grows with the square.
    constexpr std::size_t longest = 100;
    const std::string small = inSmallLetters(written.substr(0, longest));
    const std::size_t limit = (written.size() + 1) / 3;
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : names) {
        const std::string other = inSmallLetters(std::string_view(name).substr(0, longest));
        const std::size_t lengths = std::max(written.size(), name.size()) - std::min(written.size(), name.size());
        if (lengths > limit)
            continue;
        const std::size_t distance = distanceOf(small, other);
        if (distance <= limit)
            near.emplace_back(2 * distance + (name == written ? 0 : 1), name);
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<std::string> sorted;
    sorted.reserve(near.size());
    for (auto& [distance, name] : near)
        sorted.push_back(std::move(name));
    return sorted;
}

std::string suggestion(const std::optional<std::string>& name) {
    return name ? "; did you mean " + *name + "?" : std::string();
}

std::string suggestionFor(std::string_view written, const std::vector<std::string>& names) {
    const std::vector<std::string> near = namesNear(written, names);
    return near.empty() ? std::string() : suggestion(near.front());
}
