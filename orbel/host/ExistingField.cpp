#include "ExistingField.h"

#include <orbel/tree/DataNode.h>

#include "../foundation/text/Scanner.h"
#include "../tree/FieldPath.h"

#include <string>

namespace {

std::string withoutKind(std::string_view segment) {
    const PathSegment parts = readSegment(segment);
    if (!parts.kind)
        return std::string(segment);
    // The kind of a table names its entries behind the table's name.
    const auto table = *parts.kind == "DataHashTable" ? readTableName(parts.name) : std::nullopt;
    std::string plain(table ? table->table : parts.name);
    if (parts.indexText)
        plain.append("[").append(*parts.indexText);
    return plain;
}

} // namespace

DataField* existingField(DataNode& node, std::string_view path) {
    std::string plain;
    for (bool isFirst = true; isFirst || !path.empty(); isFirst = false)
        plain.append(isFirst ? "" : "/").append(withoutKind(text::cutAt(path, '/')));
    return node.getField(plain.data(), 0, 0);
}
