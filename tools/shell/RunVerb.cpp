#include "RunVerb.h"

#include "Shell.h"
#include "TreePaths.h"
#include "VerbRun.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tree/CommandText.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataValue.h>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

struct RunOptions {
    std::vector<std::string> files;
    std::vector<std::string> types;
    std::optional<std::string> dump;
    bool json = false;
};

std::vector<std::string> splitPaths(std::string_view list) {
    std::vector<std::string> paths;
    for (; !list.empty();)
        if (const std::string_view path = text::trim(text::cutAt(list, ';')); !path.empty())
            paths.emplace_back(path);
    if (paths.empty())
        paths.emplace_back();
    return paths;
}

Json jsonOf(DataField& field) {
    if (field.getSize() == 1)
        return *field.getData(0);
    Json values = Json::array();
    for (int index = 0; index < field.getSize(); ++index)
        values.push_back(*field.getData(index));
    return values;
}

/// The items that a path with a range or keys selects.
std::vector<DataField*> itemsAt(LiveTree& tree, const std::string& path) {
    if (path.empty())
        return {&tree.root()};
    const AddressedRange address(path);
    std::vector<DataField*> items = paths::fieldsAt(tree.root(), std::string(address.path));
    if (items.size() != 1 || !address.range || !paths::isNode(*items.front()))
        return items;
    items = address.fieldsOf(static_cast<DataNode&>(*items.front()));
    std::erase(items, nullptr);
    return items;
}

class TreeDump {
public:
    TreeDump(LiveTree& tree, bool json) : m_tree(tree), m_json(json) {}

    /// False when there is nothing at the path.
    bool add(const std::string& path) {
        if (!m_json)
            return addText(path);
        const std::vector<DataField*> items = itemsAt(m_tree, path);
        for (DataField* item : items)
            for (DataField* value : paths::valuesBelow(*item))
                m_values[paths::pathOf(*value)] = jsonOf(*value);
        return !items.empty();
    }

    void print() const {
        if (m_json)
            std::cout << m_values.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
        else
            std::cout << m_text;
    }

private:
    bool addText(const std::string& path) {
        const std::string text = m_tree.dump(path);
        m_text += text;
        return !text.empty();
    }

    LiveTree& m_tree;
    bool m_json;
    std::string m_text;
    Json m_values = Json::object();
};

Outcome runFiles(const RunOptions& options) {
    LiveTree tree(options.types);
    bool isClean = true;
    const auto complain = [&](const std::string& complaint) {
        std::cout.flush();
        std::cerr << complaint << '\n';
        isClean = false;
    };
    Shell shell(tree, std::cout, complain);
    for (const std::string& file : options.files) {
        std::istringstream lines(readWhole(file));
        shell.runLines(lines, file);
    }
    if (options.dump || options.json) {
        TreeDump dump(tree, options.json);
        for (const std::string& path : splitPaths(options.dump.value_or("")))
            if (!dump.add(path))
                complain("--dump: " + effects::nothingAt(tree.root(), path));
        dump.print();
    }
    return isClean ? Outcome::clean : Outcome::findings;
}

} // namespace

void addRunVerb(CLI::App& app, Outcome& outcome) {
    auto options = std::make_shared<RunOptions>();
    CLI::App* verb = app.add_subcommand("run", "Runs files of commands on a new tree, and prints what has come of it");
    verb->add_option("FILE", options->files, "Files of commands, one or several in a line; - is standard input")
        ->type_name(" ")
        ->required();
    verb->add_option("--types", options->types, "Types from a folder or file, instead of where the environment says")
        ->type_name("DIR")
        ->allow_extra_args(false);
    verb->add_option("--dump", options->dump, "What to print at the end: paths separated by ;, all for an empty text")
        ->type_name("PATHS");
    verb->add_flag("--json", options->json, "Print path and value, or list of values, of each field as JSON");
    verb->footer("Examples:\n"
                 "  orbel run board.txt --types shows --dump \"\"    the whole tree after the commands of a file\n"
                 "  orbel run board.txt --dump 'scene;points[0-1]'  two items of it\n"
                 "  orbel run - --json < board.txt                 for other programs to read\n"
                 "\n"
                 "A command without effect is told on standard error, as FILE:LINE: and why.\n"
                 "Exit code: 0; 1 when a command had no effect; 2 when a file cannot be read.");
    verb->callback([options, &outcome] { runVerb("run", outcome, [&] { return runFiles(*options); }); });
}
