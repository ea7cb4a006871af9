#include "HighsHandler.h"

HighsHandler::HighsHandler(BoardState& board, std::size_t city) : m_board(board), m_city(city) {
    setNotifyOnValueChange(1);
}

void HighsHandler::onChange(DataField& field, bool changed, int from, int to) {
    std::vector<std::string> texts;
    for (int index = from; index <= to; ++index)
        texts.push_back(*field.getData(index));
    m_board.deliverHighs(m_city, from, to, texts, changed);
}
