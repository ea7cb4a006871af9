#include "Floors.h"
#include "Growth.h"
#include "LibraryTree.h"
#include "Memory.h"
#include "Report.h"
#include "TextLanguages.h"
#include "Workload.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace {

double since(const Memory& before, std::size_t leaves) {
    return static_cast<double>(memoryNow().bytes - before.bytes) / static_cast<double>(leaves);
}

void countAllocations(benchmark::State& state, std::uint64_t allocations) {
    state.counters["allocs"] = static_cast<double>(allocations) / static_cast<double>(state.iterations());
}

/// A tree that is built and observed when its first benchmark begins and lives until its group of benchmarks ends.
template <class Subject>
class Observed {
public:
    /// With `observers` 0 every leaf gets one, else the first leaf gets all of them.
    Observed(std::size_t leaves, std::size_t observers) : workload(leaves) {
        subject.makeObservers(observers == 0 ? leaves : observers);
        const Memory before = memoryNow();
        subject.build(workload);
        if (observers == 0)
            subject.observeAll(workload);
        else
            subject.observeOne(first());
        bytesPerLeaf = since(before, leaves);
        // The first texts of a string allocate; what is measured is the steady tree.
        for (std::size_t leaf = 0; leaf < leaves; ++leaf)
            subject.set(workload.nextVisit(), workload.nextValue());
        workload.rewind();
    }

    Workload::Path& first() { return m_first; }

    Workload workload;
    Subject subject;
    double bytesPerLeaf = 0;

private:
    Workload::Path m_first = workload.paths().front();
};

template <class Subject>
using Shared = std::shared_ptr<std::unique_ptr<Observed<Subject>>>;

template <class Subject>
Observed<Subject>& ready(const Shared<Subject>& shared, std::size_t leaves, std::size_t observers) {
    if (!*shared)
        *shared = std::make_unique<Observed<Subject>>(leaves, observers);
    return **shared;
}

/// Sets the next text at the next path; the observer is told by a virtual call.
template <class Subject>
void set(benchmark::State& state, const Shared<Subject>& shared, std::size_t leaves) {
    auto& tree = ready(shared, leaves, 0);
    const Memory before = memoryNow();
    const std::size_t callsBefore = Subject::calls();
    for (auto _ : state)
        benchmark::DoNotOptimize(tree.subject.set(tree.workload.nextVisit(), tree.workload.nextValue()));
    const std::size_t calls = Subject::calls() - callsBefore;
    countAllocations(state, memoryNow().allocations - before.allocations);
    state.counters["bytes"] = tree.bytesPerLeaf;
    if (calls != static_cast<std::size_t>(state.iterations()))
        state.SkipWithError("not every set was told to its observer");
}

/// Asks for the text at the next path, without a copy.
template <class Subject>
void get(benchmark::State& state, const Shared<Subject>& shared, std::size_t leaves) {
    auto& tree = ready(shared, leaves, 0);
    const Memory before = memoryNow();
    for (auto _ : state)
        benchmark::DoNotOptimize(tree.subject.get(tree.workload.nextVisit()));
    countAllocations(state, memoryNow().allocations - before.allocations);
}

/// Sets one leaf, by path, that many observers watch.
template <class Subject>
void fanOut(benchmark::State& state, const Shared<Subject>& shared, std::size_t leaves, std::size_t observers) {
    auto& tree = ready(shared, leaves, observers);
    const Memory before = memoryNow();
    const std::size_t callsBefore = Subject::calls();
    for (auto _ : state)
        benchmark::DoNotOptimize(tree.subject.set(tree.first(), tree.workload.nextValue()));
    const std::size_t calls = Subject::calls() - callsBefore;
    countAllocations(state, memoryNow().allocations - before.allocations);
    if (calls != observers * static_cast<std::size_t>(state.iterations()))
        state.SkipWithError("not every set was told to all observers");
}

/// Builds a tree without observers from an empty one; time and allocations are those of one leaf.
template <class Subject>
void build(benchmark::State& state, Workload& workload) {
    const std::size_t leaves = workload.leaves();
    std::uint64_t allocations = 0;
    while (state.KeepRunningBatch(static_cast<benchmark::IterationCount>(leaves))) {
        Subject subject;
        const Memory before = memoryNow();
        subject.build(workload);
        state.PauseTiming();
        allocations += memoryNow().allocations - before.allocations;
        state.counters["bytes"] = since(before, leaves);
        subject.destroy();
        state.ResumeTiming();
    }
    countAllocations(state, allocations);
}

/// Takes a built tree apart and frees all of it; time and allocations are those of one leaf.
template <class Subject>
void destroy(benchmark::State& state, Workload& workload) {
    std::uint64_t allocations = 0;
    while (state.KeepRunningBatch(static_cast<benchmark::IterationCount>(workload.leaves()))) {
        state.PauseTiming();
        Subject subject;
        subject.build(workload);
        const Memory before = memoryNow();
        state.ResumeTiming();
        subject.destroy();
        allocations += memoryNow().allocations - before.allocations;
    }
    countAllocations(state, allocations);
}

/// Time and allocations are those of one item.
void grow(benchmark::State& state, const Growth& growth, std::size_t items) {
    std::uint64_t allocations = 0;
    while (state.KeepRunningBatch(static_cast<benchmark::IterationCount>(items))) {
        state.PauseTiming();
        Growth::Pass pass = growth.prepare(items);
        const Memory before = memoryNow();
        state.ResumeTiming();
        pass.work();
        state.PauseTiming();
        allocations += memoryNow().allocations - before.allocations;
        pass.clean();
        // What the pass was prepared on goes before the clock runs again.
        pass = {};
        state.ResumeTiming();
    }
    countAllocations(state, allocations);
}

