#ifndef ORBEL_TREE_OWNERSET_H
#define ORBEL_TREE_OWNERSET_H

#include <orbel/tree/EitherPointer.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>

/// Who holds an item, each owner once. Items seldom have more than one owner, and one takes no memory of its own; a few
/// take it once, whatever comes and goes.
class OwnerSet {
public:
    OwnerSet() = default;
    OwnerSet(const OwnerSet& other);
    OwnerSet& operator=(const OwnerSet& other);
    ~OwnerSet();

    void swap(OwnerSet& other) { std::swap(m_owners, other.m_owners); }
    bool empty() const { return m_owners.second() ? m_owners.second()->isEmpty() : !m_owners; }
    /// False also where owners take memory.
    bool isOnly(const void* owner) const { return owner && m_owners.first() == owner; }
    /// False when it was there already.
    bool insert(void* owner) {
        if (m_owners || !fitsAlone(owner))
            return !isOnly(owner) && insertAnother(owner);
        m_owners = EitherPointer<void, Many>::ofFirst(owner);
        return true;
    }
    /// False when it was not there.
    bool erase(void* owner);

private:
    struct Many {
        bool isEmpty() const { return count == 0 && others.empty(); }
        /// Among the few; null when it is not there.
        void** find(const void* owner);
        bool insert(void* owner);
        bool erase(void* owner);

        std::array<void*, 8> few{};
        std::size_t count = 0;
        std::set<void*> others;
    };

    /// Anything can be an owner: null and odd addresses do not fit into the one word.
    static bool fitsAlone(const void* owner) { return owner && reinterpret_cast<std::uintptr_t>(owner) % 2 == 0; }
    bool insertAnother(void* owner);

    EitherPointer<void, Many> m_owners;
};

#endif
