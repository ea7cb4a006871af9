#include "Observers.h"

Observers::Observers(WeatherTree& tree, BoardState& board) : m_tree(tree) {
    for (std::size_t city = 0; city < board.cities().size(); ++city) {
        const std::string path = pathOf(board.cities()[city].name);
        for (std::size_t column = 0; column < columnNames.size(); ++column)
            observe(path + "/today/" + std::string(columnNames[column]),
                    m_cells.emplace_back(board, city, static_cast<Column>(column)));
        observe(path + "/highs", m_highs.emplace_back(board, city));
        for (std::size_t day = 0; day < daysInWeek; ++day)
            observe(path + "/week[" + std::to_string(day) + "]/weather", m_skies.emplace_back(board, city, day));
    }
}

void Observers::observe(const std::string& path, DataHandler& handler) {
    // Registering alone would create a field for a path that names none.
    m_tree.field(path);
    m_tree.root().registerHandler(std::string(path).data(), &handler, 0);
}
