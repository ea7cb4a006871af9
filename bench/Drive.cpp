#include "Drive.h"

#include "Floors.h"
#include "LibraryTree.h"
#include "Measures.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

template <class Subject>
int repeat(const std::string& operation, std::size_t leaves, std::size_t times) {
    Observed<Subject> tree(leaves, 0);
    for (std::size_t time = 0; time < times; ++time)
        if (operation == "set")
            benchmark::DoNotOptimize(tree.subject.set(tree.workload.nextVisit(), tree.workload.nextValue()));
        else
            benchmark::DoNotOptimize(tree.subject.get(tree.workload.nextLookup()));
    return 0;
}

} // namespace

int drive(const std::vector<std::string>& words) {
    if (words.size() == 4 && (words[0] == "set" || words[0] == "get")) {
        const std::size_t leaves = std::stoul(words[2]);
        const std::size_t times = std::stoul(words[3]);
        if (words[1] == library)
            return repeat<LibraryTree>(words[0], leaves, times);
        if (words[1] == floorMap)
            return repeat<Floor<MapContainer<Leaf>>>(words[0], leaves, times);
        if (words[1] == floorHash)
            return repeat<Floor<HashContainer<Leaf>>>(words[0], leaves, times);
    }
    std::fputs("usage: orbel_bench --drive set|get library|floor-map|floor-hash LEAVES TIMES\n", stderr);
    return 2;
}
