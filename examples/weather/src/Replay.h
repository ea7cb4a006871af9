#ifndef WEATHER_REPLAY_H
#define WEATHER_REPLAY_H

#include "BoardState.h"
#include "Feed.h"
#include "Headline.h"

/// Writes one day after the other. The headline follows the first city, from half way on the second.
class Replay {
public:
    Replay(const Weather& weather, WeatherTree& tree, BoardState& board);

    void writeNextDay();

    std::size_t totalDays() const { return m_weather.days.size(); }
    const Feed& feed() const { return m_feed; }

private:
    const Weather& m_weather;
    BoardState& m_board;
    Feed m_feed;
    Headline m_headline;
};

#endif
