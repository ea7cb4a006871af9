#include "ShellVerb.h"

#include "Shell.h"
#include "Terminal.h"
#include "VerbRun.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct ShellOptions {
    std::vector<std::string> types;
    std::string file;
};

void runStart(Shell& shell, const std::string& file) {
    if (file.empty())
        return;
    std::istringstream lines(readWhole(file));
    shell.runLines(lines, file);
}

Outcome talkWithUser(LiveTree& tree, const ShellOptions& options) {
    const bool hasColours = terminal::hasColours(stderr);
    Shell shell(tree, std::cout, [hasColours](const std::string& complaint) {
        std::cerr << (hasColours ? "\033[31m" : "") << complaint << (hasColours ? "\033[0m" : "") << '\n';
    });
    runStart(shell, options.file);
    const auto editor =
        terminal::makeLineEditor([&](std::string_view line) { return completeLine(tree.root(), line); });
    std::cout << "A live tree: help lists the verbs, Tab completes, quit ends.\n";
    while (!shell.hasQuit()) {
        std::cout.flush();
        const auto line = editor->read("orbel> ");
        if (!line) {
            std::cout << '\n';
            break;
        }
        shell.run(*line);
    }
    return Outcome::clean;
}

Outcome readLines(LiveTree& tree, const ShellOptions& options) {
    bool isClean = true;
    Shell shell(tree, std::cout, [&](const std::string& complaint) {
        // In the order in which somebody who sends both to one place expects them.
        std::cout.flush();
        std::cerr << "orbel shell: " << complaint << '\n';
        isClean = false;
    });
    runStart(shell, options.file);
    shell.runLines(std::cin, "-");
    return isClean ? Outcome::clean : Outcome::findings;
}

} // namespace

void addShellVerb(CLI::App& app, Outcome& outcome) {
    auto options = std::make_shared<ShellOptions>();
    CLI::App* verb = app.add_subcommand("shell", "A live tree in a terminal: commands, dumps, watches");
    verb->add_option("--types", options->types, "Types from a folder or file, instead of where the environment says")
        ->type_name("DIR")
        ->allow_extra_args(false);
    verb->add_option("FILE", options->file, "Lines to run first")->type_name(" ");
    verb->footer("Examples:\n"
                 "  orbel shell                          begin with an empty tree; help lists what can be typed\n"
                 "  orbel shell --types shows board.txt  with the types of a folder and the commands of a file\n"
                 "  echo 'dump' | orbel shell board.txt  read what is piped in, without prompt and colours\n"
                 "\n"
                 "Exit code: 0; 1 when a line that was piped in had no effect; 2 when a file cannot be read.");
    verb->callback([options, &outcome] {
        runVerb("shell", outcome, [&] {
            LiveTree tree(options->types);
            return terminal::isInteractive() ? talkWithUser(tree, *options) : readLines(tree, *options);
        });
    });
}
