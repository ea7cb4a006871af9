#ifndef WEATHER_WEATHERCSV_H
#define WEATHER_WEATHERCSV_H

#include "Columns.h"

#include <array>
#include <string>
#include <vector>

struct Observation {
    std::size_t city;
    std::array<std::string, columnNames.size()> texts;

    const std::string& text(Column column) const { return texts[static_cast<std::size_t>(column)]; }
};

struct Weather {
    std::vector<std::string> cities;
    /// In order of dates; the observations of one day in order of cities.
    std::vector<std::vector<Observation>> days;
};

/// Throws InputError, which names the file and, where there is one, the line.
Weather readWeatherCsv(const std::string& path);

#endif
