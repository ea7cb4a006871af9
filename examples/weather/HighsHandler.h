#ifndef WEATHER_HIGHSHANDLER_H
#define WEATHER_HIGHSHANDLER_H

#include "BoardState.h"

#include <orbel/orbel.h>

/// Observes the seven highs of one city. A field of several values tells which of them were written.
class HighsHandler : public DataHandler {
public:
    HighsHandler(BoardState& board, std::size_t city);

    void onChange(DataField& field, bool changed, int from, int to) override;

private:
    BoardState& m_board;
    std::size_t m_city;
};

#endif
