#include "Feed.h"

Feed::Feed(WeatherTree& tree, const std::vector<std::string>& cities) : m_tree(tree) {
    for (const std::string& name : cities) {
        m_cities.push_back({pathOf(name), {}});
        std::string command = pathOf(name) + "/name = " + name;
        m_tree.root().parseCommand(command.data(), 0);
    }
}

void Feed::write(const std::vector<Observation>& day) {
    for (const Observation& observation : day)
        write(m_cities[observation.city], observation);
    ++m_daysWritten;
}

void Feed::write(City& city, const Observation& observation) {
    // "cities[Seattle]/today/date = 2012-01-01; cities[Seattle]/today/precipitation = 0.0; ..."
    std::string commands;
    for (std::size_t column = 0; column < columnNames.size(); ++column)
        commands += city.path + "/today/" + std::string(columnNames[column]) + " = " + observation.texts[column] + "; ";

    city.highs.push_back(observation.text(Column::High));
    if (city.highs.size() > daysInWeek)
        city.highs.pop_front();
    // "cities[Seattle]/highs[5-6] = 12.8,10.6" on the second day. A copy command would not reach fields that follow.
    commands += city.path + "/highs[" + std::to_string(daysInWeek - city.highs.size()) + "-6] = ";
    for (const std::string& high : city.highs)
        commands += &high == &city.highs.front() ? high : ',' + high;
    m_tree.root().parseCommand(commands.data(), 0);
    m_valuesSet += columnNames.size() + city.highs.size();

    // The elements are copied in rising order, so each still holds what the one before it is to get.
    std::string copies =
        city.path + "/week[0-5] = " + city.path + "/week[1-6]; " + city.path + "/week[6] = " + city.path + "/today";
    m_tree.root().parseCopyCommand(copies.data());
}
