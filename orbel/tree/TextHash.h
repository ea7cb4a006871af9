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

inline std::uint64_t mix(std::uint64_t state, std::uint64_t word) {
    // The fractional part of the golden ratio, as in Fibonacci hashing (D. Knuth, The Art of Computer Programming,
    // volume 3, section 6.4); folding the upper half down lets the next word meet bits of both.
    state = (state ^ word) * 0x9E3779B97F4A7C15U;
    return state ^ (state >> 32U);
}

inline std::uint32_t of(std::string_view text, std::uint64_t seed = 0) {
    const char* at = text.data();
    const std::size_t size = text.size();
    std::uint64_t state = mix(seed, size);
    if (size >= 8) {
        for (const char* last = at + size - 8; at < last; at += 8)
            state = mix(state, load<std::uint64_t>(at));
        state = mix(state, load<std::uint64_t>(text.data() + size - 8));
    } else if (size >= 4) {
        state = mix(state, load<std::uint32_t>(at) << 32U | load<std::uint32_t>(at + size - 4));
    } else if (size > 0) {
        state = mix(state, load<std::uint8_t>(at) << 16U | load<std::uint8_t>(at + size / 2) << 8U |
                               load<std::uint8_t>(at + size - 1));
    }
    return static_cast<std::uint32_t>(mix(state, 0) >> 32U);
}

} // namespace texthash

#endif
