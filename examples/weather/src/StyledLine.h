#ifndef WEATHER_STYLEDLINE_H
#define WEATHER_STYLEDLINE_H

#include <cstddef>
#include <string>
#include <string_view>

/// A line of a terminal that knows how many columns it fills, which its bytes do not tell: letters outside ASCII take
/// several and escape codes show as none.
class StyledLine {
public:
    /// `style` is what stands between "\x1b[" and "m".
    StyledLine& add(std::string_view text, std::string_view style = "");
    StyledLine& padTo(std::size_t column, std::string_view filler = " ", std::string_view style = "");

    std::size_t columns() const { return m_columns; }
    const std::string& bytes() const { return m_bytes; }

private:
    std::string m_bytes;
    std::size_t m_columns = 0;
};

#endif
