#ifndef ORBEL_TREE_FIELDREF_H
#define ORBEL_TREE_FIELDREF_H

#include <orbel/tree/SharedPart.h>

class DataField;

/// What a field leaves behind for those that still point to it. Turns to null when the field is destroyed.
struct FieldHold {
    int owners = 0;
    DataField* field = nullptr;
};

/// A pointer to a field that turns to null when the field is destroyed. Takes no reference in the sense of
/// DataBaseType::ref. So neither side touches the other when it dies, whichever goes first.
class FieldRef {
public:
    FieldRef() = default;
    explicit FieldRef(DataField* field);
    explicit FieldRef(const SharedPart<FieldHold>& hold) : m_hold(hold) {}

    DataField* get() const { return m_hold ? m_hold->field : nullptr; }

private:
    SharedPart<FieldHold> m_hold;
};

#endif
