#include "FieldPath.h"

#include "../foundation/text/Scanner.h"

#include <array>

namespace {

std::string_view between(const char* from, const char* to) {
    return {from, static_cast<std::size_t>(to - from)};
}

/// By character: whether it means something in a path.
constexpr auto hasMeaning = [] {
    std::array<bool, 256> table{};
    for (const char c : {'\0', '/', ':', '['})
        table[static_cast<unsigned char>(c)] = true;
    return table;
}();

/// Where a segment is to be cut: its ":" and the first "[" behind it, if there are any.
struct Cuts {
    const char* colon = nullptr;
    const char* bracket = nullptr;

    void note(const char* at) {
        if (*at == ':' && !colon) {
            colon = at;
            bracket = nullptr;
        } else if (*at == '[' && !bracket) {
            bracket = at;
        }
    }

    PathSegment segment(const char* start, const char* end) const {
        PathSegment result;
        const char* name = start;
        if (colon) {
            result.kind = between(start, colon);
            name = colon + 1;
        }
        result.name = between(name, bracket ? bracket : end);
        if (bracket)
            result.indexText = between(bracket + 1, end);
        return result;
    }
};

} // namespace

PathSegment readSegment(std::string_view segment) {
    Cuts cuts;
    for (const char& character : segment)
        cuts.note(&character);
    return cuts.segment(segment.data(), segment.data() + segment.size());
}

PathSegment cutSegment(const char*& path) {
    const char* start = path;
    const char* at = start;
    Cuts cuts;
    while (true) {
        while (!hasMeaning[static_cast<unsigned char>(*at)])
            ++at;
        if (*at == '/' || *at == '\0')
            break;
        cuts.note(at++);
    }
    path = *at == '/' ? at + 1 : nullptr;
    return cuts.segment(start, at);
}

std::string_view keyOf(std::string_view indexText) {
    return text::trim(indexText.substr(0, indexText.find(']')));
}

std::optional<TableName> readTableName(std::string_view name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    return TableName{name.substr(0, colon), name.substr(colon + 1)};
}
