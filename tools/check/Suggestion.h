#ifndef ORBEL_TOOLS_CHECK_SUGGESTION_H
#define ORBEL_TOOLS_CHECK_SUGGESTION_H

#include <string>
#include <string_view>
#include <vector>

/// The name that was probably meant: the one with the fewest letters to change, if they are few. Empty when there is
/// none.
std::string_view closestName(std::string_view name, const std::vector<std::string_view>& candidates);

/// `; did you mean "string"?`, or nothing.
std::string suggestion(std::string_view name, const std::vector<std::string_view>& candidates);

#endif
