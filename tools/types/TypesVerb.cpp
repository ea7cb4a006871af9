#include "TypesVerb.h"

#include "../Nearest.h"
#include "../shell/VerbRun.h"
#include "Schema.h"
#include "SchemaFormats.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>
#include <orbel/types/TypeLoading.h>

#include <CLI/CLI.hpp>

#include <iomanip>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

struct TypesOptions {
    std::vector<std::string> sources;
    std::string format = "text";
    std::string type;
};

/// Where a host looks when nothing is configured.
std::vector<std::string> defaultSources() {
    const TypeSource source = chooseTypeSource();
    if (source == TypeSource::file || source == TypeSource::folder)
        return {typeSourceText(source)};
    return {"."};
}

/// Contract: the library leaves a tab as the fill character of the stream.
void writeText(DataObjectTypesTable& table, const std::string& name) {
    if (name.empty()) {
        table.dumpSpec(std::cout);
    } else {
        std::cout << "Type " << name << " {\n";
        table.getTypeByName(name.c_str())->dumpSpec(std::cout, &table, 1);
        std::cout << "};\n";
    }
    std::cout << std::setfill(' ');
}

Outcome showTypes(const TypesOptions& options) {
    DataObjectTypesTable table;
    bool isClean = true;
    Schema schema = readSchema(options.sources.empty() ? defaultSources() : options.sources, table,
                               [&](const std::string& complaint) {
                                   std::cerr << "orbel types: " << complaint << '\n';
                                   isClean = false;
                               });
    if (!options.type.empty()) {
        if (!schema.find(options.type))
            throw Trouble("no type " + options.type + suggestionFor(options.type, schema.typeNames()));
        schema = schema.withThoseUsedBy(options.type);
    }
    if (options.format == "markdown")
        writeMarkdown(schema, std::cout);
    else if (options.format == "json")
        writeJson(schema, std::cout);
    else if (options.format == "dot")
        writeDot(schema, std::cout);
    else
        writeText(table, options.type);
    return isClean ? Outcome::clean : Outcome::findings;
}

} // namespace

void addTypesVerb(CLI::App& app, Outcome& outcome) {
    auto options = std::make_shared<TypesOptions>();
    CLI::App* verb = app.add_subcommand("types", "The types of files *.qx as text, as a page, as JSON or as a graph");
    verb->add_option("SOURCE", options->sources,
                     "Folders or files; without one where the environment says, or the current folder")
        ->type_name(" ");
    verb->add_option("--format", options->format, "text (default), markdown, json or dot")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "markdown", "json", "dot"}).name(""));
    verb->add_option("--type", options->type, "Only this type, with the types of its fields")->type_name("NAME");
    verb->footer("Examples:\n"
                 "  orbel types shows                                 what can be made of the types of a folder\n"
                 "  orbel types shows --format markdown > TYPES.md    a page to read\n"
                 "  orbel types --type City --format dot | dot -Tsvg  a graph of one type and those inside it\n"
                 "\n"
                 "A comment //! above a type or field, or behind it, is its description on pages and in JSON.\n"
                 "Exit code: 0; 1 when a field is left out; 2 when a file cannot be read or there is no such type.");
    verb->callback([options, &outcome] { runVerb("types", outcome, [&] { return showTypes(*options); }); });
}
