#ifndef BENCH_SUITE_H
#define BENCH_SUITE_H

#include "Report.h"
#include "Results.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// Benchmarks are added and run one group at a time, so that only the trees of one group are in memory. A group runs in
/// rounds, each of its benchmarks once in every round: what is compared has run within a moment of each other.
class Suite {
public:
    Suite(Results& results, int rounds);

    /// Left out when the caller's filter does not want it.
    void add(const std::string& operation, std::string_view subject, std::size_t items,
             std::function<void(benchmark::State&)> function);
    /// Heap bytes per item, which are the same every time: not timed, not repeated.
    void weigh(const std::string& operation, std::string_view subject, std::size_t items,
               const std::function<double()>& function);
    void run();

private:
    Results& m_results;
    Report m_report;
    int m_rounds;
    bool m_any = false;
};

#endif
