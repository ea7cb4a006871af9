#ifndef KOR_NUMBERS_H
#define KOR_NUMBERS_H

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

/// Numbers as texts, in every locale the same.
namespace numbers {

/// The number at the start of a text, behind blanks; nothing when there is none.
inline std::optional<double> read(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t+"), text.size()));
    double number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// As short as it can be without loss.
template <class Number>
std::string write(Number number) {
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

} // namespace numbers

#endif
