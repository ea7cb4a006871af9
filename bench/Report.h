#ifndef BENCH_REPORT_H
#define BENCH_REPORT_H

#include "Results.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Keeps the figures of all rounds, and prints the usual line of each benchmark once.
class Report : public benchmark::ConsoleReporter {
public:
    explicit Report(Results& results);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    /// Of each benchmark the round of the median, of all rounds since the last call.
    void printMedians();

private:
    void keep(const Run& run);

    Results& m_results;
    std::vector<std::string> m_names;
    std::map<std::string, std::vector<Run>> m_rounds;
    bool m_introduced = false;
};

#endif
