#ifndef ORBEL_TREE_NAMEORDER_H
#define ORBEL_TREE_NAMEORDER_H

#include <cstddef>
#include <cstdint>

/// What puts names into their byte order sooner than comparing them pair by pair. All texts end with a null character.
namespace nameorder {

/// How many characters two texts have in common from the start, at most as many as `most`.
inline std::size_t commonStart(const char* left, const char* right, std::size_t most) {
    std::size_t at = 0;
    while (at < most && left[at] == right[at] && left[at] != '\0')
        ++at;
    return at;
}

/// The first eight characters of a text as a number: numbers are ordered as the texts are by std::strcmp, and equal
/// where no difference is among the eight.
inline std::uint64_t numberOf(const char* text) {
    std::uint64_t number = 0;
    for (std::size_t left = sizeof number; left > 0; --left) {
        number = number << 8U | static_cast<unsigned char>(*text);
        if (*text != '\0')
            ++text;
    }
    return number;
}

} // namespace nameorder

#endif
