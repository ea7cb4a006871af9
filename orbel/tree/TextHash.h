#ifndef ORBEL_TREE_TEXTHASH_H
#define ORBEL_TREE_TEXTHASH_H

#include <cstdint>
#include <cstring>
#include <string_view>

/// Hashes of names and paths, eight characters at a time.
namespace texthash {

template <class Word>
std::uint64_t load(const char* text) {
    Word word;
    std::memcpy(&word, text, sizeof word);
    return word;
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
    else if (size > 0)
        state +=
            (load<std::uint8_t>(at) << 16U | load<std::uint8_t>(at + size / 2) << 8U | load<std::uint8_t>(end - 1)) * a;
    return static_cast<std::uint32_t>(fold(state) >> 32U);
}

/// Whether two texts of one size are equal, without a call for short ones.
inline bool areEqual(const char* left, const char* right, std::size_t size) {
    if (size < 8 || size > 32)
        return std::memcmp(left, right, size) == 0;
    const auto difference = [&](std::size_t at) {
        return load<std::uint64_t>(left + at) ^ load<std::uint64_t>(right + at);
    };
    std::uint64_t different = difference(0) | difference(size - 8);
    if (size > 16)
        different |= difference(8) | difference(size - 16);
    return different == 0;
}

} // namespace texthash

#endif
