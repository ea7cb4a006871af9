#include "TableFile.h"

#include "TableText.h"

#include <iostream>

namespace tables {

TableFile::TableFile(const std::string& path, std::size_t shortestLine)
    : m_lines(files::openText(path.c_str()), maxLineLength), m_shortestLine(shortestLine) {}

std::optional<std::string_view> TableFile::next() {
    while (!m_isAbandoned) {
        const auto line = m_lines.next();
        if (!line)
            break;
        // The first line is the first that is not left out.
        if (const auto version = m_isFirst ? readMarked(*line, "__VERSION__") : std::nullopt) {
            m_isFirst = false;
            m_isAbandoned = !version->token;
            if (version->token)
                std::cout << "    File format version : " << normalizeKey(*version->token) << std::endl;
            continue;
        }
        if (line->substr(0, 1) == "," || line->size() < m_shortestLine)
            continue;
        m_isFirst = false;
        return line;
    }
    return std::nullopt;
}

} // namespace tables
