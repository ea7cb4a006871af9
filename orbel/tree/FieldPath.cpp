#include "FieldPath.h"

#include "../foundation/text/Scanner.h"

namespace {

std::string_view between(const char* from, const char* to) {
    return {from, static_cast<std::size_t>(to - from)};
}

/// Goes to the end of the segment, in one pass.
template <class IsEnd>
PathSegment scanSegment(const char*& at, const char* limit, IsEnd isEnd) {
    const char* name = at;
    const char* kind = nullptr;
    const char* bracket = nullptr;
    for (; at != limit; ++at) {
        // All that means something comes before the letters of most names.
        if (*at > '[')
            continue;
        if (isEnd(at))
            break;
        if (*at == ':' && !kind) {
            kind = name;
            name = at + 1;
            bracket = nullptr;
        } else if (*at == '[' && !bracket) {
            bracket = at;
        }
    }
    PathSegment result;
    if (kind)
        result.kind = between(kind, name - 1);
    result.name = between(name, bracket ? bracket : at);
    if (bracket)
        result.indexText = between(bracket + 1, at);
    return result;
}

} // namespace

PathSegment readSegment(std::string_view segment) {
    const char* at = segment.data();
    return scanSegment(at, at + segment.size(), [](const char*) { return false; });
}

PathSegment cutSegment(const char*& path) {
    const char* at = path;
    const PathSegment result = scanSegment(at, nullptr, [](const char* here) { return *here == '/' || *here == '\0'; });
    path = *at == '/' ? at + 1 : nullptr;
    return result;
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
