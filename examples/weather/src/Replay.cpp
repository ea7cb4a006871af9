#include "Replay.h"

Replay::Replay(const Weather& weather, WeatherTree& tree, BoardState& board)
    : m_weather(weather), m_board(board), m_feed(tree, weather.cities), m_headline(tree) {
    m_headline.follow(weather.cities.front());
}

void Replay::writeNextDay() {
    m_feed.write(m_weather.days[m_feed.daysWritten()]);
    if (m_weather.cities.size() > 1 && m_feed.daysWritten() == totalDays() / 2)
        m_headline.follow(m_weather.cities[1]);
    m_board.setHeadline({m_headline.text(), m_headline.week()});
}
