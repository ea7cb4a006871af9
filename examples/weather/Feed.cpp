#include "Feed.h"

namespace {

// Interfaces with char* take texts they may write to, so literals need an array.
char treeName[] = "weather";

/// Kinds make what is missing on the way: "node:Seattle/string:wind" is a structure and, in it, a value.
void create(Orbel& tree, const std::string& city, std::string_view value) {
    std::string path = "node:" + city + "/string:" + std::string(value);
    tree.getField(path.data(), 0, 1);
}

void unregisterAll(DataNode& node) {
    std::vector<DataField*> children;
    node.getFieldsVector(&children);
    for (DataField* child : children) {
        if (child->isOfType(DataNode::getClassType()) != 0)
            unregisterAll(static_cast<DataNode&>(*child));
        child->unregisterAllHandlers();
    }
}

} // namespace

Feed::Feed(const std::vector<std::string>& cities) : m_tree(treeName), m_cities(cities.size()) {
    constexpr std::string_view weekName = "last_seven_highs";
    for (std::size_t index = 0; index < cities.size(); ++index) {
        City& city = m_cities[index];
        for (std::size_t column = 0; column < columnNames.size(); ++column) {
            create(m_tree, cities[index], columnNames[column]);
            city.paths[column] = cities[index] + '/' + std::string(columnNames[column]);
        }
        create(m_tree, cities[index], weekName);
        city.weekPath = cities[index] + '/' + std::string(weekName);
        m_tree.setFieldSize(city.weekPath.data(), static_cast<int>(daysInWeek));
    }
}

Feed::~Feed() {
    // A field made by a kind carries a handler of the tree's own, and deleteChildren spares whatever is observed.
    unregisterAll(m_tree);
    m_tree.deleteChildren();
}

void Feed::observe(std::size_t city, Column column, DataHandler& handler) {
    m_tree.registerHandler(m_cities[city].paths[static_cast<std::size_t>(column)].data(), &handler, 0);
}

void Feed::observeWeek(std::size_t city, DataHandler& handler) {
    m_tree.registerHandler(m_cities[city].weekPath.data(), &handler, 0);
}

void Feed::write(const std::vector<Observation>& day) {
    for (const Observation& observation : day) {
        City& city = m_cities[observation.city];
        for (std::size_t column = 0; column < columnNames.size(); ++column) {
            std::string text = observation.texts[column];
            if (m_tree.setFieldData(city.paths[column].data(), text.data()))
                ++m_valuesSet;
        }
        writeWeek(city, observation.text(Column::High));
    }
    ++m_daysWritten;
}

void Feed::writeWeek(City& city, const std::string& high) {
    city.highs.push_back(high);
    if (city.highs.size() > daysInWeek)
        city.highs.pop_front();
    std::vector<char*> texts;
    for (std::string& text : city.highs)
        texts.push_back(text.data());
    if (m_tree.setFieldData(city.weekPath.data(), &texts, 0, -1))
        m_valuesSet += texts.size();
}
