#ifndef WEATHER_FEED_H
#define WEATHER_FEED_H

#include "Columns.h"
#include "WeatherCsv.h"

#include <orbel/orbel.h>

#include <array>
#include <deque>
#include <string>
#include <vector>

/// Owns the tree, and writes observations into it:
///
///     Seattle/temp_max             one value per column
///     Seattle/last_seven_highs     the last seven days' highest temperatures, the newest last
class Feed {
public:
    explicit Feed(const std::vector<std::string>& cities);
    ~Feed();

    Feed(const Feed&) = delete;
    Feed& operator=(const Feed&) = delete;

    void observe(std::size_t city, Column column, DataHandler& handler);
    void observeWeek(std::size_t city, DataHandler& handler);

    void write(const std::vector<Observation>& day);

    std::size_t daysWritten() const { return m_daysWritten; }
    std::size_t valuesSet() const { return m_valuesSet; }

private:
    struct City {
        std::array<std::string, columnNames.size()> paths;
        std::string weekPath;
        std::deque<std::string> highs;
    };

    void writeWeek(City& city, const std::string& high);

    Orbel m_tree;
    std::vector<City> m_cities;
    std::size_t m_daysWritten = 0;
    std::size_t m_valuesSet = 0;
};

#endif
