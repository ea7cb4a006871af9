#include "DatePlugin.h"

DatePlugin::DatePlugin(BoardState& board, std::size_t city)
    : BoardPlugin("WeatherDate"), m_board(board), m_city(city) {}

void DatePlugin::onDataChange(char* /*fieldName*/, char* value) {
    m_board.deliverDate(m_city, value);
}
