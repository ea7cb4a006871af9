#include "DiffVerb.h"

#include "../WholeFile.h"
#include "../shell/Terminal.h"
#include "../shell/VerbRun.h"
#include "ConfigurationReader.h"
#include "DumpReader.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

struct DiffOptions {
    std::string before;
    std::string after;
    bool json = false;
};

struct Difference {
    char kind;
    std::string path;
    std::string before;
    std::string after;
};

Facts readFacts(const std::string& path) {
    if (isFolder(path))
        return readConfiguration(path);
    try {
        return readDump(readWhole(path));
    } catch (const Trouble& trouble) {
        const std::string message = trouble.what();
        throw Trouble(message.find(path) == std::string::npos ? path + ": " + message : message);
    }
}

std::vector<Difference> compareFacts(const Facts& before, const Facts& after) {
    std::vector<Difference> differences;
    auto left = before.begin();
    auto right = after.begin();
    const PathOrder isBefore;
    while (left != before.end() || right != after.end()) {
        if (right == after.end() || (left != before.end() && isBefore(left->first, right->first))) {
            differences.push_back({'-', left->first, left->second, {}});
            ++left;
        } else if (left == before.end() || isBefore(right->first, left->first)) {
            differences.push_back({'+', right->first, {}, right->second});
            ++right;
        } else {
            if (left->second != right->second)
                differences.push_back({'~', left->first, left->second, right->second});
            ++left;
            ++right;
        }
    }
    return differences;
}

/// One line whatever a text holds.
std::string inOneLine(const std::string& text) {
    std::string line;
    for (const char character : text)
        if (character == '\n')
            line += "\\n";
        else if (character == '\r')
            line += "\\r";
        else
            line += character;
    return line;
}

std::string lineOf(const Difference& difference) {
    const std::string start = difference.kind + (' ' + difference.path);
    if (difference.kind == '~')
        return start + ": " + inOneLine(difference.before) + " -> " + inOneLine(difference.after);
    const std::string& text = difference.kind == '-' ? difference.before : difference.after;
    return start + " =" + (text.empty() ? "" : ' ' + inOneLine(text));
}

const char* colourOf(char kind) {
    if (kind == '-')
        return "\033[31m";
    return kind == '+' ? "\033[32m" : "\033[33m";
}

void printLines(const std::vector<Difference>& differences) {
    const bool hasColours = terminal::hasColours(stdout);
    for (const Difference& difference : differences) {
        if (hasColours)
            std::cout << colourOf(difference.kind) << lineOf(difference) << "\033[0m\n";
        else
            std::cout << lineOf(difference) << '\n';
    }
}

void printJson(const std::vector<Difference>& differences) {
    Json removed = Json::object();
    Json added = Json::object();
    Json changed = Json::object();
    for (const Difference& difference : differences) {
        if (difference.kind == '-')
            removed[difference.path] = difference.before;
        else if (difference.kind == '+')
            added[difference.path] = difference.after;
        else
            changed[difference.path] = {{"before", difference.before}, {"after", difference.after}};
    }
    const Json all = {{"removed", removed}, {"added", added}, {"changed", changed}};
    std::cout << all.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

Outcome diffFacts(const DiffOptions& options) {
    if (isFolder(options.before) != isFolder(options.after))
        throw Trouble("a folder and a file are not compared: " + options.before + ", " + options.after);
    Facts before = readFacts(options.before);
    Facts after = readFacts(options.after);
    joinWhereTheOtherHasJoined(before, after);
    joinWhereTheOtherHasJoined(after, before);
    const std::vector<Difference> differences = compareFacts(before, after);
    if (options.json)
        printJson(differences);
    else
        printLines(differences);
    return differences.empty() ? Outcome::clean : Outcome::findings;
}

} // namespace

void addDiffVerb(CLI::App& app, Outcome& outcome) {
    auto options = std::make_shared<DiffOptions>();
    CLI::App* verb = app.add_subcommand("diff", "Compares two dumps, or two folders of an operator, by their meaning");
    verb->add_option("A", options->before, "A file with a dump, as text or JSON, or a folder")
        ->type_name(" ")
        ->required();
    verb->add_option("B", options->after, "What it is compared with")->type_name(" ")->required();
    verb->add_flag("--json", options->json, "Print objects of the paths that are removed, added and changed");
    verb->footer("Examples:\n"
                 "  orbel run old.txt --dump \"\" > old.dump\n"
                 "  orbel diff old.dump new.dump     trees, path by path\n"
                 "  orbel diff shows/2024 shows      settings, tables, presets, letters and types of two folders\n"
                 "\n"
                 "\"- path = text\" is only in A, \"+ path = text\" only in B, \"~ path: old -> new\" in both.\n"
                 "A dump does not quote its texts. Several texts with commas of their own are compared as one,\n"
                 "\"tags[0-2]\". A text that holds \";\" and a line end, and then what looks like a part of a dump,\n"
                 "is taken for that, and so are texts that end in \"{\" and tables with commas in their keys;\n"
                 "JSON of orbel run --json tells all of them.\n"
                 "Exit code: 0 when both are the same; 1 when not; 2 when one cannot be read.");
    verb->callback([options, &outcome] { runVerb("diff", outcome, [&] { return diffFacts(*options); }); });
}
