#ifndef ORBEL_TREE_NAMEHASH_H
#define ORBEL_TREE_NAMEHASH_H

#include <cstdint>
#include <cstring>
#include <string_view>

/// Hashes of names and paths, eight characters at a time.
namespace namehash {

template <class Word>
std::uint64_t load(const char* text) {
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// The characters of a text of up to 3 in one word.
inline std::uint64_t loadFew(const char* text, std::size_t size) {
    return size == 0 ? 0
                     : load<std::uint8_t>(text) << 16U | load<std::uint8_t>(text + size / 2) << 8U |
                           load<std::uint8_t>(text + size - 1);
}

/// Multilinear hashing (D. Lemire and O. Kaser, "Strongly universal string hashing is fast", The Computer Journal 57,
/// 2014): the products do not wait for each other. Texts of 8 to 32 characters, as most paths are, take two or four
/// words that may overlap; longer ones are folded in, 32 characters at a time.
inline std::uint32_t of(std::string_view text, std::uint64_t seed = 0) {
    constexpr std::uint64_t a = 0x9E3779B97F4A7C15U;
    constexpr std::uint64_t b = 0xD1B54A32D192ED03U;
    constexpr std::uint64_t c = 0xABC98388FB8FAC03U;
    constexpr std::uint64_t d = 0x8CB92BA72F3D8DD7U;
    const auto fold = [](std::uint64_t state) { return (state ^ (state >> 29U)) * a; };
    const char* at = text.data();
    std::size_t size = text.size();
    std::uint64_t state = (seed + size) * c;
    for (; size > 32; at += 32, size -= 32)
        state = fold(state + load<std::uint64_t>(at) * a + load<std::uint64_t>(at + 8) * b +
                     load<std::uint64_t>(at + 16) * c + load<std::uint64_t>(at + 24) * d);
    const char* end = at + size;
    if (size > 16)
        state += load<std::uint64_t>(at) * a + load<std::uint64_t>(at + 8) * b + load<std::uint64_t>(end - 16) * c +
                 load<std::uint64_t>(end - 8) * d;
    else if (size >= 8)
        state += load<std::uint64_t>(at) * a + load<std::uint64_t>(end - 8) * d;
    else if (size >= 4)
        state += load<std::uint32_t>(at) * a + load<std::uint32_t>(end - 4) * d;
    else
        state += loadFew(at, size) * a;
    return static_cast<std::uint32_t>(fold(state) >> 32U);
}

template <class Word>
bool areEqualWords(const char* left, const char* right) {
    return load<Word>(left) == load<Word>(right);
}

/// Whether two texts of one size, at most 32 characters, are equal: without a call, which would cost more.
inline bool areShortEqual(const char* left, const char* right, std::size_t size) {
    if (size < 4)
        return loadFew(left, size) == loadFew(right, size);
    const std::size_t end = size - (size < 8 ? 4 : 8);
    if (size < 8)
        return areEqualWords<std::uint32_t>(left, right) && areEqualWords<std::uint32_t>(left + end, right + end);
    return areEqualWords<std::uint64_t>(left, right) && areEqualWords<std::uint64_t>(left + end, right + end) &&
           (size <= 16 || (areEqualWords<std::uint64_t>(left + 8, right + 8) &&
                           areEqualWords<std::uint64_t>(left + end - 8, right + end - 8)));
}

inline bool areEqual(const char* left, const char* right, std::size_t size) {
    return size <= 32 ? areShortEqual(left, right, size) : std::memcmp(left, right, size) == 0;
}

} // namespace namehash

#endif
