#ifndef FUZZ_INPUT_H
#define FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

/// Lends a text to the char* parameters of the library, in a block of just its size, so that the address sanitizer
/// sees every step beyond its end.
class Lent {
public:
    explicit Lent(std::string_view text) : m_bytes(text.begin(), text.end()) { m_bytes.push_back('\0'); }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

    operator char*() { return m_bytes.data(); }

    bool isStill(std::string_view text) const { return std::string_view(m_bytes.data(), m_bytes.size() - 1) == text; }

private:
    std::vector<char> m_bytes;
};

/// Calls with each line, without its line end.
template <class Call>
void forEachLine(std::string_view text, Call call) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        call(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// What a function that takes a char* makes of an input.
inline std::string_view upToNul(std::string_view input) {
    return input.substr(0, input.find('\0'));
}

#endif
