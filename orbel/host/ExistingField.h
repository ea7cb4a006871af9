#ifndef ORBEL_HOST_EXISTINGFIELD_H
#define ORBEL_HOST_EXISTINGFIELD_H

#include <string_view>

class DataField;
class DataNode;

/// The field at a path; null when there is none. Creates nothing: kinds in the path are passed over.
DataField* existingField(DataNode& node, std::string_view path);

#endif
