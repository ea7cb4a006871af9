#include "InHand.h"

#include "Floors.h"
#include "GrowthTools.h"
#include "LibraryTree.h"
#include "Measures.h"
#include "OwnedTree.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

/// Fields of a tree with handlers of their own, and none of a kind.
class LibraryFields {
public:
    LibraryFields(std::size_t fields, std::size_t observers) : m_handlers(fields * observers) {
        auto handler = m_handlers.begin();
        for (std::size_t field = 0; field < fields; ++field) {
            m_fields.push_back(&OwnedTree::addValue(m_tree.root, numbered("field", field)));
            for (std::size_t observer = 0; observer < observers; ++observer)
                m_fields.back()->registerHandler(&*handler++);
        }
    }

    /// Each follows the one before it.
    void link() {
        for (std::size_t field = 1; field < m_fields.size(); ++field)
            m_fields[field - 1]->addTargetLink(m_fields[field]);
    }

    std::size_t size() const { return m_fields.size(); }
    void set(std::size_t field, const char* text) { m_fields[field]->setData(text); }
    static std::size_t calls() { return CountingHandler::calls(); }

private:
    std::vector<CountingHandler> m_handlers;
    // Goes before the handlers, which then have no field to leave.
    OwnedTree m_tree;
    std::vector<DataField*> m_fields;
};

/// The same of plain leaves, each a block of its own as fields are.
template <class LeafType>
class PlainFields {
public:
    PlainFields(std::size_t fields, std::size_t observers) : m_observers(Observer::make(fields * observers)) {
        auto added = m_observers.begin();
        for (std::size_t field = 0; field < fields; ++field) {
            m_leaves.push_back(std::make_unique<LeafType>());
            for (std::size_t observer = 0; observer < observers; ++observer)
                m_leaves.back()->observe(**added++);
        }
    }

    std::size_t size() const { return m_leaves.size(); }
    void set(std::size_t field, const char* text) {
        LeafType& leaf = *m_leaves[field];
        leaf.text.assign(text);
        leaf.notify();
    }
    static std::size_t calls() { return Observer::calls(); }

private:
    std::vector<std::unique_ptr<Observer>> m_observers;
    std::vector<std::unique_ptr<LeafType>> m_leaves;
};

/// Repeats one operation, which is to make so many calls of observers each time.
template <class Fields, class Operation>
void measure(benchmark::State& state, Fields& fields, std::size_t callsEach, Operation operation) {
    Workload workload(1);
    // The first texts allocate.
    for (std::size_t warm = 0; warm < fields.size(); ++warm)
        operation(workload.nextValue().chars());
    const Memory before = memoryNow();
    const std::size_t callsBefore = Fields::calls();
    for (auto _ : state)
        operation(workload.nextValue().chars());
    countAllocations(state, memoryNow().allocations - before.allocations);
    if (Fields::calls() - callsBefore != callsEach * static_cast<std::size_t>(state.iterations()))
        state.SkipWithError("not every set was told to all observers");
}

template <class Fields>
void setRound(benchmark::State& state, std::size_t count, std::size_t observers) {
    Fields fields(count, observers);
    std::size_t at = 0;
    measure(state, fields, observers, [&](const char* text) {
        fields.set(at, text);
        at = at + 1 == fields.size() ? 0 : at + 1;
    });
}

template <class Fields>
void setOne(benchmark::State& state, std::size_t observers) {
    Fields fields(1, observers);
    measure(state, fields, observers, [&](const char* text) { fields.set(0, text); });
}

void setChain(benchmark::State& state, std::size_t links) {
    LibraryFields fields(links + 1, 1);
    fields.link();
    measure(state, fields, links + 1, [&](const char* text) { fields.set(0, text); });
}

void setSeparately(benchmark::State& state, std::size_t links) {
    LibraryFields fields(links + 1, 1);
    measure(state, fields, links + 1, [&](const char* text) {
        for (std::size_t field = 0; field < fields.size(); ++field)
            fields.set(field, text);
    });
}

} // namespace

void addSetsInHand(Suite& suite, std::size_t fields) {
    const auto add = [&](const char* subject, auto one, auto round) {
        suite.add("set-in-hand", subject, fields, [=](benchmark::State& state) {
            if (fields == 1)
                one(state, 1);
            else
                round(state, fields, 1);
        });
    };
    add(library, setOne<LibraryFields>, setRound<LibraryFields>);
    add(floorPlain, setOne<PlainFields<Leaf>>, setRound<PlainFields<Leaf>>);
}

void addFanOutInHand(Suite& suite, std::size_t observers) {
    const auto add = [&](const char* subject, auto one) {
        suite.add("fan-in-hand", subject, observers, [=](benchmark::State& state) { one(state, observers); });
    };
    add(library, setOne<LibraryFields>);
    add(floorPlain, setOne<PlainFields<FanLeaf>>);
}

void addChain(Suite& suite, std::size_t links) {
    suite.add("chain", library, links, [=](benchmark::State& state) { setChain(state, links); });
    suite.add("chain", "separate", links, [=](benchmark::State& state) { setSeparately(state, links); });
}
