#ifndef WEATHER_CELLHANDLER_H
#define WEATHER_CELLHANDLER_H

#include "BoardState.h"

#include <orbel/orbel.h>

/// Observes one value of one city's day of today.
class CellHandler : public DataHandler {
public:
    CellHandler(BoardState& board, std::size_t city, Column column);

    void onChange(DataField& field, bool changed) override;

private:
    BoardState& m_board;
    std::size_t m_city;
    Column m_column;
};

#endif
