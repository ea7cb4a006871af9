#ifndef ORBEL_TESTS_SUPPORT_SHAPE_H
#define ORBEL_TESTS_SUPPORT_SHAPE_H

#include <orbel/orbel.h>
#include <support/TextList.h>

#include <string>
#include <vector>

/// A field with everything below it: "label{pos{x=0,y=0},tags=a|b,points[Point-#0{x=0,y=0}]}". A value that nothing
/// was stored to shows as "x?".
inline std::string shapeOf(DataField& field) {
    std::string shape = field.getName();
    if (field.isOfType(DataArray::getClassType()) != 0) {
        auto& array = static_cast<DataArray&>(field);
        shape += '[';
        for (int index = 0; index < array.getSize(); ++index)
            shape += (index == 0 ? "" : ",") + shapeOf(*array.getObject(index));
        return shape + ']';
    }
    if (field.isOfType(DataStructure::getClassType()) != 0) {
        std::vector<DataField*> children;
        static_cast<DataStructure&>(field).getFieldsVector(&children);
        shape += '{';
        for (DataField* child : children)
            shape += (child == children.front() ? "" : ",") + shapeOf(*child);
        return shape + '}';
    }
    return shape + (field.getDataInitialized() != 0 ? '=' + allTexts(field) : std::string("?"));
}

#endif
