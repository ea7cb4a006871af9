#include "Schema.h"

#include "../CommandLine.h"
#include "../SourceText.h"
#include "Descriptions.h"

#include <orbel/foundation/platform/Files.h>
#include <orbel/foundation/text/Scanner.h>
#include <orbel/types/DataObjectField.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>
#include <orbel/types/TypeParseListener.h>
#include <orbel/types/TypeParser.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace {

/// What a file declares, as the parser tells it.
class Collector : public TypeParseListener {
public:
    Collector(Schema& schema, const SourceText& text, const std::string& path, const SchemaComplain& complain)
        : m_schema(schema), m_text(text), m_path(path), m_complain(complain), m_descriptions(text) {}

    void onTypeCreated(std::string_view /*name*/) override {}
    void onTypeExtended(std::string_view /*name*/) override {}

    void onFieldAdded(std::string_view statement, DataObjectField& field) override {
        m_fields.push_back({field.getType(), field.getName(), field.getSize(), field.getDefaultValue(), {}});
        m_places.push_back(m_descriptions.addField(statement));
    }

    void onTypeRead(std::string_view statement, DataObjectType& type) override {
        Schema::Type& entry = entryOf(type.getName());
        const std::size_t typePlace = m_descriptions.addType(statement);
        m_targets.push_back({entry.name, typePlace, entry.fields.size(), std::exchange(m_places, {})});
        entry.fields.insert(entry.fields.end(), m_fields.begin(), m_fields.end());
        m_fields.clear();
    }

    void onFieldIgnored(std::string_view statement) override {
        const std::string_view written = text::trim(statement);
        m_complain(m_path + ':' + std::to_string(m_text.positionOf(written).line) +
                   ": field left out: " + std::string(written));
    }

    /// Once the whole file is read, for what a comment stands above comes behind it.
    void describe() {
        for (const Target& target : m_targets) {
            Schema::Type& entry = entryOf(target.type);
            joinDescription(entry.description, m_descriptions.textOf(target.place));
            for (std::size_t at = 0; at < target.fieldPlaces.size(); ++at)
                entry.fields[target.firstField + at].description = m_descriptions.textOf(target.fieldPlaces[at]);
        }
    }

private:
    /// Where the statements of a type stand among those that comments may be about.
    struct Target {
        std::string type;
        std::size_t place;
        std::size_t firstField;
        std::vector<std::size_t> fieldPlaces;
    };

    Schema::Type& entryOf(const std::string& name) {
        for (Schema::Type& type : m_schema.types)
            if (type.name == name)
                return type;
        m_schema.types.push_back({name, {}, {}});
        return m_schema.types.back();
    }

    Schema& m_schema;
    const SourceText& m_text;
    const std::string& m_path;
    const SchemaComplain& m_complain;
    Descriptions m_descriptions;
    std::vector<Schema::Field> m_fields;
    std::vector<std::size_t> m_places;
    std::vector<Target> m_targets;
};

void readFile(Schema& schema, const std::string& path, DataObjectTypesTable& table, const SchemaComplain& complain) {
    TypeFile file = readTypeFile(path.c_str());
    if (file.result != TypeFileResult::text)
        throw Trouble("cannot read " + path);
    const SourceText text(std::move(file.text));
    Collector collector(schema, text, path, complain);
    TypeParser(collector).parseTypes(text.kept(), table);
    collector.describe();
}

void collectUsed(const Schema& schema, const std::string& name, std::set<std::string>& used) {
    const Schema::Type* type = schema.find(name);
    if (!type || !used.insert(name).second)
        return;
    for (const Schema::Field& field : type->fields)
        collectUsed(schema, field.type, used);
}

} // namespace

std::string Schema::Field::label() const {
    return count < 2 ? name : name + '[' + std::to_string(count) + ']';
}

const Schema::Type* Schema::find(std::string_view name) const {
    const auto found = std::find_if(types.begin(), types.end(), [name](const Type& type) { return type.name == name; });
    return found == types.end() ? nullptr : &*found;
}

Schema Schema::withThoseUsedBy(const std::string& name) const {
    std::set<std::string> used;
    collectUsed(*this, name, used);
    Schema part;
    for (const Type& type : types)
        if (used.contains(type.name))
            part.types.push_back(type);
    return part;
}

std::vector<std::string> Schema::typeNames() const {
    std::vector<std::string> names;
    names.reserve(types.size());
    for (const Type& type : types)
        names.push_back(type.name);
    return names;
}

Schema readSchema(const std::vector<std::string>& sources, DataObjectTypesTable& table,
                  const SchemaComplain& complain) {
    Schema schema;
    for (const std::string& source : sources) {
        std::error_code unreadable;
        if (!std::filesystem::is_directory(source, unreadable)) {
            readFile(schema, source, table, complain);
            continue;
        }
        for (const std::string& name : files::listFolder(source, "", ".qx"))
            readFile(schema, files::joinPath(source, name), table, complain);
    }
    table.sortTypes();
    std::stable_sort(schema.types.begin(), schema.types.end(),
                     [](const Schema::Type& left, const Schema::Type& right) { return left.name < right.name; });
    return schema;
}
