#ifndef WEATHER_WEEKHANDLER_H
#define WEATHER_WEEKHANDLER_H

#include "BoardState.h"

#include <orbel/orbel.h>

/// Observes the seven-day value of one city. A field of several values tells which of them were written.
class WeekHandler : public DataHandler {
public:
    WeekHandler(BoardState& board, std::size_t city);

    void onChange(DataField& field, bool changed, int from, int to) override;

private:
    BoardState& m_board;
    std::size_t m_city;
};

#endif
