#ifndef ORBEL_TREE_LINKTARGETS_H
#define ORBEL_TREE_LINKTARGETS_H

#include "FieldWatch.h"
#include "Limits.h"
#include "NestedCall.h"
#include "TreeState.h"

#include <cstddef>
#include <map>
#include <unordered_map>
#include <unordered_set>

class DataField;

/// The fields that follow a field and its clones, in the order in which they were linked. Finding and removing one
/// does not depend on how many there are.
class LinkTargets {
public:
    int owners = 0;

    bool empty() const { return m_targets.empty(); }
    DataField* front() const { return m_targets.begin()->second; }
    bool contains(const DataField* field) const { return m_turns.count(field) != 0; }
    void append(DataField* field);
    void remove(const DataField* field);

    /// Clones name their origin's source without being its targets: they are told when it dies, nothing else.
    void addSilent(DataField* clone) { m_silent.insert(clone); }
    void removeSilent(DataField* clone) { m_silent.erase(clone); }
    /// The source dies or becomes a copy of another field: its silent followers forget it.
    void releaseSilent(const DataField& source);

    /// False when no field can name the owner of this list, or one of its clones, as its source.
    bool isFollowed() const { return !m_targets.empty() || !m_silent.empty(); }

    /// Calls `call` on each target by position: targets appended meanwhile are reached, and one is skipped for each
    /// that is removed at or before the position of the walk. Ends when `source` dies; the caller keeps the list
    /// alive.
    template <class Call>
    void walk(DataField& source, Call call) const {
        const NestedCall depth(treeState.linkDepth);
        if (depth.isDeeperThan(limits::maxLinkDepth))
            return;
        const FieldWatch watch(source);
        Walk walk(m_walks);
        while (!watch.ended()) {
            DataField* target = next(walk);
            if (!target)
                return;
            call(*target);
        }
    }

private:
    /// A walk under way; lives on the stack.
    struct Walk {
        explicit Walk(Walk*& innermost) : outer(innermost), m_innermost(innermost) { innermost = this; }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
        ~Walk() { m_innermost = outer; }

        std::size_t turn = 0;
        std::size_t skips = 0;
        Walk* outer;

    private:
        Walk*& m_innermost;
    };

    DataField* next(Walk& walk) const;

    /// By their turns, which count up from 1.
    std::map<std::size_t, DataField*> m_targets;
    std::unordered_map<const DataField*, std::size_t> m_turns;
    std::size_t m_lastTurn = 0;
    std::unordered_set<DataField*> m_silent;
    mutable Walk* m_walks = nullptr;
};

#endif
