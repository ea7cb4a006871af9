#include "WeatherTree.h"

namespace {

// Interfaces with char* take texts they may write to, so literals need an array.
char treeName[] = "weather";
char cityType[] = "City";
char createCities[] = "DataHashTable:cities:City";
char createHeadline[] = "Headline:headline";

/// Deletes everything below a node. Fields made by a kind carry a handler of the tree's own, and neither deleteChildren
/// nor removeChildren deletes what is observed or still has children.
void freeBelow(DataNode& node) {
    if (node.isOfType(DataArray::getClassType()) != 0) {
        auto& array = static_cast<DataArray&>(node);
        for (int index = 0; index < array.getSize(); ++index)
            freeBelow(*array.getObject(index));
        array.removeChildren();
        return;
    }
    std::vector<DataField*> children;
    node.getFieldsVector(&children);
    for (DataField* child : children) {
        child->unregisterAllHandlers();
        if (child->isOfType(DataNode::getClassType()) != 0)
            freeBelow(static_cast<DataNode&>(*child));
    }
    node.deleteChildren();
}

} // namespace

WeatherTree::WeatherTree(const std::string& typesFolder, const std::vector<std::string>& cities)
    : m_typesFolder(typesFolder), m_root(treeName) {
    loadTypes();
    m_root.getField(createHeadline, 0, 1);
    auto& table = static_cast<DataHashTable&>(*m_root.getField(createCities, 0, 1));
    // The path types only entries that are already there.
    table.setObjectType(DataObject::getObjectTypeByName(cityType));
    for (std::string name : cities)
        table.newObject(name.data());
}

WeatherTree::~WeatherTree() {
    freeBelow(m_root);
}

DataField& WeatherTree::field(const std::string& path) {
    DataField* found = m_root.getField(std::string(path).data(), 0, 1);
    if (!found)
        throw TypesError(m_typesFolder + ": the types declare no field " + path);
    return *found;
}

void WeatherTree::loadTypes() {
    DataObject::set_ConfigFolder(m_typesFolder.data());
    DataObject::init();
    for (std::string type : {"Day", "City", "Headline"})
        if (!DataObject::getObjectTypeByName(type.data()))
            throw TypesError(m_typesFolder + ": no type file (*.qx) declares the type " + type);
}

std::string pathOf(const std::string& city) {
    return "cities[" + city + ']';
}
