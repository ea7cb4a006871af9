#include "FieldWatch.h"

#include <algorithm>

void FieldWatch::fieldEnds(DataField& field) {
    treeState.disturb();
    for (FieldWatch* watch = treeState.watches; watch; watch = watch->m_outer)
        if (watch->m_field == &field)
            watch->m_field = nullptr;
    for (FieldListWatch* watch = treeState.listWatches; watch; watch = watch->m_outer)
        std::replace(watch->m_fields.begin(), watch->m_fields.end(), &field, static_cast<DataField*>(nullptr));
}

FieldListWatch::FieldListWatch(std::vector<DataField*>& fields) : m_fields(fields), m_outer(treeState.listWatches) {
    treeState.listWatches = this;
}

FieldListWatch::~FieldListWatch() {
    treeState.listWatches = m_outer;
}
