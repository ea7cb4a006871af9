#include "CommandText.h"

#include <orbel/tree/DataNode.h>

#include <algorithm>
#include <limits>

namespace {

/// What follows the last "[" of a path that ends with "]".
std::optional<std::string_view> rangeOf(std::string_view path) {
    if (!path.ends_with(']'))
        return std::nullopt;
    const std::size_t bracket = path.rfind('[');
    if (bracket == std::string_view::npos)
        return std::nullopt;
    return path.substr(bracket + 1);
}

} // namespace

bool SetCommand::cut(char* command) {
    const std::string_view whole(command);
    const std::size_t equals = whole.find('=');
    if (equals == std::string_view::npos)
        return false;
    const std::string_view pathText = text::trim(whole.substr(0, equals));
    path = command + (pathText.empty() ? equals : static_cast<std::size_t>(pathText.data() - command));
    path[pathText.size()] = '\0';
    std::string_view valueText = whole.substr(equals + 1);
    text::skipBlanks(valueText);
    value = command + (whole.size() - valueText.size());
    if (const auto range = rangeOf(pathText)) {
        // A copy, for the field's own parse may cut what it is given, and the path is needed whole.
        m_index = *range;
        indexText = m_index.data();
    }
    return true;
}

void AddressedRange::cutRange() {
    range = rangeOf(path);
    if (range)
        path.remove_suffix(range->size() + 1);
}

std::pair<int, int> AddressedRange::valuesOf(DataField& field) const {
    if (!range)
        return {0, field.getSize()};
    std::string_view text = *range;
    const text::IndexRange bounds = text::readIndexRange(text);
    const int start = std::max(bounds.start, 0);
    const long long count = std::max(bounds.end, start) - 0LL - start + 1;
    return {start, static_cast<int>(std::min<long long>(count, std::numeric_limits<int>::max()))};
}

std::vector<DataField*> AddressedRange::fieldsOf(DataNode& node) const {
    std::vector<DataField*> fields;
    if (range)
        node.getFieldsByRange(std::string(*range).data(), &fields);
    else
        fields.push_back(&node);
    return fields;
}
