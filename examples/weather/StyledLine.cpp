#include "StyledLine.h"

#include <algorithm>

StyledLine& StyledLine::add(std::string_view text, std::string_view style) {
    if (!style.empty())
        m_bytes.append("\x1b[").append(style).append("m");
    m_bytes.append(text);
    if (!style.empty())
        m_bytes.append("\x1b[0m");
    m_columns += columnsOf(text);
    return *this;
}

StyledLine& StyledLine::padTo(std::size_t column, std::string_view filler, std::string_view style) {
    std::string fill;
    for (std::size_t at = m_columns; at < column; ++at)
        fill.append(filler);
    return add(fill, style);
}

std::size_t StyledLine::columnsOf(std::string_view text) {
    // Every letter of UTF-8 has exactly one byte that is not of the form 10xxxxxx.
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; }));
}
