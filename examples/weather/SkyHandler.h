#ifndef WEATHER_SKYHANDLER_H
#define WEATHER_SKYHANDLER_H

#include "BoardState.h"

#include <orbel/orbel.h>

/// Observes the weather of one element of a city's week. Copies tell their handlers as commands do.
class SkyHandler : public DataHandler {
public:
    SkyHandler(BoardState& board, std::size_t city, std::size_t day);

    void onChange(DataField& field, bool changed) override;

private:
    BoardState& m_board;
    std::size_t m_city;
    std::size_t m_day;
};

#endif
