#include "CommandLine.h"

#include "check/CheckVerb.h"
#include "diff/DiffVerb.h"
#include "shell/RunVerb.h"
#include "shell/ShellVerb.h"
#include "types/TypesVerb.h"

#include <orbel/handlers/IDataHandlerImpl.h>

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

namespace {

std::string versionText() {
    return "orbel " + libraryVersion();
}

/// CLI11 tells mistakes with codes of its own and in several lines.
int reportUsage(const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_exit_code() == 0)
        return app.exit(error);
    std::cerr << "orbel: " << error.what() << " (orbel --help)\n";
    return static_cast<int>(Outcome::trouble);
}

} // namespace

std::string libraryVersion() {
    char version[32];
    OrbelGetVersion(version);
    std::string text = version;
    // The library's text ends in a blank.
    text.pop_back();
    return text;
}

int runCommandLine(int argc, const char* const* argv) {
    CLI::App app("Checks, shows and tries what OrbelLib reads.", "orbel");
    Outcome outcome = Outcome::clean;
    app.set_version_flag("--version", versionText);
    app.require_subcommand(1);
    // A "/" begins a path, on Windows as well.
    app.allow_windows_style_options(false);
    addCheckVerb(app, outcome);
    addDiffVerb(app, outcome);
    addRunVerb(app, outcome);
    addShellVerb(app, outcome);
    addTypesVerb(app, outcome);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return reportUsage(app, error);
    } catch (const std::exception& error) {
        std::cerr << "orbel: " << error.what() << '\n';
        return static_cast<int>(Outcome::trouble);
    }
    return static_cast<int>(outcome);
}
