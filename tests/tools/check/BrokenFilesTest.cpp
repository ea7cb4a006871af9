#include <tools/check/CheckRun.h>

#include <support/Console.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

// tests/data/broken has small files and folders with one mistake each. expected.txt beside them tells what is to be
// reported, a line each: the file, the line, the rule.

namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

fs::path brokenFolder() {
    return fs::path(ORBEL_TEST_DATA) / "broken";
}

Lines sorted(Lines lines) {
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// "unknown_key.ini 1 settings.unknown-key" for each finding, the file being relative to the folder.
Lines reported(const Findings& findings, const fs::path& folder) {
    Lines lines;
    for (const Finding& finding : findings.sorted())
        lines.push_back(fs::path(finding.file).lexically_relative(folder.lexically_normal()).generic_string() + ' ' +
                        std::to_string(finding.from.line) + ' ' + std::string(finding.rule->id));
    return sorted(lines);
}

Lines expected(const fs::path& folder, const std::string& name) {
    std::ifstream file(folder / "expected.txt");
    Lines lines;
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(name + ' ') || line.starts_with(name + '/'))
            lines.push_back(line);
    return sorted(lines);
}

/// The files and folders with mistakes, by the folder they are in.
std::map<fs::path, Lines> brokenFiles() {
    std::map<fs::path, Lines> names;
    for (const auto& folder : fs::directory_iterator(brokenFolder()))
        for (const auto& entry : fs::directory_iterator(folder))
            if (entry.path().filename() != "expected.txt")
                names[folder.path()].push_back(entry.path().filename().string());
    return names;
}

} // namespace

TEST(BrokenFiles, AreReportedAsExpected) {
    std::size_t files = 0;
    for (const auto& [folder, names] : brokenFiles())
        for (const std::string& name : names) {
            const Lines expectation = expected(folder, name);
            EXPECT_FALSE(expectation.empty()) << name;
            EXPECT_EQ(reported(check({(folder / name).string()}), folder), expectation) << name;
            ++files;
        }
    EXPECT_GE(files, 60U);
}

TEST(BrokenFiles, HaveAMessageAndARemedyEach) {
    for (const auto& [folder, names] : brokenFiles())
        for (const std::string& name : names) {
            const Findings findings = check({(folder / name).string()});
            for (const Finding& finding : findings.sorted()) {
                EXPECT_FALSE(finding.message.empty()) << name;
                EXPECT_FALSE(finding.rule->remedy.empty()) << name;
            }
        }
}

TEST(BrokenFiles, ShowEveryRule) {
    std::set<std::string> shown;
    for (const auto& [folder, names] : brokenFiles())
        for (const std::string& name : names)
            for (const std::string& line : expected(folder, name))
                shown.insert(line.substr(line.rfind(' ') + 1));
    for (const Rule& rule : allRules)
        EXPECT_EQ(shown.count(std::string(rule.id)), 1U) << rule.id;
}

TEST(BrokenFiles, PrintNothingWhileTheyAreRead) {
    Console console;
    for (const auto& [folder, names] : brokenFiles())
        for (const std::string& name : names)
            check({(folder / name).string()});
    EXPECT_EQ(console.takeOutput(), "");
    EXPECT_EQ(console.takeMessages(), "");
}
