#ifndef ORBEL_TREE_LINKTARGETS_H
#define ORBEL_TREE_LINKTARGETS_H

#include "FieldWatch.h"
#include "Limits.h"
#include "NestedCall.h"
#include "TreeState.h"

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

class DataField;

/// The fields that follow a field and its clones, in the order in which they were linked. Finding and removing one
/// does not depend on how many there are.
class LinkTargets {
public:
    int owners = 0;

    bool empty() const { return m_live == 0; }
    DataField* front() const { return m_targets[m_first]; }
    bool contains(const DataField* field) const { return positionOf(field) != m_targets.size(); }
    /// Without memory for it nothing is changed.
    void append(DataField* field);
    void remove(const DataField* field);

    /// Clones name their origin's source without being its targets: they are told when it dies, nothing else.
    void addSilent(DataField* clone) { m_silent.insert(clone); }
    /// What takes memory of adding one later.
    using SilentFollower = std::unordered_set<DataField*>::node_type;
    SilentFollower prepareSilent(DataField* clone);
    void addSilent(SilentFollower clone) { m_silent.insert(std::move(clone)); }
    void removeSilent(DataField* clone) { m_silent.erase(clone); }
    /// The source dies or becomes a copy of another field: its silent followers forget it.
    void releaseSilent(const DataField& source);

    /// False when no field can name the owner of this list, or one of its clones, as its source.
    bool isFollowed() const { return m_live != 0 || !m_silent.empty(); }

    /// Calls `call` on each target by position: targets appended meanwhile are reached, and one is skipped for each
    /// that is removed at or before the position of the walk. Ends when `source` dies, which is false; the caller keeps
    /// the list alive.
    template <class Call>
    bool walk(DataField& source, Call call) const {
        const NestedCall depth(treeState.linkDepth);
        if (depth.isDeeperThan(limits::maxLinkDepth))
            return true;
        const FieldWatch watch(source);
        Walk walk(m_walks);
        while (!watch.ended()) {
            DataField* target = next(walk);
            if (!target)
                return true;
            call(*target);
        }
        return false;
    }

private:
    /// A walk under way; lives on the stack.
    struct Walk {
        explicit Walk(Walk*& innermost) : outer(innermost), m_innermost(innermost) { innermost = this; }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
        ~Walk() { m_innermost = outer; }

        /// The position behind the target that was called last.
        std::size_t next = 0;
        std::size_t skips = 0;
        Walk* outer;

    private:
        Walk*& m_innermost;
    };

    /// So few are looked through faster than hashed.
    static constexpr std::size_t fewTargets = 8;

    DataField* next(Walk& walk) const {
        while (walk.next < m_targets.size())
            if (DataField* target = m_targets[walk.next++])
                if (walk.skips == 0 || walk.skips-- == 0)
                    return target;
        return nullptr;
    }
    std::size_t positionOf(const DataField* field) const;
    void notePosition(DataField* field);
    void dropHoles();

    /// In order; null for those that were removed, which are dropped when no walk is under way.
    std::vector<DataField*> m_targets;
    /// Where each stands; empty while there are few.
    std::unordered_map<const DataField*, std::size_t> m_positions;
    std::size_t m_live = 0;
    /// None before this one is left.
    std::size_t m_first = 0;
    std::unordered_set<DataField*> m_silent;
    mutable Walk* m_walks = nullptr;
};

#endif
