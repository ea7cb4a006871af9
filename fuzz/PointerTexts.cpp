#include "Target.h"

#include <orbel/orbel.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace {

/// The bytes of a text of Base64, read the plainest way.
std::string bytesOf(const std::string& text) {
    std::string bits;
    for (const char character : text.substr(0, text.find('='))) {
        const std::size_t digit = std::string_view(korDataHandler::pchzBase64AlphaBet).find(character);
        check(digit != std::string_view::npos, "all characters are in the alphabet");
        for (int bit = 5; bit >= 0; --bit)
            bits += (digit >> bit & 1) != 0 ? '1' : '0';
    }
    std::string bytes;
    for (std::size_t at = 0; at + 8 <= bits.size(); at += 8)
        bytes += static_cast<char>(std::stoi(bits.substr(at, 8), nullptr, 2));
    return bytes;
}

void checkNumber(unsigned long long value) {
    const std::string text = korDataHandler::PtrToBase64(value);
    check(text.size() == 12 && text.back() == '=', "a pointer takes twelve characters");
    const std::string bytes = bytesOf(text);
    check(bytes.size() == 8, "a pointer has eight bytes");
    unsigned long long read = 0;
    for (std::size_t index = 8; index-- > 0;)
        read = read << 8 | static_cast<unsigned char>(bytes[index]);
    check(read == value, "a text holds the bytes of its pointer, the lowest first");
    if (value < 0x80000000)
        check(korDataHandler::Base64ToPtr(text) == value, "a pointer of 31 bits comes back");
}

const Target target("pointer-texts", [](std::string_view input) {
    const unsigned long long value = korDataHandler::Base64ToPtr(std::string(input));
    check(value <= 0x7FFFFFFF || value >= 0xFFFFFFFF80000000, "a pointer is a number of 32 bits with its sign");
    check(value == 0 || input.size() <= 12, "a longer text is no pointer");
    checkNumber(value);
    unsigned long long number = 0;
    for (const char byte : input.substr(0, 8))
        number = number << 8 | static_cast<unsigned char>(byte);
    checkNumber(number);
    checkNumber(number & 0x7FFFFFFF);
});

} // namespace
