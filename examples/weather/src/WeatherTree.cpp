#include "WeatherTree.h"

#include "BoardPlugin.h"
#include "Columns.h"
#include "InputError.h"

namespace {

// Interfaces with char* take texts they may write to, so literals need an array.
char cityType[] = "City";
char createCities[] = "DataHashTable:cities:City";
char createHeadline[] = "Headline:headline";

void checkTypes() {
    for (std::string type : {"Day", "City", "Headline"})
        if (!DataObject::getObjectTypeByName(type.data()))
            throw InputError("no type file (*.qx) declares the type " + type);
}

} // namespace

WeatherTree::WeatherTree(const std::vector<std::string>& cities)
    : m_root(*IDataHandlerImpl::getOrbel(boardScene, true)) {
    checkTypes();
    m_root.getField(createHeadline, 0, 1);
    addCities(cities);
    checkFields(pathOf(cities.front()));
}

void WeatherTree::addCities(const std::vector<std::string>& cities) {
    auto& table = static_cast<DataHashTable&>(*m_root.getField(createCities, 0, 1));
    // The path types only entries that are already there.
    table.setObjectType(DataObject::getObjectTypeByName(cityType));
    for (std::string name : cities)
        table.newObject(name.data());
}

void WeatherTree::checkFields(const std::string& city) {
    // Registering a handler would create a field for a path that names none.
    for (const char* name : {"city", "weather", "high", "highs", "caption", "words"})
        field(std::string("headline/") + name);
    for (const char* name : {"/name", "/highs"})
        field(city + name);
    for (const std::string_view column : columnNames) {
        field(city + "/today/" + std::string(column));
        field(city + "/week[0]/" + std::string(column));
    }
}

DataField& WeatherTree::field(const std::string& path) {
    DataField* found = m_root.getField(std::string(path).data(), 0, 1);
    if (!found)
        throw InputError("the type files (*.qx) declare no field " + path);
    return *found;
}

DataNode& WeatherTree::node(const std::string& path) {
    DataField& found = field(path);
    if (found.isOfType(DataNode::getClassType()) == 0)
        throw InputError("the type files (*.qx) declare no fields below " + path);
    return static_cast<DataNode&>(found);
}

std::string pathOf(const std::string& city) {
    return "cities[" + city + ']';
}
