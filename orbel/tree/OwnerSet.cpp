#include <orbel/tree/OwnerSet.h>

#include <memory>

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
        return many->insert(owner).second;
    auto many = std::make_unique<Many>();
    if (void* alone = m_owners.first())
        many->insert(alone);
    many->insert(owner);
    m_owners = decltype(m_owners)::ofSecond(many.release());
    return true;
}

bool OwnerSet::erase(void* owner) {
    if (Many* many = m_owners.second())
        return many->erase(owner) != 0;
    if (!m_owners || m_owners.first() != owner)
        return false;
    m_owners = {};
    return true;
}
