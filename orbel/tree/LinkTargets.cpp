#include "LinkTargets.h"

#include <orbel/tree/DataField.h>

void LinkTargets::releaseSilent(const DataField& source) {
    // Followers of another field that shares this list stay: they must be told when that one dies.
    const auto released = std::remove_if(m_silent.begin(), m_silent.end(), [&](DataField* clone) {
        if (clone->m_linkSource != &source)
            return false;
        clone->m_linkSource = nullptr;
        return true;
    });
    m_silent.erase(released, m_silent.end());
}
