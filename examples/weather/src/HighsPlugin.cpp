#include "HighsPlugin.h"

HighsPlugin::HighsPlugin(BoardState& board, std::size_t city)
    : BoardPlugin("WeatherHighs"), m_board(board), m_city(city) {}

void HighsPlugin::onDataChange(char* /*fieldName*/, std::vector<std::string>& values, int from, int to) {
    m_board.deliverHighs(m_city, values, from, to);
}
