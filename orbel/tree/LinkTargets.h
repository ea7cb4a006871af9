#ifndef ORBEL_TREE_LINKTARGETS_H
#define ORBEL_TREE_LINKTARGETS_H

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

    /// The target, when there is just one; null may also mean that it was not the only one of late.
    DataField* only() const { return m_only; }

    /// Goes over the targets by position: those appended meanwhile are reached, and one is skipped for each that is
    /// removed at or before the position of the walk. Lives on the stack; the list must outlive it.
    class Walk {
    public:
        /// Passes over the first `skips`.
        Walk(const LinkTargets& list, std::size_t skips) : m_list(list), m_skips(skips), m_outer(list.m_walks) {
            list.m_walks = this;
        }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
        ~Walk() { m_list.m_walks = m_outer; }

        /// Null behind the last.
        DataField* next() {
            while (m_next < m_list.m_targets.size())
                if (DataField* target = m_list.m_targets[m_next++])
                    if (m_skips == 0 || m_skips-- == 0)
                        return target;
            return nullptr;
        }

    private:
        friend class LinkTargets;

        const LinkTargets& m_list;
        /// The position behind the target that was called last.
        std::size_t m_next = 0;
        std::size_t m_skips;
        Walk* m_outer;
    };

private:
    /// So few are looked through faster than hashed.
    static constexpr std::size_t fewTargets = 8;

    std::size_t positionOf(const DataField* field) const;
    void notePosition(DataField* field);
    void noteOnly() { m_only = m_targets.size() == 1 ? m_targets.front() : nullptr; }
    void dropHoles();

    /// Kept at hand: along a chain of links each is found through the one before it.
    DataField* m_only = nullptr;
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