using MapFloor = Floor<MapContainer<Leaf>>;
using HashFloor = Floor<HashContainer<Leaf>>;
using MapFanFloor = Floor<MapContainer<FanLeaf>>;
using HashFanFloor = Floor<HashContainer<FanLeaf>>;

/// One group at a time is registered and run, so that only the trees of one size are in memory.
class Groups {
public:
    explicit Groups(Report& report) : m_report(report) {}

    void access(std::size_t leaves) {
        access<LibraryTree>(leaves);
        access<MapFloor>(leaves);
        access<HashFloor>(leaves);
        run();
    }

    void lifetime(std::size_t leaves) {
        Workload workload(leaves);
        lifetime<LibraryTree>(workload);
        lifetime<MapFloor>(workload);
        lifetime<HashFloor>(workload);
        run();
    }

    void fan(std::size_t observers) {
        fan<LibraryTree>(observers);
        fan<MapFanFloor>(observers);
        fan<HashFanFloor>(observers);
        run();
    }

    void grow(const Growth& growth, std::size_t items) {
        add<LibraryTree>(std::string(growth.name), items,
                         [&growth, items](benchmark::State& state) { ::grow(state, growth, items); });
        run();
    }

private:
    static constexpr std::size_t fanLeaves = 1000;

    template <class Subject>
    void access(std::size_t leaves) {
        const auto shared = std::make_shared<std::unique_ptr<Observed<Subject>>>();
        add<Subject>("set", leaves, [=](benchmark::State& state) { set<Subject>(state, shared, leaves); });
        add<Subject>("get", leaves, [=](benchmark::State& state) { get<Subject>(state, shared, leaves); });
    }

    template <class Subject>
    void lifetime(Workload& workload) {
        const std::size_t leaves = workload.leaves();
        add<Subject>("build", leaves, [&workload](benchmark::State& state) { build<Subject>(state, workload); });
        add<Subject>("delete", leaves, [&workload](benchmark::State& state) { destroy<Subject>(state, workload); });
    }

    template <class Subject>
    void fan(std::size_t observers) {
        const auto shared = std::make_shared<std::unique_ptr<Observed<Subject>>>();
        add<Subject>("fan-out-" + std::to_string(observers), fanLeaves,
                     [=](benchmark::State& state) { fanOut<Subject>(state, shared, fanLeaves, observers); });
    }

    template <class Subject, class Function>
    void add(const std::string& operation, std::size_t leaves, Function function) {
        const std::string name = operation + '/' + std::string(Subject::name) + '/' + std::to_string(leaves);
        if (!isWanted(name))
            return;
        m_report.expect(operation);
        benchmark::RegisterBenchmark(name.c_str(), function);
        m_any = true;
    }

    /// The same choice as the framework makes, because it complains about a group in which the filter leaves nothing.
    static bool isWanted(const std::string& name) {
        std::string filter = benchmark::GetBenchmarkFilter();
        if (filter.empty() || filter == "all")
            return true;
        const bool without = filter.front() == '-';
        return std::regex_search(name, std::regex(filter.substr(without ? 1 : 0), std::regex::extended)) != without;
    }

    void run() {
        if (m_any)
            benchmark::RunSpecifiedBenchmarks(&m_report);
        m_any = false;
        benchmark::ClearRegisteredBenchmarks();
    }

    Report& m_report;
    bool m_any = false;
};

/// What the library allocates must go through the counting operator new of this program.
bool countsTheLibrary() {
    LibraryTree tree;
    Workload workload(1);
    const Memory before = memoryNow();
    tree.build(workload);
    return memoryNow().allocations > before.allocations;
}

void printHelp() {
    std::puts("orbel_bench [--quick] [options of Google Benchmark]\n"
              "  --quick  only up to 10,000 leaves, three short repetitions\n");
    benchmark::PrintDefaultHelp();
}

} // namespace

int main(int argc, char** argv) {
    bool quick = false;
    std::vector<std::string> given;
    for (int index = 1; index < argc; ++index)
        if (std::string_view(argv[index]) == "--quick")
            quick = true;
        else
            given.emplace_back(argv[index]);

    // In front of what the caller gives, so that the caller's options win.
    std::vector<std::string> texts{argv[0], quick ? "--benchmark_repetitions=3" : "--benchmark_repetitions=5",
                                   quick ? "--benchmark_min_time=0.01" : "--benchmark_min_time=0.05",
                                   "--benchmark_enable_random_interleaving=true"};
    texts.insert(texts.end(), given.begin(), given.end());
    std::vector<char*> arguments;
    for (std::string& text : texts)
        arguments.push_back(text.data());
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data(), printHelp);
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    if (!countsTheLibrary()) {
        std::fputs("the allocations of the library are not counted\n", stderr);
        return 1;
    }

    const std::string filter = benchmark::GetBenchmarkFilter();
    if (filter.rfind("texts", 0) == 0) {
        printTextLanguages(filter.substr(std::min<std::size_t>(filter.size(), 6)));
        return 0;
    }
    Report report;
    Groups groups(report);
    std::vector<std::size_t> sizes{1'000, 10'000};
    if (!quick)
        sizes.insert(sizes.end(), {100'000, 1'000'000});
    for (const std::size_t leaves : sizes)
        groups.access(leaves);
    for (const std::size_t leaves : sizes)
        groups.lifetime(leaves);
    for (const std::size_t observers : {1, 10, 100, 1'000})
        groups.fan(observers);
    for (const Growth& growth : growths())
        for (const std::size_t items : sizes)
            if (items <= 100'000)
                groups.grow(growth, items);
    report.printTable();
    report.printGrowth();
    if (filter.empty())
        printTextLanguages("");
    benchmark::Shutdown();
}
