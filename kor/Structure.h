#ifndef KOR_STRUCTURE_H
#define KOR_STRUCTURE_H

#include "PlugIn.h"

#include <orbel/orbel.h>

#include <string>

/// A plug-in that stands for a node of the tree: plug-ins on the containers below its own register relative to it. With
/// "TypeStr" the node is made of that object type, or turned into it.
class KorStructure : public KorPlugIn<korDataStructureHandler> {
public:
    using KorPlugIn::KorPlugIn;

protected:
    /// Makes the node where the plug-in will register: a registered path can name no array's type. Only for a plain
    /// field name, when there is a type.
    void makeNode(const std::string& beforeName, const std::string& behindName) {
        const std::string name = setting("FieldName");
        if (setting("TypeStr").empty() || name.find_first_of("*/$:[") != std::string::npos)
            return;
        korDataStructureHandler* parent = nullptr;
        int index = 0;
        getParentHandler(&parent, &index);
        auto* node = parent ? dynamic_cast<DataNode*>(parent->getField()) : nullptr;
        if (node)
            index += parent->getOffset();
        else
            node = static_cast<Orbel*>(getOrbel());
        std::string path = beforeName + name + behindName;
        if (node)
            node->getField(path.data(), index, 1);
    }
};

#endif
