#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

// Takes what GoogleTest takes, GTEST_TOTAL_SHARDS included. With --forks it runs each test in a fork of its own, which
// is as good as a process of its own and takes a hundredth of the time, and prints the tests that fail; with --all it
// goes on behind the first. Tests that are named as arguments are left out, or behind --only the others. --patient
// gives a test ten minutes instead of twenty seconds.

namespace {

unsigned secondsForATest = 20;

/// Of all tests those that are this process's share.
std::vector<std::string> testsToRun() {
    const char* const share = std::getenv("GTEST_SHARD_INDEX");
    const char* const shares = std::getenv("GTEST_TOTAL_SHARDS");
    const int first = share ? std::atoi(share) : 0;
    const int step = shares ? std::atoi(shares) : 1;
    // Each child is told which test to run, and must not leave that to another.
    unsetenv("GTEST_TOTAL_SHARDS");
    unsetenv("GTEST_SHARD_INDEX");
    std::vector<std::string> tests;
    int count = 0;
    const testing::UnitTest& all = *testing::UnitTest::GetInstance();
    for (int at = 0; at < all.total_test_suite_count(); ++at) {
        const testing::TestSuite& suite = *all.GetTestSuite(at);
        for (int index = 0; index < suite.total_test_count(); ++index) {
            std::string test = std::string(suite.name()) + '.' + suite.GetTestInfo(index)->name();
            if (test.find("DISABLED_") == std::string::npos && count++ % step == first)
                tests.push_back(std::move(test));
        }
    }
    return tests;
}

[[noreturn]] void runAlone(const std::string& test) {
    alarm(secondsForATest);
    testing::GTEST_FLAG(filter) = test;
    // Leaks are looked for when a process ends this way.
    std::exit(RUN_ALL_TESTS());
}

bool passes(const std::string& test, bool tellsTime) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0)
        runAlone(test);
    int status = 0;
    waitpid(child, &status, 0);
    const auto took = std::chrono::steady_clock::now() - start;
    if (tellsTime && took > std::chrono::milliseconds(200))
        std::cerr << "\nslow: " << test << std::endl;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const std::set<std::string> leftOut(argv + 1, argv + argc);
    if (leftOut.count("--forks") == 0)
        return RUN_ALL_TESTS();
    const bool goesOn = leftOut.count("--all") != 0;
    if (leftOut.count("--patient") != 0)
        secondsForATest = 600;
    const bool isOnly = leftOut.count("--only") != 0;
    bool passed = true;
    for (const std::string& test : testsToRun()) {
        if ((leftOut.count(test) != 0) != isOnly || passes(test, goesOn))
            continue;
        std::cerr << "\nfailed: " << test << std::endl;
        if (!goesOn)
            return 1;
        passed = false;
    }
    return passed ? 0 : 1;
}
