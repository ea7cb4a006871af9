#include "PointerText.h"

#include <cstdint>
#include <vector>

namespace {

constexpr std::size_t numBytes = 8;
constexpr std::size_t numCharacters = 12;

/// The bytes of all characters of the alphabet up to the first other one.
std::vector<std::uint8_t> bytesOf(std::string_view text) {
    constexpr std::string_view alphabet = pointertext::alphabet;
    std::vector<std::uint8_t> bytes;
    std::uint32_t bits = 0;
    int numBits = 0;
    for (const char character : text) {
        const std::size_t digit = alphabet.find(character);
        if (digit == std::string_view::npos)
            break;
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        numBits += 6;
        if (numBits >= 8) {
            numBits -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> numBits));
        }
    }
    return bytes;
}

} // namespace

std::string pointertext::encode(unsigned long long value) {
    std::string text;
    for (std::size_t start = 0; start < numBytes; start += 3) {
        std::uint32_t group = 0;
        for (std::size_t index = start; index < start + 3; ++index)
            group = group << 8 | (index < numBytes ? value >> (8 * index) & 0xFF : 0);
        for (int shift = 18; shift >= 0; shift -= 6)
            text += alphabet[group >> shift & 0x3F];
    }
    text.back() = '=';
    return text;
}

unsigned long long pointertext::decode(std::string_view text) {
    if (text.size() > numCharacters)
        return 0;
    unsigned long long value = 0;
    const auto bytes = bytesOf(text);
    for (std::size_t index = 0; index < bytes.size() && index < numBytes; ++index) {
        const auto shifted = static_cast<std::int32_t>(std::uint32_t{bytes[index]} << (8 * index % 32));
        value |= static_cast<unsigned long long>(std::int64_t{shifted});
    }
    return value;
}
