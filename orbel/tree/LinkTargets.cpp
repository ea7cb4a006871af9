#include "LinkTargets.h"

#include <orbel/tree/DataField.h>

void LinkTargets::releaseSilent(const DataField& source) {
    for (DataField* clone : m_silent)
        if (clone->m_linkSource == &source)
            clone->m_linkSource = nullptr;
    m_silent.clear();
}
