#ifndef ORBEL_TREE_NESTEDCALL_H
#define ORBEL_TREE_NESTEDCALL_H

/// Counts in `depth` how many calls are inside each other; one lives on the stack of each.
class NestedCall {
public:
    explicit NestedCall(int& depth) : m_depth(depth) { ++m_depth; }
    NestedCall(const NestedCall&) = delete;
    NestedCall& operator=(const NestedCall&) = delete;
    ~NestedCall() { --m_depth; }

    bool isOutermost() const { return m_depth == 1; }
    bool isDeeperThan(int limit) const { return m_depth > limit; }

private:
    int& m_depth;
};

#endif
