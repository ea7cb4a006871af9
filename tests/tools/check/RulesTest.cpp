#include <tools/check/Rules.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

namespace {

std::string documentOfRules() {
    std::ifstream file(ORBEL_TEST_DATA "/../../docs/checks.md");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string rowOf(const Rule& rule) {
    std::ostringstream row;
    row << "| `" << rule.id << "` | " << nameOf(rule.severity) << " | " << rule.text << " | " << rule.remedy << " |\n";
    return row.str();
}

bool isRow(std::string_view line) {
    return line.starts_with("| `");
}

} // namespace

TEST(Rules, HaveNamesOfTheirOwn) {
    std::set<std::string_view> ids;
    for (const Rule& rule : allRules) {
        EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
        EXPECT_NE(rule.id.find('.'), std::string_view::npos) << rule.id;
    }
}

TEST(Rules, SayWhatIsWrongAndWhatToDo) {
    for (const Rule& rule : allRules) {
        EXPECT_TRUE(rule.text.ends_with('.')) << rule.id;
        EXPECT_TRUE(rule.remedy.ends_with('.')) << rule.id;
    }
}

TEST(Rules, StandInTheDocument) {
    const std::string document = documentOfRules();
    std::string rows;
    for (const Rule& rule : allRules)
        rows += rowOf(rule);
    std::string documented;
    std::istringstream lines(document);
    for (std::string line; std::getline(lines, line);)
        if (isRow(line))
            documented += line + '\n';
    EXPECT_EQ(documented, rows);
}
