#ifndef KOR_STRUCTURE_H
#define KOR_STRUCTURE_H

#include "PlugIn.h"

#include <orbel/orbel.h>

#include <string>

/// A plug-in that stands for a node of the tree: plug-ins on the containers below its own register relative to it.
/// With "TypeStr" the node is made of that object type, or turned into it.
class KorStructure : public KorPlugIn<korDataStructureHandler> {
public:
    using KorPlugIn::KorPlugIn;

protected:
    /// Whether there is a type, and a field name that can be put behind it: one that begins with a plain name.
    bool hasTypedName() const { return !setting("TypeStr").empty() && setting("FieldName").find_first_of("*/$:") != 0; }

    /// The field name behind the kind that makes such a node; as it is without a type.
    void setTypedName(const std::string& beforeName, const std::string& behindName) {
        if (hasTypedName())
            setFieldName((beforeName + setting("FieldName") + behindName).c_str());
    }
};

#endif
