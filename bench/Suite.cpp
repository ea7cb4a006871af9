#include "Suite.h"

#include "Table.h"

#include <iostream>
#include <regex.h>
#include <utility>

namespace {

std::string nameOf(const std::string& operation, std::string_view subject, std::size_t items) {
    return operation + '/' + std::string(subject) + '/' + std::to_string(items);
}

/// The same choice as the framework makes, because it complains about a group in which the filter leaves nothing.
bool isWanted(const std::string& name) {
    std::string filter = benchmark::GetBenchmarkFilter();
    if (filter.empty() || filter == "all")
        return true;
    const bool without = filter.front() == '-';
    // What is no expression wants nothing.
    regex_t wanted;
    if (regcomp(&wanted, filter.c_str() + (without ? 1 : 0), REG_EXTENDED | REG_NOSUB) != 0)
        return false;
    const bool matches = regexec(&wanted, name.c_str(), 0, nullptr, 0) == 0;
    regfree(&wanted);
    return matches != without;
}

} // namespace

Suite::Suite(Results& results, int rounds) : m_results(results), m_report(results), m_rounds(rounds) {}

void Suite::add(const std::string& operation, std::string_view subject, std::size_t items,
                std::function<void(benchmark::State&)> function) {
    const std::string name = nameOf(operation, subject, items);
    if (!isWanted(name))
        return;
    m_results.expect(operation, std::string(subject));
    benchmark::RegisterBenchmark(name.c_str(), std::move(function));
    m_any = true;
}

void Suite::weigh(const std::string& operation, std::string_view subject, std::size_t items,
                  const std::function<double()>& function) {
    const std::string name = nameOf(operation, subject, items);
    if (!isWanted(name))
        return;
    const double bytes = function();
    m_results.at(operation, std::string(subject), items).bytes = bytes;
    std::cout << name << ' ' << fixed(bytes, 1) << " bytes" << std::endl;
}

void Suite::run() {
    for (int round = 0; m_any && round < m_rounds; ++round)
        benchmark::RunSpecifiedBenchmarks(&m_report);
    m_report.printMedians();
    m_any = false;
    benchmark::ClearRegisteredBenchmarks();
}
