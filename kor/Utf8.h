#ifndef KOR_UTF8_H
#define KOR_UTF8_H

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

} // namespace utf8

#endif
