#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <iostream>
#include <set>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

// Runs each test in a fork of its own, which is as good as a process of its own and takes a hundredth of the time.
// Prints the tests that fail; with --all goes on behind the first. Tests that are named as arguments are left out,
// or behind --only the others.
// --patient gives a test ten minutes instead of twenty seconds.

namespace {

unsigned secondsForATest = 20;

[[noreturn]] void runAlone(const std::string& test) {
    alarm(secondsForATest);
    testing::GTEST_FLAG(filter) = test;
    const int code = RUN_ALL_TESTS();
    std::cout.flush();
    _exit(code);
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
    const bool goesOn = leftOut.count("--all") != 0;
    if (leftOut.count("--patient") != 0)
        secondsForATest = 600;
    const bool isOnly = leftOut.count("--only") != 0;
    const testing::UnitTest& all = *testing::UnitTest::GetInstance();
    bool passed = true;
    for (int at = 0; at < all.total_test_suite_count(); ++at) {
        const testing::TestSuite& suite = *all.GetTestSuite(at);
        for (int index = 0; index < suite.total_test_count(); ++index) {
            const std::string test = std::string(suite.name()) + '.' + suite.GetTestInfo(index)->name();
            if ((leftOut.count(test) != 0) != isOnly || test.find("DISABLED_") != std::string::npos ||
                passes(test, goesOn))
                continue;
            std::cerr << "\nfailed: " << test << std::endl;
            if (!goesOn)
                return 1;
            passed = false;
        }
    }
    return passed ? 0 : 1;
}
