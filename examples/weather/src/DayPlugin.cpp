#include "DayPlugin.h"

DayPlugin::DayPlugin(BoardState& board, std::size_t city, Cell& cell, const std::string& table)
    : BoardPlugin("WeatherDay"), m_board(board), m_city(city), m_cell(cell) {
    setNotifyOnValueChange(1);
    if (!table.empty())
        convertBy(table);
}

void DayPlugin::onDataChange(char* /*fieldName*/, char* value) {
    m_board.deliverDay(m_city, m_cell, value);
}
