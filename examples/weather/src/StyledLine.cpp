#include "StyledLine.h"

#include "Utf8.h"

StyledLine& StyledLine::add(std::string_view text, std::string_view style) {
    if (!style.empty())
        m_bytes.append("\x1b[").append(style).append("m");
    m_bytes.append(text);
    if (!style.empty())
        m_bytes.append("\x1b[0m");
    m_columns += utf8::length(text);
    return *this;
}

StyledLine& StyledLine::padTo(std::size_t column, std::string_view filler, std::string_view style) {
    std::string fill;
    for (std::size_t at = m_columns; at < column; ++at)
        fill.append(filler);
    return add(fill, style);
}
