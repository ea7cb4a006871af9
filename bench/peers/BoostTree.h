#ifndef BENCH_PEERS_BOOSTTREE_H
#define BENCH_PEERS_BOOSTTREE_H

#include "../Results.h"
#include "../Workload.h"

#include <boost/property_tree/ptree.hpp>

#include <cstddef>
#include <string>
#include <string_view>

/// Boost.PropertyTree, a tree of texts that are reached by path. It has no observers: a set tells nobody.
class BoostTree {
public:
    static constexpr std::string_view name = boostTree;
    static constexpr bool observes = false;

    void build(Workload& workload) {
        for (const Workload::Path& path : workload.paths())
            m_tree.put(pathOf(path), "");
    }

    void makeObservers(std::size_t /*count*/) {}
    void observeAll(Workload& /*workload*/) {}
    void observeOne(Workload::Path& /*path*/) {}

    bool set(Workload::Path& path, Workload::Value& value) {
        const auto leaf = m_tree.get_child_optional(pathOf(path));
        if (!leaf)
            return false;
        leaf->data().assign(value.view());
        return true;
    }

    const char* get(Workload::Path& path) {
        const auto leaf = m_tree.get_child_optional(pathOf(path));
        return leaf ? leaf->data().c_str() : nullptr;
    }

    void destroy() { m_tree.clear(); }
    static std::size_t calls() { return 0; }

private:
    using Tree = boost::property_tree::ptree;

    static Tree::path_type pathOf(const Workload::Path& path) { return {std::string(path.view()), '/'}; }

    Tree m_tree;
};

#endif
