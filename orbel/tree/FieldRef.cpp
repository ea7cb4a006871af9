#include <orbel/tree/FieldRef.h>

#include <orbel/tree/DataField.h>

FieldRef::FieldRef(DataField* field) : m_hold(field ? field->hold() : SharedPart<FieldHold>()) {}
