#include "Report.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <unistd.h>
#include <utility>

namespace {

constexpr const char* library = "library";
constexpr const char* floorMap = "floor-map";
constexpr const char* floorHash = "floor-hash";

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double counter(const benchmark::BenchmarkReporter::Run& run, const char* name) {
    const auto found = run.counters.find(name);
    return found == run.counters.end() ? 0 : found->second.value;
}

void printCell(bool known, const char* format, double value) {
    if (known)
        std::printf(format, value);
    else
        std::printf("%11s", "-");
}

} // namespace

Report::Report() : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_Color : OO_None) {}

bool Report::ReportContext(const Context& context) {
    // Benchmarks run in groups, one per size of tree; the machine is described once.
    if (m_introduced)
        return true;
    m_introduced = true;
    return ConsoleReporter::ReportContext(context);
}

void Report::ReportRuns(const std::vector<Run>& runs) {
    std::vector<Run> shown;
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Iteration && !run.error_occurred)
            keep(run);
        const bool isMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
        if (isMedian || run.repetitions < 2 || run.error_occurred)
            shown.push_back(run);
    }
    if (!shown.empty())
        ConsoleReporter::ReportRuns(shown);
}

void Report::expect(const std::string& operation) {
    if (std::find(m_operations.begin(), m_operations.end(), operation) == m_operations.end())
        m_operations.push_back(operation);
}

void Report::keep(const Run& run) {
    const std::string& name = run.run_name.function_name;
    const std::size_t first = name.find('/');
    const std::size_t second = name.find('/', first + 1);
    const std::string operation = name.substr(0, first);
    Samples& samples =
        m_rows[{operation, std::stoul(name.substr(second + 1))}][name.substr(first + 1, second - first - 1)];
    const double scale = 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
    samples.nanoseconds.push_back(run.GetAdjustedCPUTime() * scale);
    samples.allocations = counter(run, "allocs");
    samples.bytes = counter(run, "bytes");
}

void Report::printTable() const {
    if (std::all_of(m_operations.begin(), m_operations.end(), [&](const auto& name) { return isAlone(name); }))
        return;
    std::cout << std::flush;
    std::printf("\nMedians of CPU time per operation on one leaf. Allocations are calls of operator new per operation "
                "of the library.\nBytes per leaf are usable sizes of live blocks from operator new: after \"set\" with "
                "one registration per leaf,\nafter \"build\" without; observer objects are not counted.\n\n");
    std::printf("%-13s%9s%11s%11s%11s%11s%11s%11s%11s%11s%11s\n", "", "", "library", "floor-map", "floor-hash",
                "library /", "library /", "allocs", "library", "floor-map", "floor-hash");
    std::printf("%-13s%9s%11s%11s%11s%11s%11s%11s%11s%11s%11s\n", "operation", "leaves", "ns", "ns", "ns", "map",
                "hash", "per op", "B/leaf", "B/leaf", "B/leaf");
    for (const std::string& operation : m_operations)
        for (const auto& [row, subjects] : m_rows) {
            if (row.first != operation || isAlone(operation))
                continue;
            const auto samplesOf = [&subjects = subjects](const char* name) {
                const auto found = subjects.find(name);
                return found == subjects.end() ? Samples() : found->second;
            };
            const Samples own = samplesOf(library);
            const Samples floors[] = {samplesOf(floorMap), samplesOf(floorHash)};
            const bool known = !own.nanoseconds.empty();

            std::printf("%-13s%9zu", operation.c_str(), row.second);
            for (const Samples& samples : {own, floors[0], floors[1]})
                printCell(!samples.nanoseconds.empty(), "%11.1f",
                          samples.nanoseconds.empty() ? 0 : median(samples.nanoseconds));
            for (const Samples& samples : floors) {
                const bool both = known && !samples.nanoseconds.empty();
                printCell(both, "%11.2f", both ? median(own.nanoseconds) / median(samples.nanoseconds) : 0);
            }
            printCell(known, "%11.2f", own.allocations);
            for (const Samples& samples : {own, floors[0], floors[1]})
                printCell(samples.bytes > 0, "%11.0f", samples.bytes);
            std::printf("\n");
        }
}

void Report::printGrowth() const {
    std::cout << std::flush;
    bool first = true;
    for (const std::string& operation : m_operations) {
        if (!isAlone(operation))
            continue;
        if (std::exchange(first, false))
            std::printf("\nMedians of CPU time per item, the library alone. Growth is the cost of an item among the "
                        "most to that among the\nfewest.\n\n%-13s%9s%11s%11s%11s\n",
                        "operation", "items", "ns", "growth", "allocs");
        double fewest = 0;
        for (const auto& [row, subjects] : m_rows) {
            if (row.first != operation)
                continue;
            const Samples& samples = subjects.at(library);
            const double nanoseconds = median(samples.nanoseconds);
            fewest = fewest == 0 ? nanoseconds : fewest;
            std::printf("%-13s%9zu%11.1f%11.2f%11.2f\n", operation.c_str(), row.second, nanoseconds,
                        nanoseconds / fewest, samples.allocations);
        }
    }
}

bool Report::isAlone(const std::string& operation) const {
    return std::all_of(m_rows.begin(), m_rows.end(), [&](const auto& entry) {
        return entry.first.first != operation || (entry.second.size() == 1 && entry.second.count(library) == 1);
    });
}
