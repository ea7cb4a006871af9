#include "TableFile.h"

#include "TableText.h"

namespace tables {

TableFile::TableFile(const std::string& path, std::size_t shortestLine, TableListener& listener)
    : m_lines(files::openText(path.c_str()), maxLineLength), m_listener(&listener), m_shortestLine(shortestLine) {
    if (isOpen())
        m_listener->onFile(path);
}

std::optional<std::string_view> TableFile::next() {
    while (!m_isAbandoned) {
        const auto line = m_lines.next();
        if (!line || isForReader(*line))
            return line;
    }
    return std::nullopt;
}

bool TableFile::isForReader(std::string_view line) {
    // The first line is the first that is not left out.
    if (const auto version = m_isFirst ? readMarked(line, "__VERSION__") : std::nullopt) {
        m_isFirst = false;
        m_isAbandoned = !version->token;
        if (version->token)
            m_listener->onLine(line, LineUse::version, normalizeKey(*version->token));
        else
            m_listener->onLine(line, LineUse::abandoned, {});
        return false;
    }
    if (line.substr(0, 1) == "," || line.size() < m_shortestLine) {
        m_listener->onLine(line, line.substr(0, 1) == "," ? LineUse::skipped : LineUse::tooShort, {});
        return false;
    }
    m_isFirst = false;
    return true;
}

} // namespace tables
