#ifndef ORBEL_TABLES_TABLETEXT_H
#define ORBEL_TABLES_TABLETEXT_H

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

/// What the text tables share: how their lines are taken apart. The line end counts as part of a line and of its last
/// token until it is stripped, and a byte-order mark as part of the first line, which then has no marker.
namespace tables {

/// The longest line of a table file, with its line end; a longer one is read in pieces.
constexpr int maxLineLength = 1'023;

/// How much longer than its marker a line must be that begins with one.
constexpr std::size_t shortestToken = 3;

/// The key of a conversion table that stands for all it lacks.
constexpr std::string_view defaultKey = "__DEFAULT__";

/// The most characters that separate the fields of a conversion table.
constexpr std::size_t maxDelimiters = 15;

/// Keys and names: without leading spaces and tabs, and without spaces, tabs and line ends at the end.
std::string_view normalizeKey(std::string_view text);

/// Values: without line ends at the end.
std::string_view normalizeValue(std::string_view text);

/// What stands behind a marker.
struct Marked {
    /// The token behind the marker; nothing when the line ends before it.
    std::optional<std::string_view> token;
};

/// Reads "__MARKER__,token": a line that begins with the marker, is at least three characters longer and holds a ",".
/// Nothing for any other line.
std::optional<Marked> readMarked(std::string_view line, std::string_view marker);

/// Reads "__MARKER__,name", and the same without a name however short the line is; the name is normalised, and empty
/// when there is none. Nothing for any other line.
std::optional<std::string_view> readName(std::string_view line, std::string_view marker);

/// The most fields that a line has; what is behind them is left out.
constexpr std::size_t maxFields = 64;

/// Calls with each field of a line: adjacent separators have an empty field between them, and the text behind the last
/// one is a field of its own.
template <class Call>
void forEachField(std::string_view line, char separator, Call call) {
    for (std::size_t field = 0; field < maxFields; ++field) {
        const std::size_t at = line.find(separator);
        call(line.substr(0, at));
        if (at == std::string_view::npos)
            return;
        line.remove_prefix(at + 1);
    }
}

std::vector<std::string_view> splitFields(std::string_view line, char separator);

} // namespace tables

#endif
