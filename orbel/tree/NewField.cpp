#include "NewField.h"

#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataStructure.h>

#include "ChildTable.h"

void NewField::discard(DataField& field) {
    discardChildren(field);
    delete &field;
}

void NewField::discardChildren(DataField& field) {
    if (field.isOfType(DataArray::getClassType()) != 0) {
        auto& array = static_cast<DataArray&>(field);
        for (int index = 0; DataObject* element = array.getObject(index); ++index)
            discardChildren(*element);
        array.removeChildren();
        return;
    }
    if (field.isOfType(DataStructure::getClassType()) == 0)
        return;
    ChildTable& children = *static_cast<DataStructure&>(field).m_children;
    // What a copy shares is not new.
    while (children.hasOneStructure() && children.size() > 0)
        if (DataField* child = children.takeFirst())
            discard(*child);
}
