#ifndef ORBEL_TREE_LINKTARGETS_H
#define ORBEL_TREE_LINKTARGETS_H

#include "FieldWatch.h"
#include "Limits.h"
#include "NestedCall.h"
#include "TreeState.h"

#include <algorithm>
#include <cstddef>
#include <vector>

class DataField;

/// The fields that follow a field and its clones, in the order in which they were linked.
class LinkTargets {
public:
    int owners = 0;

    bool empty() const { return m_targets.empty(); }
    DataField* front() const { return m_targets.front(); }
    bool contains(const DataField* field) const { return count(m_targets, field) != 0; }
    void append(DataField* field) { m_targets.push_back(field); }
    void remove(const DataField* field) { erase(m_targets, field); }

    /// Clones name their origin's source without being its targets: they are told when it dies, nothing else.
    void addSilent(DataField* clone) { m_silent.push_back(clone); }
    void removeSilent(const DataField* clone) { erase(m_silent, clone); }
    /// The source dies: its silent followers forget it.
    void releaseSilent(const DataField& source);

    /// Calls `call` on each target by position, re-reading the size. Ends when `source` dies; the caller keeps the
    /// list alive.
    template <class Call>
    void walk(DataField& source, Call call) const {
        const NestedCall depth(treeState.linkDepth);
        if (depth.isDeeperThan(limits::maxLinkDepth))
            return;
        const FieldWatch watch(source);
        for (std::size_t at = 0; !watch.ended() && at < m_targets.size(); ++at)
            call(*m_targets[at]);
    }

private:
    using Fields = std::vector<DataField*>;

    static std::ptrdiff_t count(const Fields& fields, const DataField* field) {
        return std::count(fields.begin(), fields.end(), field);
    }
    static void erase(Fields& fields, const DataField* field) {
        fields.erase(std::remove(fields.begin(), fields.end(), field), fields.end());
    }

    Fields m_targets;
    Fields m_silent;
};

#endif
