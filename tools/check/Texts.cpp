#include "Texts.h"

#include <orbel/foundation/text/Scanner.h>

#include <cstddef>

namespace {

constexpr std::size_t longestQuote = 48;

std::string visible(char character) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(character);
    switch (character) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    if (code >= 0x20 && code != 0x7F)
        return std::string(1, character);
    return std::string("\\x") + digits[code / 16] + digits[code % 16];
}

/// Not within a character of UTF-8.
std::string_view cutToLength(std::string_view text) {
    std::size_t size = longestQuote;
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U)
        --size;
    return text.substr(0, size);
}

} // namespace

std::string_view stripped(std::string_view text) {
    return text::blanks.dropEnd(text::blanks.skip(text));
}

std::string inQuotes(std::string_view text) {
    const bool isLong = text.size() > longestQuote;
    if (isLong)
        text = cutToLength(text);
    std::string result = "\"";
    for (const char character : text)
        result += visible(character);
    return result + (isLong ? "...\"" : "\"");
}
