#include "LineReader.h"

#include <cstdio>
#include <utility>

namespace text {

LineReader::LineReader(files::File file, std::size_t limit) : m_file(std::move(file)), m_buffer(limit + 1, '\0') {}

std::optional<std::string_view> LineReader::next() {
    if (!m_file || !std::fgets(m_buffer.data(), static_cast<int>(m_buffer.size()), m_file.get()))
        return std::nullopt;
    return std::string_view(m_buffer.c_str());
}

} // namespace text
