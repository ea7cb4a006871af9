#include "Utf8.h"

#include <orbel/orbel.h>

#include <cstddef>

namespace utf8 {

namespace {

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

/// How many bytes follow a first byte; nothing when no character begins with it.
std::optional<std::size_t> continuationsOf(unsigned char first) {
    if (first < 0x80)
        return 0;
    if (first >= 0xc2 && first < 0xe0)
        return 1;
    if (first >= 0xe0 && first < 0xf0)
        return 2;
    if (first >= 0xf0 && first < 0xf5)
        return 3;
    return std::nullopt;
}

bool isCodePoint(char32_t value, std::size_t continuations) {
    constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = value >= 0xd800 && value < 0xe000;
    return value >= smallest[continuations] && value < 0x110000 && !isSurrogate;
}

/// Cuts the first character off the text.
std::optional<char32_t> decodeOne(std::string_view& text) {
    const auto head = static_cast<unsigned char>(text.front());
    const auto continuations = continuationsOf(head);
    if (!continuations || text.size() <= *continuations)
        return std::nullopt;
    char32_t value = *continuations == 0 ? head : head & (0x3fU >> *continuations);
    for (std::size_t at = 1; at <= *continuations; ++at) {
        if (!isContinuation(text[at]))
            return std::nullopt;
        value = value << 6 | (static_cast<unsigned char>(text[at]) & 0x3f);
    }
    text.remove_prefix(*continuations + 1);
    return isCodePoint(value, *continuations) ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<std::u32string> decode(std::string_view text) {
    std::u32string codePoints;
    while (!text.empty()) {
        const auto codePoint = decodeOne(text);
        if (!codePoint)
            return std::nullopt;
        codePoints += *codePoint;
    }
    return codePoints;
}

std::string encode(std::u32string_view codePoints) {
    std::string text;
    const auto add = [&](char32_t bits) { text += static_cast<char>(bits); };
    for (const char32_t value : codePoints) {
        if (value < 0x80) {
            add(value);
            continue;
        }
        if (value < 0x800) {
            add(0xc0 | value >> 6);
        } else if (value < 0x10000) {
            add(0xe0 | value >> 12);
            add(0x80 | (value >> 6 & 0x3f));
        } else {
            add(0xf0 | value >> 18);
            add(0x80 | (value >> 12 & 0x3f));
            add(0x80 | (value >> 6 & 0x3f));
        }
        add(0x80 | (value & 0x3f));
    }
    return text;
}

std::string toUpper(std::string_view text) {
    auto codePoints = decode(text);
    if (!codePoints)
        return std::string(text);
    for (char32_t& codePoint : *codePoints) {
        // The table has the characters that a wchar_t holds on every platform.
        if (codePoint > 0xffff)
            continue;
        auto character = static_cast<wchar_t>(codePoint);
        if (IDataHandlerImpl::toUpper(&character))
            codePoint = static_cast<char32_t>(character);
    }
    return encode(*codePoints);
}

} // namespace utf8
