#ifndef ORBEL_FOUNDATION_TEXT_LINEREADER_H
#define ORBEL_FOUNDATION_TEXT_LINEREADER_H

#include "../platform/Files.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace text {

/// Reads a text file line by line, each with its line end. A line of more than `limit` characters comes in pieces of
/// that many. A NUL hides the rest of its line or piece.
class LineReader {
public:
    LineReader(files::File file, std::size_t limit);

    /// False when there was no file to open.
    bool isOpen() const { return m_file != nullptr; }

    /// The next line or piece, valid until the next call; nothing at the end of the file or when reading fails.
    std::optional<std::string_view> next();

private:
    bool readOn();
    std::string_view take(std::size_t size);

    files::File m_file;
    std::size_t m_limit;
    std::string m_buffer;
    /// What of the buffer has been read and not been handed out.
    std::string_view m_rest;
    bool m_mayHoldNul = false;
};

} // namespace text

#endif
