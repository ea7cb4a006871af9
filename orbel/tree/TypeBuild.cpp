#include "TypeBuild.h"

#include "../types/TypeLimits.h"
#include "Limits.h"
#include "TreeState.h"

TypeBuild::TypeBuild(const DataObjectType& type)
    : m_type(&type), m_outer(treeState.builds), m_depth(m_outer ? m_outer->m_depth + 1 : 1),
      m_made(m_outer ? m_outer->m_made : 0) {
    treeState.builds = this;
}

TypeBuild::~TypeBuild() {
    if (m_outer)
        m_outer->m_made = m_made;
    treeState.builds = m_outer;
}

bool TypeBuild::admits(const DataObjectType& type) {
    for (const TypeBuild* build = treeState.builds; build; build = build->m_outer)
        if (build->m_type == &type)
            return false;
    return !treeState.builds || treeState.builds->m_depth < limits::maxTypeNesting;
}

bool TypeBuild::admitsOneMore() {
    return !treeState.builds || treeState.builds->m_made++ < limits::maxElements;
}
