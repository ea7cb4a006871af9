#include "Report.h"

#include <algorithm>
#include <cstddef>
#include <unistd.h>

namespace {

double counter(const benchmark::BenchmarkReporter::Run& run, const char* name) {
    const auto found = run.counters.find(name);
    return found == run.counters.end() ? 0 : found->second.value;
}

} // namespace

Report::Report(Results& results)
    : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_Color : OO_None), m_results(results) {}

bool Report::ReportContext(const Context& context) {
    // Benchmarks run in groups, one per size of tree; the machine is described once.
    if (m_introduced)
        return true;
    m_introduced = true;
    return ConsoleReporter::ReportContext(context);
}

void Report::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.error_occurred)
            ConsoleReporter::ReportRuns({run});
        else if (run.run_type == Run::RT_Iteration)
            keep(run);
    }
}

void Report::printMedians() {
    for (const std::string& name : m_names) {
        std::vector<Run>& rounds = m_rounds[name];
        const auto median = rounds.begin() + static_cast<std::ptrdiff_t>(rounds.size() / 2);
        std::nth_element(rounds.begin(), median, rounds.end(), [](const Run& left, const Run& right) {
            return left.GetAdjustedCPUTime() < right.GetAdjustedCPUTime();
        });
        ConsoleReporter::ReportRuns({*median});
    }
    m_names.clear();
    m_rounds.clear();
}

void Report::keep(const Run& run) {
    const std::string& name = run.run_name.function_name;
    std::vector<Run>& rounds = m_rounds[name];
    if (rounds.empty())
        m_names.push_back(name);
    rounds.push_back(run);
    const std::size_t first = name.find('/');
    const std::size_t second = name.find('/', first + 1);
    Samples& samples = m_results.at(name.substr(0, first), name.substr(first + 1, second - first - 1),
                                    std::stoul(name.substr(second + 1)));
    const double scale = 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
    samples.nanoseconds.push_back(run.GetAdjustedCPUTime() * scale);
    samples.allocations = std::max(samples.allocations, counter(run, "allocs"));
    samples.bytes = counter(run, "bytes");
}
