#ifndef WEATHER_OBSERVERS_H
#define WEATHER_OBSERVERS_H

#include "CellHandler.h"
#include "HighsHandler.h"
#include "SkyHandler.h"
#include "WeatherTree.h"

#include <deque>

/// All handlers of the board, each registered by the path of what it observes.
class Observers {
public:
    Observers(WeatherTree& tree, BoardState& board);

private:
    void observe(const std::string& path, DataHandler& handler);

    WeatherTree& m_tree;
    // Deques, because a registered handler must not move.
    std::deque<CellHandler> m_cells;
    std::deque<HighsHandler> m_highs;
    std::deque<SkyHandler> m_skies;
};

#endif
