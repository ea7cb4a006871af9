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
    /// The field name behind the kind that makes such a node; as it is when there is no type, and when it does not
    /// begin with a plain name.
    void setTypedName(const std::string& beforeName, const std::string& behindName) {
        const std::string name = setting("FieldName");
        if (!setting("TypeStr").empty() && name.find_first_of("*/$:") != 0)
            setFieldName((beforeName + name + behindName).c_str());
    }
};

#endif
