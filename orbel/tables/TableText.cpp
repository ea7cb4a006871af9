#include "TableText.h"

#include "../foundation/text/Scanner.h"

namespace tables {

namespace {

constexpr std::size_t maxFields = 64;
constexpr std::size_t shortestToken = 3;

std::string_view withoutEnd(std::string_view text, std::string_view unwanted) {
    return text.substr(0, text.find_last_not_of(unwanted) + 1);
}

bool isMarked(std::string_view line, std::string_view marker) {
    return line.substr(0, marker.size()) == marker && line.find(',') != std::string_view::npos;
}

/// Contract: the marker is the first token, however it goes on in front of the first ",".
std::optional<std::string_view> tokenBehindMarker(std::string_view line) {
    text::cutToken(line, ",");
    return text::cutToken(line, ",");
}

} // namespace

std::string_view normalizeKey(std::string_view text) {
    text = withoutEnd(text, " \t\n\r");
    const std::size_t start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

std::string_view normalizeValue(std::string_view text) {
    return withoutEnd(text, "\n\r");
}

std::optional<Marked> readMarked(std::string_view line, std::string_view marker) {
    if (!isMarked(line, marker) || line.size() < marker.size() + shortestToken)
        return std::nullopt;
    return Marked{tokenBehindMarker(line)};
}

std::optional<std::string_view> readName(std::string_view line, std::string_view marker) {
    if (!isMarked(line, marker))
        return std::nullopt;
    const std::string_view name = normalizeKey(tokenBehindMarker(line).value_or(""));
    // Contract: a name of one character needs its line end to be long enough.
    if (!name.empty() && line.size() < marker.size() + shortestToken)
        return std::nullopt;
    return name;
}

std::vector<std::string_view> splitFields(std::string_view line, char separator) {
    std::vector<std::string_view> fields;
    while (fields.size() < maxFields) {
        const std::size_t at = line.find(separator);
        fields.push_back(line.substr(0, at));
        if (at == std::string_view::npos)
            break;
        line.remove_prefix(at + 1);
    }
    return fields;
}

} // namespace tables
