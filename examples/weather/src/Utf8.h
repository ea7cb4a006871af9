#ifndef WEATHER_UTF8_H
#define WEATHER_UTF8_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Texts are UTF-8 everywhere; these look at their characters.
namespace utf8 {

/// The code points of a text; nothing when its bytes are not UTF-8.
std::optional<std::u32string> decode(std::string_view text);
std::string encode(std::u32string_view codePoints);

/// The text in capitals, as far as the library's case table knows them.
std::string toUpper(std::string_view text);

/// How many characters a text has, and its first `count` ones.
std::size_t length(std::string_view text);
std::string_view first(std::string_view text, std::size_t count);

} // namespace utf8

#endif
