#ifndef ORBEL_FOUNDATION_TEXT_FIXEDTEXT_H
#define ORBEL_FOUNDATION_TEXT_FIXEDTEXT_H

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace text {

/// Null reads as the empty text everywhere in the library.
inline std::string_view viewOf(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

/// Keeps the characters that fit in front of the terminator. The source may lie inside the target.
template <std::size_t Size>
void copyCut(char (&target)[Size], std::string_view source) {
    const std::string_view kept = source.substr(0, Size - 1);
    std::copy(kept.begin(), kept.end(), target);
    target[kept.size()] = '\0';
}

template <std::size_t Size>
void copyCut(char (&target)[Size], const char* source) {
    copyCut(target, viewOf(source));
}

} // namespace text

#endif
