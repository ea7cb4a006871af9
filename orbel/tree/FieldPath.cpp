#include "FieldPath.h"

#include "../foundation/text/Scanner.h"

PathSegment readSegment(std::string_view segment) {
    PathSegment result;
    if (const std::size_t colon = segment.find(':'); colon != std::string_view::npos) {
        result.kind = segment.substr(0, colon);
        segment.remove_prefix(colon + 1);
    }
    const std::size_t bracket = segment.find('[');
    result.name = segment.substr(0, bracket);
    if (bracket != std::string_view::npos)
        result.indexText = segment.substr(bracket + 1);
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
