#include "Suggestion.h"

#include "../Nearest.h"
#include "Texts.h"

#include <algorithm>

std::string_view closestName(std::string_view name, const std::vector<std::string_view>& candidates) {
    for (const std::string& near : namesNear(name, {candidates.begin(), candidates.end()}))
        if (near != name)
            return *std::find(candidates.begin(), candidates.end(), near);
    return {};
}

std::string suggestion(std::string_view name, const std::vector<std::string_view>& candidates) {
    const std::string_view closest = closestName(name, candidates);
    return closest.empty() ? std::string() : "; did you mean " + inQuotes(closest) + "?";
}
