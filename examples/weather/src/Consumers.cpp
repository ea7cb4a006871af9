#include "Consumers.h"

#include "Tables.h"

Consumers::Consumers(WeatherTree& tree, BoardState& board) : m_tree(tree) {
    DataNode& headline = m_tree.node("headline");
    add(std::make_unique<CaptionPlugin>(board), "city", headline);
    add(std::make_unique<WordsPlugin>(board), "weather", headline);
    for (std::size_t city = 0; city < board.cities().size(); ++city)
        addCity(board, city);
}

void Consumers::addCity(BoardState& board, std::size_t city) {
    const std::string path = pathOf(board.cities()[city].name);
    addToday(board, city, m_tree.node(path + "/today"));
    // Asks for seven values.
    add(std::make_unique<HighsPlugin>(board, city), "highs[7]", m_tree.node(path));
    addWeek(board, city, m_tree.node(path + "/week"));
}

void Consumers::addToday(BoardState& board, std::size_t city, DataNode& today) {
    add(std::make_unique<DatePlugin>(board, city), "date", today);
    for (std::size_t reading = 0; reading < readingNames.size(); ++reading)
        add(std::make_unique<ReadingPlugin>(board, city, static_cast<Reading>(reading)),
            std::string(readingNames[reading]), today);
    addSkies(board, city, board.cities()[city].today, today, 0);
}

void Consumers::addWeek(BoardState& board, std::size_t city, DataNode& week) {
    for (std::size_t day = 0; day < daysInWeek; ++day) {
        DayState& state = board.cities()[city].week.days[day];
        const int element = static_cast<int>(day);
        add(std::make_unique<DayPlugin>(board, city, state.date, ""), "date", week, element);
        addSkies(board, city, state, week, element);
    }
}

void Consumers::addSkies(BoardState& board, std::size_t city, DayState& day, DataNode& root, int index) {
    // A plug-in has one table; who wants the same field in several vocabularies registers several plug-ins.
    add(std::make_unique<DayPlugin>(board, city, day.sky, ""), "weather", root, index);
    add(std::make_unique<DayPlugin>(board, city, day.label, labelTable), "weather", root, index);
    add(std::make_unique<DayPlugin>(board, city, day.picture, pictureTable), "weather", root, index);
}

void Consumers::add(std::unique_ptr<BoardPlugin> plugin, const std::string& path, DataNode& root, int index) {
    plugin->registerHandler(path.c_str(), &root, index);
    m_plugins.push_back(std::move(plugin));
}
