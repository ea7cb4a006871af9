#ifndef ORBEL_TREE_FIELDWATCH_H
#define ORBEL_TREE_FIELDWATCH_H

#include "TreeState.h"

#include <vector>

class DataField;

/// Tells an operation whether the field it works on was destroyed by a callback meanwhile. Lives on the stack; the
/// watches of all operations under way form one chain, which the destructor of a field walks.
class FieldWatch {
public:
    explicit FieldWatch(DataField& field) : m_field(&field), m_outer(treeState.watches) { treeState.watches = this; }
    FieldWatch(const FieldWatch&) = delete;
    FieldWatch& operator=(const FieldWatch&) = delete;
    ~FieldWatch() { treeState.watches = m_outer; }

    bool ended() const { return !m_field; }

    static void fieldEnds(DataField& field);

private:
    DataField* m_field;
    FieldWatch* m_outer;
};

/// The same for a list of fields: an entry becomes null when its field is destroyed. Lives on the stack.
class FieldListWatch {
public:
    explicit FieldListWatch(std::vector<DataField*>& fields);
    FieldListWatch(const FieldListWatch&) = delete;
    FieldListWatch& operator=(const FieldListWatch&) = delete;
    ~FieldListWatch();

private:
    friend class FieldWatch;

    std::vector<DataField*>& m_fields;
    FieldListWatch* m_outer;
};

#endif
