#ifndef WEATHER_FEED_H
#define WEATHER_FEED_H

#include "WeatherCsv.h"
#include "WeatherTree.h"

#include <deque>
#include <string>
#include <vector>

/// Writes observations into the tree, by command texts only.
class Feed {
public:
    Feed(WeatherTree& tree, const std::vector<std::string>& cities);

    void write(const std::vector<Observation>& day);

    std::size_t daysWritten() const { return m_daysWritten; }
    std::size_t valuesSet() const { return m_valuesSet; }

private:
    struct City {
        std::string path;
        std::deque<std::string> highs;
    };

    void write(City& city, const Observation& observation);

    WeatherTree& m_tree;
    std::vector<City> m_cities;
    std::size_t m_daysWritten = 0;
    std::size_t m_valuesSet = 0;
};

#endif
