#ifndef BENCH_REPORT_H
#define BENCH_REPORT_H

#include "Results.h"

#include <benchmark/benchmark.h>

#include <vector>

/// Prints the usual lines, of the medians only where there are repetitions, and keeps the figures of all.
class Report : public benchmark::ConsoleReporter {
public:
    explicit Report(Results& results);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

private:
    void keep(const Run& run);

    Results& m_results;
    bool m_introduced = false;
};

#endif
