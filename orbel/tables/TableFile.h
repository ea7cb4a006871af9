#ifndef ORBEL_TABLES_TABLEFILE_H
#define ORBEL_TABLES_TABLEFILE_H

#include "../foundation/text/LineReader.h"
#include "TableListener.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tables {

/// The lines of a table file that mean something to its reader. Tells its listener of the others: the version that the
/// first line may tell, and lines that begin with ",".
class TableFile {
public:
    /// Lines of fewer than `shortestLine` characters, the line end counted, are left out too.
    TableFile(const std::string& path, std::size_t shortestLine, TableListener& listener);

    bool isOpen() const { return m_lines.isOpen(); }

    /// The next line, valid until the next call; nothing at the end, and behind a version line without a version.
    std::optional<std::string_view> next();

private:
    bool isForReader(std::string_view line);

    text::LineReader m_lines;
    TableListener* m_listener;
    std::size_t m_shortestLine;
    bool m_isFirst = true;
    bool m_isAbandoned = false;
};

} // namespace tables

#endif
