#include "Shapes.h"

#include "GrowthTools.h"
#include "LibraryTree.h"
#include "Measures.h"
#include "OwnedTree.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

/// A tree, who is asked in it, and for what.
struct Shape {
    OwnedTree tree;
    DataStructure* asked = &tree.root;
    std::vector<Workload::Path> paths;
};

using Maker = std::function<void(Shape& shape, std::size_t leaves)>;

void makeSquare(Shape& shape, std::size_t leaves) {
    Workload workload(leaves);
    for (Workload::Path& path : workload.kindPaths())
        shape.tree.root.getField(path.chars(), 0, 0);
    shape.paths = workload.paths();
}

DataStructure& makeWide(Shape& shape, std::size_t leaves, const std::string& prefix) {
    DataStructure& scene = OwnedTree::addNode(shape.tree.root, "scene");
    for (std::size_t leaf = 0; leaf < leaves; ++leaf) {
        const std::string name = numbered("field", leaf);
        scene.getField(chars("string:" + name), 0, 0);
        shape.paths.emplace_back(prefix + name);
    }
    return scene;
}

void makeWideFromRoot(Shape& shape, std::size_t leaves) {
    makeWide(shape, leaves, "scene/");
}

void makeWideAsked(Shape& shape, std::size_t leaves) {
    shape.asked = &makeWide(shape, leaves, "");
}

/// Asked once for everything before it is measured.
class Lookup {
public:
    Lookup(const Maker& make, std::size_t leaves) {
        make(m_shape, leaves);
        shuffle(m_shape.paths);
        for (std::size_t leaf = 0; leaf < leaves; ++leaf)
            require(next(), "a leaf is missing");
    }

    DataField* next() {
        Workload::Path& path = m_shape.paths[m_at];
        m_at = m_at + 1 == m_shape.paths.size() ? 0 : m_at + 1;
        return m_shape.asked->getField(path.chars(), 0, 0);
    }

private:
    Shape m_shape;
    std::size_t m_at = 0;
};

/// The one tree there is: the paths of several of the largest would not fit into what remembers them, and who is
/// remembered would be chance.
struct Current {
    std::string subject;
    std::unique_ptr<Lookup> lookup;
};

void add(Suite& suite, const std::shared_ptr<Current>& current, const char* subject, std::size_t leaves,
         const Maker& make) {
    suite.add("find", subject, leaves, [=](benchmark::State& state) {
        if (current->subject != subject) {
            current->lookup.reset();
            current->lookup = std::make_unique<Lookup>(make, leaves);
            current->subject = subject;
        }
        const Memory before = memoryNow();
        for (auto _ : state)
            benchmark::DoNotOptimize(current->lookup->next());
        countAllocations(state, memoryNow().allocations - before.allocations);
    });
}

} // namespace

void addShapes(Suite& suite, std::size_t leaves) {
    const auto current = std::make_shared<Current>();
    add(suite, current, "square", leaves, makeSquare);
    add(suite, current, "wide", leaves, makeWideAsked);
    add(suite, current, "wide-from-root", leaves, makeWideFromRoot);
}
