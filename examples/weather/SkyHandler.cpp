#include "SkyHandler.h"

SkyHandler::SkyHandler(BoardState& board, std::size_t city, std::size_t day)
    : m_board(board), m_city(city), m_day(day) {
    setNotifyOnValueChange(1);
}

void SkyHandler::onChange(DataField& field, bool changed) {
    m_board.deliverSky(m_city, m_day, *field.getData(0), changed);
}
