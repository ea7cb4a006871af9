#include <tools/CommandLine.h>

#include <support/Console.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

int run(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "orbel");
    return runCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

} // namespace

TEST(CommandLine, TellsTheVersion) {
    Console console;
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(console.takeOutput(), "orbel 2.13.6.1473\n");
}

TEST(CommandLine, TellsMistakesInOneLineOfErrors) {
    Console console;
    EXPECT_EQ(run({}), 2);
    EXPECT_EQ(run({"paint"}), 2);
    EXPECT_EQ(run({"--loud"}), 2);
    EXPECT_EQ(console.takeOutput(), "");
}
