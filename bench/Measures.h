#ifndef BENCH_MEASURES_H
#define BENCH_MEASURES_H

#include "Memory.h"
#include "Suite.h"
#include "Workload.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// What is done alike with every subject that finds leaves by path: the library, the floors and the peers.
///
/// A subject has a name, build, makeObservers, observeAll, observeOne, set, get, destroy, and calls; one that cannot
/// tell anybody of a set says so with `observes`.

inline double bytesSince(const Memory& before, std::size_t items) {
    return static_cast<double>(memoryNow().bytes - before.bytes) / static_cast<double>(items);
}

inline void countAllocations(benchmark::State& state, std::uint64_t allocations) {
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
        bytesPerLeaf = bytesSince(before, leaves);
        // The first texts of a string allocate; what is measured is the steady tree.
        for (std::size_t leaf = 0; leaf < leaves; ++leaf)
            subject.set(workload.nextVisit(), workload.nextValue());
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
    if (Subject::observes && calls != static_cast<std::size_t>(state.iterations()))
        state.SkipWithError("not every set was told to its observer");
}

/// Asks for the text at the next path, without a copy.
template <class Subject>
void get(benchmark::State& state, const Shared<Subject>& shared, std::size_t leaves) {
    auto& tree = ready(shared, leaves, 0);
    const Memory before = memoryNow();
    for (auto _ : state)
        benchmark::DoNotOptimize(tree.subject.get(tree.workload.nextLookup()));
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
        state.counters["bytes"] = bytesSince(before, leaves);
        subject.destroy();
        settleHeap();
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
        settleHeap();
        Subject subject;
        subject.build(workload);
        const Memory before = memoryNow();
        state.ResumeTiming();
        subject.destroy();
        allocations += memoryNow().allocations - before.allocations;
    }
    countAllocations(state, allocations);
}

template <class Subject>
void addAccess(Suite& suite, std::size_t leaves) {
    const auto shared = std::make_shared<std::unique_ptr<Observed<Subject>>>();
    suite.add("set", Subject::name, leaves, [=](benchmark::State& state) { set<Subject>(state, shared, leaves); });
    suite.add("get", Subject::name, leaves, [=](benchmark::State& state) { get<Subject>(state, shared, leaves); });
}

/// The workload must live until the group has run.
template <class Subject>
void addLifetime(Suite& suite, Workload& workload) {
    const std::size_t leaves = workload.leaves();
    suite.add("build", Subject::name, leaves,
              [&workload](benchmark::State& state) { build<Subject>(state, workload); });
    suite.add("delete", Subject::name, leaves,
              [&workload](benchmark::State& state) { destroy<Subject>(state, workload); });
}

template <class Subject>
void addFanOut(Suite& suite, std::size_t leaves, std::size_t observers) {
    const auto shared = std::make_shared<std::unique_ptr<Observed<Subject>>>();
    suite.add("fan-out-" + std::to_string(observers), Subject::name, leaves,
              [=](benchmark::State& state) { fanOut<Subject>(state, shared, leaves, observers); });
}

#endif
