#ifndef BENCH_REPORT_H
#define BENCH_REPORT_H

#include <benchmark/benchmark.h>

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// Prints the usual lines, of the medians only where there are repetitions, and keeps what the table needs.
class Report : public benchmark::ConsoleReporter {
public:
    Report();

    /// The table lists operations in the order in which they were expected: repetitions arrive interleaved.
    void expect(const std::string& operation);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    /// The closing tables; each prints nothing when nothing of it was measured. Operations that only the library has
    /// are in the second, which tells how the cost of one item grows with the number of items.
    void printTable() const;
    void printGrowth() const;

private:
    struct Samples {
        std::vector<double> nanoseconds;
        double allocations = 0;
        double bytes = 0;
    };
    using Row = std::pair<std::string, std::size_t>;

    void keep(const Run& run);
    /// Whether no floor was measured next to the library.
    bool isAlone(const std::string& operation) const;

    bool m_introduced = false;
    std::vector<std::string> m_operations;
    std::map<Row, std::map<std::string, Samples>> m_rows;
};

#endif
