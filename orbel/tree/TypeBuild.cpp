#include "TypeBuild.h"

#include "../types/TypeLimits.h"
#include "Limits.h"
#include "TreeState.h"

#include <algorithm>

TypeBuild::TypeBuild(const DataObjectType* type)
    : m_type(type), m_outer(treeState.builds), m_depth((m_outer ? m_outer->m_depth : 0) + (type ? 1 : 0)),
      m_allowed(type ? limits::maxFieldsOfObject : limits::maxElements) {
    if (m_outer)
        m_allowed = std::min(m_allowed, m_outer->m_allowed - m_outer->m_made);
    treeState.builds = this;
}

TypeBuild::~TypeBuild() {
    if (m_outer)
        m_outer->m_made += m_made;
    treeState.builds = m_outer;
}

bool TypeBuild::admits(const DataObjectType& type) {
    for (const TypeBuild* build = treeState.builds; build; build = build->m_outer)
        if (build->m_type == &type)
            return false;
    return !treeState.builds || treeState.builds->m_depth < limits::maxTypeNesting;
}

bool TypeBuild::admitsField() {
    return admitsElement() || treeState.builds->m_depth == 1;
}

bool TypeBuild::admitsElement() {
    TypeBuild* build = treeState.builds;
    if (build->m_made == build->m_allowed)
        return false;
    ++build->m_made;
    return true;
}
