#include "CheckVerb.h"

#include "../shell/Terminal.h"
#include "CheckRun.h"
#include "FindingWriters.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr const char* checkExamples = R"(Examples:
  orbel check shows                     all that the library reads from this folder
  orbel check QX_PreSets.csv            one file
  orbel check base.qx show.qx           type files, read in this order
  orbel check shows --format sarif      for tools that show findings beside the lines
  orbel check --rules                   all rules

Exit code: 0 without findings, 1 with findings, 2 when something cannot be read.)";

struct CheckOptions {
    std::vector<std::string> paths;
    std::string format = "text";
    bool wantsRules = false;
};

Outcome runCheck(const CheckOptions& options) {
    if (options.wantsRules) {
        writeRules(std::cout);
        return Outcome::clean;
    }
    if (options.paths.empty())
        throw Trouble("name a folder or files to check (orbel check --help)");
    const Findings findings = check(options.paths);
    if (options.format == "json")
        writeJson(std::cout, findings);
    else if (options.format == "sarif")
        writeSarif(std::cout, findings, libraryVersion());
    else
        writeText(std::cout, findings, terminal::hasColours(stdout) ? Colours::on : Colours::off);
    return findings.sorted().empty() ? Outcome::clean : Outcome::findings;
}

} // namespace

void addCheckVerb(CLI::App& app, Outcome& outcome) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* verb = app.add_subcommand("check", "Reports what has no effect in configuration files, or another effect "
                                                 "than it seems to have.");
    verb->add_option("PATH", options->paths,
                     "A folder, or files: *.ini, *.txt, *.qx, QX_ConvTables*.csv, "
                     "QX_PreSets*.csv");
    verb->add_option("--format", options->format, "text, json or sarif")
        ->check(CLI::IsMember({"text", "json", "sarif"}))
        ->capture_default_str();
    verb->add_flag("--rules", options->wantsRules, "List all rules");
    verb->footer(checkExamples);
    verb->callback([options, &outcome] { outcome = runCheck(*options); });
}
