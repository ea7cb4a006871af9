#include "Bench.h"

#include "Detail.h"
#include "Disposal.h"
#include "Drive.h"
#include "Floors.h"
#include "Footprint.h"
#include "Goals.h"
#include "Growth.h"
#include "InHand.h"
#include "LibraryTree.h"
#include "Measures.h"
#include "Memory.h"
#include "Page.h"
#include "Results.h"
#include "Shapes.h"
#include "Suite.h"
#include "TextLanguages.h"
#include "Workload.h"
#include "peers/Peers.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using MapFloor = Floor<MapContainer<Leaf>>;
using HashFloor = Floor<HashContainer<Leaf>>;
using BareFloor = Floor<BareContainer<Leaf>>;
using MapFanFloor = Floor<MapContainer<FanLeaf>>;
using HashFanFloor = Floor<HashContainer<FanLeaf>>;

/// What the caller asks for; the rest is for the framework.
struct Options {
    Options(int argc, char** argv) {
        for (int index = 1; index < argc; ++index) {
            const std::string_view word = argv[index];
            if (word == "--quick")
                quick = true;
            else if (word == "--out" && index + 1 < argc)
                out = argv[++index];
            else
                rest.emplace_back(word);
        }
    }

    bool quick = false;
    std::filesystem::path out;
    std::vector<std::string> rest;
};

/// Time and allocations are those of one item.
void grow(benchmark::State& state, const Growth& growth, std::size_t items) {
    std::uint64_t allocations = 0;
    while (state.KeepRunningBatch(static_cast<benchmark::IterationCount>(items))) {
        state.PauseTiming();
        Growth::Pass pass = growth.prepare(items);
        if (growth.steady)
            pass.work();
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

void measureAccess(Suite& suite, std::size_t leaves) {
    addAccess<LibraryTree>(suite, leaves);
    addAccess<MapFloor>(suite, leaves);
    addAccess<HashFloor>(suite, leaves);
    addAccess<BareFloor>(suite, leaves);
    suite.run();
}

void measureLifetime(Suite& suite, std::size_t leaves) {
    Workload workload(leaves);
    addLifetime<LibraryTree>(suite, workload);
    addLifetime<MapFloor>(suite, workload);
    addLifetime<HashFloor>(suite, workload);
    addLifetime<BareFloor>(suite, workload);
    addDisposal(suite, workload);
    suite.run();
}

void measureFanOut(Suite& suite, std::size_t observers) {
    constexpr std::size_t leaves = 1'000;
    addFanOut<LibraryTree>(suite, leaves, observers);
    addFanOut<MapFanFloor>(suite, leaves, observers);
    addFanOut<HashFanFloor>(suite, leaves, observers);
    addFanOutInHand(suite, observers);
    suite.run();
}

void measureInHand(Suite& suite) {
    for (const std::size_t fields : {1, 1'000})
        addSetsInHand(suite, fields);
    suite.run();
    for (const std::size_t links : {10, 100, 200})
        addChain(suite, links);
    suite.run();
}

void weigh(Suite& suite, std::size_t leaves) {
    Workload workload(leaves);
    weighLeaves(suite, workload);
    weighRegistrations(suite, workload);
}

void measureAll(Suite& suite, bool quick, const std::function<void()>& measureTexts) {
    std::vector<std::size_t> sizes{1'000, 10'000};
    if (!quick)
        sizes.insert(sizes.end(), {100'000, 1'000'000});
    // First, while no other tree keeps the index of paths alive, which would then not be counted.
    for (const std::size_t leaves : sizes)
        weigh(suite, leaves);
    for (const std::size_t handlers : {10, 1'000})
        weighCrowd(suite, handlers);
    for (const std::size_t leaves : sizes)
        measureAccess(suite, leaves);
    for (const std::size_t leaves : sizes)
        measureLifetime(suite, leaves);
    measureInHand(suite);
    for (const std::size_t observers : {1, 10, 100, 1'000})
        measureFanOut(suite, observers);
    addShapes(suite, sizes.back());
    suite.run();
    for (const Growth& growth : growths())
        for (const std::size_t items : sizes)
            if (items <= 100'000) {
                suite.add(std::string(growth.name), library, items,
                          [&growth, items](benchmark::State& state) { grow(state, growth, items); });
                suite.run();
            }
    measureTexts();
    // Last, because what they leave of the heap makes building slower for whoever comes after.
    for (const std::size_t leaves : sizes)
        measurePeers(suite, leaves);
}

/// What the library allocates must go through the counting operator new of this program.
bool countsTheLibrary() {
    LibraryTree tree;
    Workload workload(1);
    const Memory before = memoryNow();
    tree.build(workload);
    return memoryNow().allocations > before.allocations;
}

std::string machine(bool quick) {
    const benchmark::CPUInfo& cpu = benchmark::CPUInfo::Get();
    return "Medians of " + std::string(quick ? "three short" : "nine") + " interleaved rounds, in one run on " +
           std::to_string(cpu.num_cpus) + " x86-64 CPUs at " + fixed(cpu.cycles_per_second / 1e6, 0) +
           " MHz, compiled by GCC " + __VERSION__ + '.';
}

/// What the caller's filter wants of the text languages: "texts" all, "texts/dump" those about dumps.
std::optional<std::string> wantedTexts() {
    const std::string filter = benchmark::GetBenchmarkFilter();
    if (filter.empty() || filter == "all")
        return "";
    if (filter.rfind("texts", 0) == 0)
        return filter.substr(std::min<std::size_t>(filter.size(), 6));
    return std::nullopt;
}

void printHelp() {
    std::puts("orbel_bench [--quick] [--out DIR] [options of Google Benchmark]\n"
              "  --quick    only up to 10,000 leaves, three short rounds\n"
              "  --out DIR  writes performance.md and performance.dat\n");
    benchmark::PrintDefaultHelp();
}

} // namespace

int bench(int argc, char** argv) {
    if (argc > 1 && std::string_view(argv[1]) == "--drive")
        return drive({argv + 2, argv + argc});
    const Options options(argc, argv);

    // In front of what the caller gives, so that the caller's options win.
    std::vector<std::string> given{argv[0], options.quick ? "--benchmark_min_time=0.01" : "--benchmark_min_time=0.03"};
    given.insert(given.end(), options.rest.begin(), options.rest.end());
    std::vector<char*> arguments;
    for (std::string& text : given)
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

    Results results;
    Suite suite(results, options.quick ? 3 : 9);
    std::vector<MeasuredText> texts;
    measureAll(suite, options.quick, [&] { texts = measureTexts(wantedTexts()); });
    printComparison(results, std::cout);
    printPeers(results, std::cout);
    printOthers(results, std::cout);
    printGrowth(results, std::cout);
    printTexts(texts);
    Goals goals;
    judge(results, goals);
    judgeTexts(texts, goals);
    if (!goals.empty()) {
        std::cout << "\nGoals. What is short of its limit fails nothing: the table is what to work on.\n\n";
        goals.table().print(std::cout);
    }
    if (!options.out.empty())
        writePage(options.out, results, goals, machine(options.quick));
    benchmark::Shutdown();
    return 0;
}
