#ifndef ORBEL_TOOLS_TYPES_SCHEMAFORMATS_H
#define ORBEL_TOOLS_TYPES_SCHEMAFORMATS_H

#include "Schema.h"

#include <iosfwd>

/// A reference page: a list of types, and a table of fields for each.
void writeMarkdown(const Schema& schema, std::ostream& os);

/// {"types": [{"name", "description", "fields": [{"name", "type", "count", "default", "description"}]}]}
void writeJson(const Schema& schema, std::ostream& os);

/// A graph for Graphviz: types are boxes with their fields, and arrows lead to the types of fields.
void writeDot(const Schema& schema, std::ostream& os);

#endif
