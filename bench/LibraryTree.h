#ifndef BENCH_LIBRARYTREE_H
#define BENCH_LIBRARYTREE_H

#include "Workload.h"

#include <orbel/orbel.h>

#include <cstddef>
#include <string_view>
#include <vector>

/// A tree of the library with the operations that are measured; the floors have the same.
class LibraryTree {
public:
    static constexpr std::string_view name = "library";

    LibraryTree();
    LibraryTree(const LibraryTree&) = delete;
    LibraryTree& operator=(const LibraryTree&) = delete;
    ~LibraryTree();

    /// One kind-prefixed path per leaf, so every leaf also carries the handler that kinds put on it.
    void build(Workload& workload);
    void makeObservers(std::size_t count);
    void observeAll(Workload& workload);
    void observeOne(Workload::Path& path);

    bool set(Workload::Path& path, Workload::Value& value) { return m_root.setFieldData(path.chars(), value.chars()); }

    const char* get(Workload::Path& path) {
        char* text = nullptr;
        m_root.getFieldData(path.chars(), &text);
        return text;
    }

    /// Takes every field out of its parent and deletes it, from the root down. Not deleteChildren: that spares
    /// observed fields, and what kinds create is observed by the handler they put on it.
    void destroy();

    /// Calls of all observers so far.
    static std::size_t calls();

private:
    class CountingHandler final : public DataHandler {
    public:
        void onChange(DataField& field, bool changed) override;
        void onChange(DataField& field, bool changed, int from, int to) override;
    };

    Orbel m_root;
    std::vector<CountingHandler> m_handlers;
};

#endif
