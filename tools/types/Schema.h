#ifndef ORBEL_TOOLS_TYPES_SCHEMA_H
#define ORBEL_TOOLS_TYPES_SCHEMA_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class DataObjectTypesTable;

/// What type files declare, with what their authors say of it in comments "//!": above a type or field, or behind it.
/// Several of them join.
struct Schema {
    struct Field {
        std::string type;
        std::string name;
        int count = 1;
        std::string defaultText;
        std::string description;

        bool isText() const { return type == "string"; }
        /// "tags[4]"; "tags" for a single one.
        std::string label() const;
    };

    struct Type {
        std::string name;
        std::string description;
        /// In the order of declaration.
        std::vector<Field> fields;
    };

    std::vector<Type> types;

    const Type* find(std::string_view name) const;
    /// The type and those that its fields are of, at every depth; in the order of this schema.
    Schema withThoseUsedBy(const std::string& name) const;
    std::vector<std::string> typeNames() const;
};

/// Hears of fields that are left out: "shows/weather.qx:3: field left out: number n".
using SchemaComplain = std::function<void(const std::string& complaint)>;

/// Reads files, and the files *.qx of folders, in the order in which the library does; the types come sorted by name.
/// `table` is given the types as well. Throws `Trouble` when a file or folder cannot be read.
Schema readSchema(const std::vector<std::string>& sources, DataObjectTypesTable& table, const SchemaComplain& complain);

#endif
