#ifndef ORBEL_TOOLS_SHELL_TREEPATHS_H
#define ORBEL_TOOLS_SHELL_TREEPATHS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class DataField;
class DataHashTable;
class DataNode;

/// Ways through a tree that the library keeps to itself.
namespace paths {

bool isNode(DataField& field);
/// The field as an array or table; null when it is neither.
DataHashTable* asTable(DataField& field);

/// The path from the root, with the keys of hash tables; empty for the root itself. As long as the tree is deep.
std::string pathOf(DataField& field);

/// The fields at a path, where "*" stands for every child. A kind in the path creates.
std::vector<DataField*> fieldsAt(DataNode& from, const std::string& path);

/// The values at and below a field, in the order of a dump.
std::vector<DataField*> valuesBelow(DataField& field);

/// The names of the children, or the keys of a table.
std::vector<std::string> childNames(DataNode& node);

/// The node in which the next segment of a path is looked up: the element or entry for an array or table. Null when
/// the segment leads to none.
DataNode* stepInto(DataNode& node, std::string_view segment);

/// A path that is there and may have been meant by one that is not.
std::optional<std::string> nearestPath(DataNode& from, std::string_view path);

std::vector<std::string> typeNames();

} // namespace paths

#endif
