#include "CellHandler.h"

CellHandler::CellHandler(BoardState& board, std::size_t city, Column column)
    : m_board(board), m_city(city), m_column(column) {
    // Without it every store counts as a change.
    setNotifyOnValueChange(1);
}

void CellHandler::onChange(DataField& field, bool changed) {
    m_board.deliver(m_city, m_column, *field.getData(0), changed);
}
