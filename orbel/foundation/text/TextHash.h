#ifndef ORBEL_FOUNDATION_TEXT_TEXTHASH_H
#define ORBEL_FOUNDATION_TEXT_TEXTHASH_H

#include <cstddef>
#include <functional>
#include <string_view>

namespace text {

/// Lets hash containers of strings look for any text without making a string of it.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

} // namespace text

#endif
