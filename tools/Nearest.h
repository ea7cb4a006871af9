#ifndef ORBEL_TOOLS_NEAREST_H
#define ORBEL_TOOLS_NEAREST_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Those of the names that somebody may have meant by `written`, the likeliest first; a name that is written exactly
/// comes before all others.
std::vector<std::string> namesNear(std::string_view written, const std::vector<std::string>& names);

/// "; did you mean NAME?", or nothing when no name is near.
std::string suggestion(const std::optional<std::string>& name);
std::string suggestionFor(std::string_view written, const std::vector<std::string>& names);

#endif
