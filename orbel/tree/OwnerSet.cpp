#include <orbel/tree/OwnerSet.h>

#include <algorithm>
#include <memory>

void** OwnerSet::Many::find(const void* owner) {
    void** const end = few.data() + count;
    void** const found = std::find(few.data(), end, owner);
    return found == end ? nullptr : found;
}

bool OwnerSet::Many::insert(void* owner) {
    if (find(owner))
        return false;
    if (count == few.size())
        return others.insert(owner).second;
    if (!others.empty() && others.count(owner) != 0)
        return false;
    few[count++] = owner;
    return true;
}

bool OwnerSet::Many::erase(void* owner) {
    void** const found = find(owner);
    if (!found)
        return others.erase(owner) != 0;
    *found = few[--count];
    return true;
}

OwnerSet::OwnerSet(const OwnerSet& other)
    : m_owners(other.m_owners.second() ? decltype(m_owners)::ofSecond(new Many(*other.m_owners.second()))
                                       : other.m_owners) {}

OwnerSet& OwnerSet::operator=(const OwnerSet& other) {
    OwnerSet copy(other);
    swap(copy);
    return *this;
}

OwnerSet::~OwnerSet() {
    delete m_owners.second();
}

bool OwnerSet::insertAnother(void* owner) {
    if (Many* many = m_owners.second())
        return many->insert(owner);
    auto many = std::make_unique<Many>();
    if (void* alone = m_owners.first())
        many->insert(alone);
    many->insert(owner);
    m_owners = decltype(m_owners)::ofSecond(many.release());
    return true;
}

bool OwnerSet::erase(void* owner) {
    if (Many* many = m_owners.second())
        return many->erase(owner);
    if (!m_owners || m_owners.first() != owner)
        return false;
    m_owners = {};
    return true;
}
