#ifndef ORBEL_TREE_FIELDPATH_H
#define ORBEL_TREE_FIELDPATH_H

#include <optional>
#include <string_view>

/// One segment of a field path: [kind ":"] name ["[" index text]. The index text keeps its "]" and what follows.
struct PathSegment {
    std::optional<std::string_view> kind;
    std::string_view name;
    std::optional<std::string_view> indexText;

    bool isWildcard() const { return name.substr(0, 1) == "*"; }
    bool isParent() const { return name.substr(0, 2) == ".."; }
};

/// Reads a segment that holds no "/". Contract: only the first ":" and the first "[" behind it count.
PathSegment readSegment(std::string_view segment);

/// Cuts the first segment off a path: `path` is then what is behind the "/", null when there is none.
PathSegment cutSegment(const char*& path);

/// The key in an index text: what precedes "]", trimmed.
std::string_view keyOf(std::string_view indexText);

/// The two halves of "table:type"; no value without a ":".
struct TableName {
    std::string_view table;
    std::string_view entryType;
};
std::optional<TableName> readTableName(std::string_view name);

#endif
