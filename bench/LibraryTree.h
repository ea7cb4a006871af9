#ifndef BENCH_LIBRARYTREE_H
#define BENCH_LIBRARYTREE_H

#include "OwnedTree.h"
#include "Workload.h"

#include <orbel/orbel.h>

#include <cstddef>
#include <string_view>
#include <vector>

class CountingHandler final : public DataHandler {
public:
    void onChange(DataField& field, bool changed) override;
    void onChange(DataField& field, bool changed, int from, int to) override;

    /// Calls of all handlers so far.
    static std::size_t calls();
};

/// A tree of the library with the operations that are measured; the floors have the same.
class LibraryTree {
public:
    static constexpr std::string_view name = "library";
    static constexpr bool observes = true;

    /// One kind-prefixed path per leaf, so every leaf also carries the handler that kinds put on it.
    void build(Workload& workload);
    void makeObservers(std::size_t count);
    void observeAll(Workload& workload);
    void observeOne(Workload::Path& path);

    bool set(Workload::Path& path, Workload::Value& value) {
        return m_tree.root.setFieldData(path.chars(), value.chars());
    }

    const char* get(Workload::Path& path) {
        char* text = nullptr;
        m_tree.root.getFieldData(path.chars(), &text);
        return text;
    }

    /// Takes the tree apart and frees all of it.
    void destroy() { m_tree.clear(); }

    static std::size_t calls() { return CountingHandler::calls(); }

private:
    std::vector<CountingHandler> m_handlers;
    // Goes before the handlers, which then have no field to leave.
    OwnedTree m_tree;
};

#endif
