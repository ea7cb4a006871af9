#ifndef ORBEL_FOUNDATION_TEXT_CHARACTERSET_H
#define ORBEL_FOUNDATION_TEXT_CHARACTERSET_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace text {

/// Characters that texts are searched for. One look at a table for each character of the text, where the searches of
/// std::string_view go through the whole set.
class CharacterSet {
public:
    // Not explicit: scanners are called with the characters themselves.
    constexpr CharacterSet(std::string_view characters)
        : m_only(characters.size() == 1 ? std::optional(characters.front()) : std::nullopt) {
        for (const char character : characters)
            m_contains[static_cast<unsigned char>(character)] = true;
    }
    constexpr CharacterSet(const char* characters) : CharacterSet(std::string_view(characters)) {}

    constexpr bool contains(char character) const { return m_contains[static_cast<unsigned char>(character)]; }

    /// Where the first character of the set, or outside of it, is from `from` on; the size of the text when there is
    /// none.
    constexpr std::size_t findIn(std::string_view text, std::size_t from = 0) const {
        if (m_only)
            return std::min(text.find(*m_only, from), text.size());
        // Most texts have no character of the set for a while, and one branch for four costs less than four.
        while (from + 4 <= text.size() && !containsAnyOfFour(text.data() + from))
            from += 4;
        while (from < text.size() && !contains(text[from]))
            ++from;
        return from;
    }
    constexpr std::size_t findOutside(std::string_view text, std::size_t from = 0) const {
        while (from < text.size() && contains(text[from]))
            ++from;
        return from;
    }

    /// The text without the characters of the set at its beginning, or at its end.
    constexpr std::string_view skip(std::string_view text) const { return text.substr(findOutside(text)); }
    constexpr std::string_view dropEnd(std::string_view text) const {
        std::size_t size = text.size();
        while (size > 0 && contains(text[size - 1]))
            --size;
        return text.substr(0, size);
    }

private:
    constexpr bool containsAnyOfFour(const char* at) const {
        return static_cast<int>(contains(at[0])) | static_cast<int>(contains(at[1])) |
               static_cast<int>(contains(at[2])) | static_cast<int>(contains(at[3]));
    }

    std::array<bool, 256> m_contains{};
    /// Of a set of one character, which processors find faster.
    std::optional<char> m_only;
};

} // namespace text

#endif
