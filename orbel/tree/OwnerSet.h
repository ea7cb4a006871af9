#ifndef ORBEL_TREE_OWNERSET_H
#define ORBEL_TREE_OWNERSET_H

#include <orbel/tree/EitherPointer.h>

#include <set>
#include <utility>

/// Who holds an item, each owner once. Items seldom have more than one owner, and one takes no memory of its own.
class OwnerSet {
public:
    OwnerSet() = default;
    OwnerSet(const OwnerSet& other);
    OwnerSet& operator=(const OwnerSet& other);
    ~OwnerSet();

    void swap(OwnerSet& other) { std::swap(m_owners, other.m_owners); }
    bool empty() const { return m_owners.second() ? m_owners.second()->empty() : !m_owners; }
    /// False also where owners take memory.
    bool isOnly(const void* owner) const { return owner && m_owners.first() == owner; }
    /// False when it was there already.
    bool insert(void* owner) { return !isOnly(owner) && insertAnother(owner); }
    /// False when it was not there.
    bool erase(void* owner);

private:
    bool insertAnother(void* owner);

    using Many = std::set<void*>;

    EitherPointer<void, Many> m_owners;
};

#endif
