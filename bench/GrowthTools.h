#ifndef BENCH_GROWTHTOOLS_H
#define BENCH_GROWTHTOOLS_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

/// Lends a text to char* parameters.
inline char* chars(std::string& text) {
    return text.data();
}

inline char* chars(std::string&& text) {
    return text.data();
}

inline void require(bool condition, const char* what) {
    if (!condition)
        throw std::runtime_error(what);
}

inline std::string numbered(std::string_view name, std::size_t number) {
    return std::string(name) + std::to_string(number);
}

#endif
