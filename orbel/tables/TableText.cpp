#include "TableText.h"

#include "../foundation/text/Scanner.h"

namespace tables {

namespace {

constexpr text::CharacterSet keyStart(" \t");
constexpr text::CharacterSet keyEnd(" \t\n\r");
constexpr text::CharacterSet lineEnd("\n\r");

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
    return keyStart.skip(keyEnd.dropEnd(text));
}

std::string_view normalizeValue(std::string_view text) {
    return lineEnd.dropEnd(text);
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
    forEachField(line, separator, [&](std::string_view field) { fields.push_back(field); });
    return fields;
}

} // namespace tables
