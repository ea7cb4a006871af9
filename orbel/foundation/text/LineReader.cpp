#include "LineReader.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace text {

namespace {

constexpr std::size_t blockSize = 16'384;

} // namespace

LineReader::LineReader(files::File file, std::size_t limit) : m_file(std::move(file)), m_limit(limit) {}

std::optional<std::string_view> LineReader::next() {
    while (true) {
        const std::size_t lineEnd = m_rest.substr(0, m_limit).find('\n');
        if (lineEnd != std::string_view::npos)
            return take(lineEnd + 1);
        if (m_rest.size() >= m_limit)
            return take(m_limit);
        if (readOn())
            continue;
        // What is left when reading fails is no line.
        if (m_rest.empty() || std::ferror(m_file.get()) != 0)
            return std::nullopt;
        return take(m_rest.size());
    }
}

/// False when there is no more.
bool LineReader::readOn() {
    if (!m_file || std::ferror(m_file.get()) != 0)
        return false;
    if (m_buffer.empty())
        m_buffer.resize(m_limit + blockSize);
    std::copy(m_rest.begin(), m_rest.end(), m_buffer.begin());
    const std::size_t kept = m_rest.size();
    const std::size_t read = std::fread(m_buffer.data() + kept, 1, m_buffer.size() - kept, m_file.get());
    m_rest = std::string_view(m_buffer).substr(0, kept + read);
    m_mayHoldNul = m_rest.find('\0') != std::string_view::npos;
    return read != 0;
}

std::string_view LineReader::take(std::size_t size) {
    const std::string_view line = m_rest.substr(0, size);
    m_rest.remove_prefix(size);
    return m_mayHoldNul ? line.substr(0, line.find('\0')) : line;
}

} // namespace text
