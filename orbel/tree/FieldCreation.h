#ifndef ORBEL_TREE_FIELDCREATION_H
#define ORBEL_TREE_FIELDCREATION_H

#include <memory>
#include <string_view>

class DataField;

/// The kind of a path segment that stands for a hash table.
constexpr std::string_view hashTableKind = "DataHashTable";

/// A new hash table, object or array for a kind and a name as a path gives them; null for an unknown kind. Loads the
/// types of the process when the kind may be one of them and none have been loaded yet.
std::unique_ptr<DataField> createField(std::string_view kind, std::string_view name);

#endif
